#include "app/mainwindow.h"
#include "benchmarks.h"
#include "common/constants.h"
#include "mixer/stripclip.h"
#include "report.h"
#include "simulator/simulatedtransport.h"
#include "storage/settings.h"
#include "timedapplication.h"
#include "widgets/stepcontrol.h"

#include <QAction>
#include <QElapsedTimer>
#include <QWheelEvent>

#include <algorithm>
#include <vector>

namespace {

double guiTime()
{
    return static_cast<TimedApplication *>(qApp)->milliseconds();
}

/// Returns the time of a call in milliseconds.
template <typename Action>
double timeOf(Action action)
{
    QElapsedTimer timer;
    timer.start();
    action();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// Returns the GUI thread's time for the events that are pending, such as repaints.
double timeOfEvents()
{
    const double before = guiTime();
    QCoreApplication::processEvents();
    return guiTime() - before;
}

double median(std::vector<double> &times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

/// A panel on a simulated device that needs no time.
struct TimedPanel
{
    explicit TimedPanel(const char *file) : settings(constants::demoOrganisation, file)
    {
        leaveAlone(settings);
        window.show();
        runEvents(3000);
    }

    simulator::RealClock clock;
    simulator::SimulatedTamber tamber{clock};
    simulator::SimulatedTransport transport{tamber};
    Settings settings;
    MainWindow window{settings, transport, demoEdition};
};

} // namespace

/// From the event to the request that is handed to the worker; the request itself is not waited
/// for.
void benchWheel()
{
    constexpr int notches = 200;
    TimedPanel panel("Tamber_Wheel");
    auto *cap = panel.window.findChild<StepControl *>(QStringLiteral("faderKnob3"));
    std::vector<double> times;
    std::vector<double> later;
    for (int i = 0; i < notches; ++i) {
        QWheelEvent event(
            QPointF(5, 5), cap->mapToGlobal(QPointF(5, 5).toPoint()), QPoint(),
            QPoint(0, i % 40 < 20 ? -120 : 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
            false);
        times.push_back(timeOf([&] { QCoreApplication::sendEvent(cap, &event); }));
        later.push_back(timeOfEvents());
        runEvents(20);
    }
    report::against(
        QStringLiteral("one notch of the wheel on a fader, to the request"), median(times), 1,
        QStringLiteral("ms"));
    report::figure(
        QStringLiteral("... and the repaints after it"), median(later), QStringLiteral("ms"));
}

/// A scene that changes every strip is recalled and undone.
void benchUndo()
{
    constexpr int rounds = 20;
    TimedPanel panel("Tamber_Undo");
    storage::Store store;
    storage::Transaction scene(store);
    for (const mixer::StripId &strip : mixer::allStrips()) {
        mixer::setFader(scene, strip, 200);
        mixer::setSwitch(scene, strip, storage::strip::mute, true);
        if (strip.isMaster()) continue;
        for (const mixer::Parameter &parameter : mixer::parameters())
            mixer::setKnob(scene, strip, parameter, 20);
    }
    scene.commit();
    auto *undo = panel.window.findChild<QAction *>(QStringLiteral("actionUndo"));
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i) {
        storage::Transaction recall(panel.settings.store(), QStringLiteral("Recall scene 1"));
        mixer::recall(recall, store.values(), {});
        recall.commit();
        runEvents(100);
        times.push_back(timeOf([&] { undo->trigger(); }) + timeOfEvents());
        runEvents(100);
    }
    report::against(
        QStringLiteral("GUI thread, undo of a scene that changes all strips"), median(times), 30,
        QStringLiteral("ms"));
}
