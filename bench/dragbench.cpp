#include "app/mainwindow.h"
#include "benchmarks.h"
#include "common/constants.h"
#include "mixer/faderscale.h"
#include "mixer/parameters.h"
#include "mixer/strip.h"
#include "pointer.h"
#include "report.h"
#include "simulator/simulatedtransport.h"
#include "storage/settings.h"
#include "timedapplication.h"

#include <QFileInfo>

namespace {

/// Writes every key of every strip, so that the settings file is as large as after long use (36
/// KB).
void fill(Settings &settings)
{
    namespace key = storage::strip;
    const storage::SwitchKey switches[] = {
        key::select, key::phase, key::eq, key::comp, key::solo, key::mute, key::link, key::eqLowCut,
    };
    storage::Transaction transaction(settings.store());
    for (const mixer::StripId &strip : mixer::allStrips()) {
        const storage::Group group = strip.group();
        transaction.write(group, key::fader, mixer::faderDefault, QStringLiteral("0"));
        transaction.write(group, key::pan, 20, QStringLiteral("C"));
        for (const mixer::Parameter &parameter : mixer::parameters()) {
            const mixer::Value value = mixer::valueAt(parameter, parameter.defaultPosition);
            transaction.write(group, parameter.keys, value.position, value.text);
        }
        for (const storage::SwitchKey key : switches)
            transaction.write(group, key, false);
        transaction.write(group, key::name, QStringLiteral("A channel"));
    }
    transaction.commit();
    settings.flush();
}

} // namespace

void benchDrag()
{
    simulator::RealClock clock;
    simulator::SimulatedTamber tamber(clock);
    simulator::SimulatedTransport transport(tamber);
    Settings settings(constants::demoOrganisation, constants::settingsFile);
    fill(settings);
    leaveAlone(settings);
    MainWindow window(settings, transport, demoEdition);
    window.show();
    runEvents(2000);

    auto *knob = window.findChild<QWidget *>(QStringLiteral("faderKnob3"));
    const QPoint start = knob->mapToGlobal(knob->rect().center());
    XDisplay display;
    display.movePointer(start);
    display.press();
    runEvents(200);

    MoveCounter counter;
    knob->installEventFilter(&counter);
    const auto *application = static_cast<TimedApplication *>(qApp);
    const double before = application->milliseconds();
    PointerThread pointer(start, {0, 1});
    pointer.start();
    runEvents(PointerThread::duration);
    pointer.wait();
    display.release();
    runEvents(100);
    report::figure(
        QStringLiteral("moves that reached the fader, of 500"), counter.count, QString());
    report::against(
        QStringLiteral("GUI thread, one drag move at 125 Hz: mean"),
        (application->milliseconds() - before) / counter.count, 0.6, QStringLiteral("ms"));
}
