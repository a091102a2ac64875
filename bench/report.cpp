#include "report.h"

#include <cstdio>

namespace report {
namespace {

int missedCount = 0;

} // namespace

void against(const QString &what, double measured, double limit, const QString &unit)
{
    const double ratio = measured / limit;
    if (ratio > 1) ++missedCount;
    std::printf(
        "%-58s %9.2f %-3s limit %8.2f  ratio %5.2f%s\n", qPrintable(what), measured,
        qPrintable(unit), limit, ratio, ratio > 1 ? "  MISSED" : "");
    std::fflush(stdout);
}

void atMost(const QString &what, int counted, int limit)
{
    if (counted > limit) ++missedCount;
    std::printf(
        "%-58s %9d     limit %8d%s\n", qPrintable(what), counted, limit,
        counted > limit ? "  MISSED" : "");
    std::fflush(stdout);
}

void figure(const QString &what, double measured, const QString &unit)
{
    std::printf("%-58s %9.2f %s\n", qPrintable(what), measured, qPrintable(unit));
    std::fflush(stdout);
}

int missed()
{
    return missedCount;
}

int amount(const char *variable, int usual)
{
    const int asked = qEnvironmentVariableIntValue(variable);
    return asked > 1 ? asked : usual;
}

} // namespace report
