#include "update/version.h"

namespace {

int firstDigit(const QString &text)
{
    return text.isEmpty() ? 0 : qMax(text.at(0).digitValue(), 0);
}

/// Returns the number formed by the first two digits after the point.
int minorOf(const QString &version)
{
    const QString rest = version.section(QLatin1Char('.'), 1, 1);
    int length = 0;
    while (length < qMin(rest.size(), 2) && rest.at(length).isDigit())
        ++length;
    return rest.left(length).toInt();
}

} // namespace

QString update::versionText(int major, int minor)
{
    return QStringLiteral("%1.%2").arg(major).arg(minor, 2, 10, QLatin1Char('0'));
}

bool update::isNewer(int major, int minor, const QString &than)
{
    const QString published = versionText(major, minor);
    if (firstDigit(published) != firstDigit(than)) return firstDigit(published) > firstDigit(than);
    return minorOf(published) > minorOf(than);
}
