#include "app/mainwindow.h"
#include "benchmarks.h"
#include "common/constants.h"
#include "mixer/presets.h"
#include "pointer.h"
#include "report.h"
#include "simulator/simulatedtransport.h"
#include "storage/settings.h"
#include "timedapplication.h"

#include <QAction>

#include <ctime>
#include <memory>

namespace {

constexpr int measuring = 10000; // milliseconds
constexpr int voice = 11;        // a channel whose simulated level swells

/// A panel with a voice's settings on the selected channel and its channel editor.
struct EditorPanel
{
    EditorPanel() : settings(constants::demoOrganisation, "Tamber_Editor")
    {
        leaveAlone(settings);
        storage::Transaction t(settings.store());
        mixer::setKnobs(t, mixer::track(voice), positionsOf(mixer::factoryPresets[0]));
        for (const storage::SwitchKey &key : {storage::strip::eq, storage::strip::comp})
            mixer::setSwitch(t, mixer::track(voice), key, true);
        mixer::select(t, mixer::track(voice), true);
        t.commit();
        // Made only now, so that it shows no start information.
        window = std::make_unique<MainWindow>(settings, transport, demoEdition);
        window->move(0, 0);
        window->show();
        runEvents(3000);
    }
    QWidget *open(const QSize &size)
    {
        if (!editor) {
            window->findChild<QAction *>(QStringLiteral("actionChannel_Editor"))->trigger();
            editor = window->findChild<QWidget *>(QStringLiteral("channelEditor"));
        }
        editor->setGeometry(QRect(QPoint(), size));
        runEvents(1500);
        return editor;
    }

    simulator::RealClock clock;
    simulator::SimulatedTamber tamber{clock};
    simulator::SimulatedTransport transport{tamber};
    Settings settings;
    std::unique_ptr<MainWindow> window;
    QWidget *editor = nullptr;
};

/// Returns the GUI thread's time for one move of a handle, in milliseconds, without what the meters
/// take in the same time.
double timeOfMove(QWidget *editor, const char *name)
{
    auto *handle = editor->findChild<QWidget *>(QLatin1String(name));
    const QPoint start = handle->mapToGlobal(handle->rect().center());
    XDisplay display;
    display.movePointer(start);
    display.press();
    runEvents(200);
    const auto *application = static_cast<TimedApplication *>(qApp);
    constexpr int duration = PointerThread::duration;
    const double atRest = application->milliseconds();
    runEvents(duration);
    const double meters = application->milliseconds() - atRest;
    MoveCounter counter;
    handle->installEventFilter(&counter);
    const double before = application->milliseconds();
    PointerThread pointer(start, {2, -1}); // both values of a handle change
    pointer.start();
    runEvents(duration);
    pointer.wait();
    display.release();
    const double time = application->milliseconds() - before - meters;
    runEvents(200);
    report::figure(
        QStringLiteral("... moves that reached %1, of 500").arg(QLatin1String(name)), counter.count,
        QString());
    return counter.count ? time / counter.count : 0;
}

/// Returns the processor time of the whole program, in percent of one core.
double load()
{
    const std::clock_t before = std::clock();
    runEvents(measuring);
    const double seconds = double(std::clock() - before) / CLOCKS_PER_SEC;
    return seconds * 1000 / measuring * 100;
}

} // namespace

void benchEditor()
{
    EditorPanel panel;
    const double closed = load();
    report::figure(QStringLiteral("panel without channel editor"), closed, QStringLiteral("%"));
    for (const auto &[size, limit] : {std::pair(QSize(900, 560), 1.0), {QSize(1600, 900), 4.0}}) {
        QWidget *editor = panel.open(size);
        const QString at = QStringLiteral(" at %1 x %2").arg(size.width()).arg(size.height());
        report::against(
            QStringLiteral("channel editor open, more of a core") + at, load() - closed, 1,
            QStringLiteral("%"));
        for (const char *handle :
             {"editor_lowHandle", "editor_highMidHandle", "editor_thresholdHandle"})
            report::against(
                QStringLiteral("GUI thread, one move of a handle") + at, timeOfMove(editor, handle),
                limit, QStringLiteral("ms"));
    }
}
