// tamber-bench [NAME...]: measures what the panel promises and prints each figure against its
// limit. It wants a display and a machine that does nothing else; see bench/run. With names it runs
// those benchmarks only. 1 when a limit was missed.

#include "app/program.h"
#include "benchmarks.h"
#include "report.h"
#include "timedapplication.h"

#include <QTemporaryDir>

namespace {

struct Benchmark
{
    const char *name;
    void (*run)();
};

constexpr Benchmark benchmarks[] = {
    {"facade", benchFacadeCall}, {"newest", benchNewestValue},
    {"state", benchWholeState},  {"drag", benchDrag},
    {"curve", benchCurve},       {"tick", benchTick},
    {"replug", benchReplug},     {"mute", benchMuteDuringFullSend},
    {"start", benchStart},       {"load", benchLoad},
};

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir home;
    for (const char *variable : {"XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
        qputenv(variable, home.path().toLocal8Bit());
    const TimedApplication application(argc, argv);
    applyLook();

    const QStringList asked = QApplication::arguments().mid(1);
    for (const Benchmark &benchmark : benchmarks)
        if (asked.isEmpty() || asked.contains(QLatin1String(benchmark.name))) benchmark.run();
    return report::missed() == 0 ? 0 : 1;
}
