// tamber-bench: measures what the panel promises and prints each figure against its limit. It wants
// a display and a machine that does nothing else; see bench/run. 1 when a limit was missed.

#include "app/program.h"
#include "benchmarks.h"
#include "report.h"
#include "timedapplication.h"

#include <QTemporaryDir>

int main(int argc, char **argv)
{
    const QTemporaryDir home;
    for (const char *variable : {"XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
        qputenv(variable, home.path().toLocal8Bit());
    const TimedApplication application(argc, argv);
    applyLook();

    benchFacadeCall();
    benchNewestValue();
    benchWholeState();
    benchDrag();
    benchCurve();
    benchTick();
    benchMuteDuringFullSend();
    benchStart();
    return report::missed() == 0 ? 0 : 1;
}
