// tamber-bench [NAME...]: runs the benchmarks and prints each figure with its limit. With names, it
// runs only those benchmarks. It needs a display and an otherwise idle machine; see bench/run. The
// exit code is 1 if a figure exceeds its limit. The benchmarks that take minutes run only when they
// are named.

#include "app/program.h"
#include "benchmarks.h"
#include "killeduser.h"
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
    {"state", benchWholeState},  {"recall", benchRecall},
    {"drag", benchDrag},         {"wheel", benchWheel},
    {"undo", benchUndo},         {"curve", benchCurve},
    {"editor", benchEditor},     {"tick", benchTick},
    {"replug", benchReplug},     {"mute", benchMuteDuringFullSend},
    {"start", benchStart},       {"load", benchLoad},
    {"remote", benchRemote},     {"remoteidle", benchRemoteIdle},
};

constexpr Benchmark longBenchmarks[] = {{"kill", benchKill}, {"soak", benchSoak}};

/// Makes the application object as the panel does. Programs that are started later choose for
/// themselves.
std::unique_ptr<TimedApplication> makeApplication(int &argc, char **argv)
{
    const ScopedVariable rendering = chooseRendering();
    auto application = std::make_unique<TimedApplication>(argc, argv);
    applyLook();
    return application;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 2 && qstrcmp(argv[1], killedUserArgument) == 0) {
        const auto application = makeApplication(argc, argv);
        return runKilledUser(QByteArray(argv[2]).toUInt());
    }
    const QTemporaryDir home;
    for (const char *variable : {"XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
        qputenv(variable, home.path().toLocal8Bit());
    const auto application = makeApplication(argc, argv);

    const QStringList asked = QApplication::arguments().mid(1);
    for (const Benchmark &benchmark : benchmarks)
        if (asked.isEmpty() || asked.contains(QLatin1String(benchmark.name))) benchmark.run();
    for (const Benchmark &benchmark : longBenchmarks)
        if (asked.contains(QLatin1String(benchmark.name))) benchmark.run();
    return report::missed() == 0 ? 0 : 1;
}
