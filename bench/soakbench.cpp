#include "app/history.h"
#include "benchmarks.h"
#include "common/constants.h"
#include "randomuser.h"
#include "report.h"
#include "resources.h"
#include "simulator/simulatedtransport.h"
#include "storage/settings.h"
#include "tests/app/panel.h"
#include "tests/mixer/storedstate.h"
#include "timedapplication.h"

#include <QElapsedTimer>

#include <cstdio>

namespace {

constexpr char settingsName[] = "Tamber_Soak";
constexpr int minute = 60 * 1000; // milliseconds
constexpr int restTime = 3000;    // milliseconds in which caches and queues come to rest

/// A panel on a simulated device whose user never stops.
class Soaking
{
public:
    explicit Soaking(unsigned seed)
        : m_settings(constants::demoOrganisation, settingsName), m_transport(m_tamber)
    {
        leaveAlone(m_settings);
        QObject::connect(
            &m_settings.store(), &storage::Store::committed, &m_settings, [this] { ++m_changes; });
        m_window = std::make_unique<MainWindow>(m_settings, m_transport, demoEdition);
        m_user =
            std::make_unique<RandomUser>(*m_window, seed, qEnvironmentVariable("XDG_CONFIG_HOME"));
        addWorks();
        m_window->show();
    }

    /// Works for this time, at full rate.
    void work(int milliseconds)
    {
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < milliseconds) {
            m_user->choose().act();
            ++m_works;
            QCoreApplication::processEvents();
        }
    }

    /// Lets everything come to rest, with the cable plugged in and nothing else open.
    void rest()
    {
        m_tamber.setPlugged(true);
        m_user->closeDialogs();
        fillHistory();
        runEvents(restTime);
    }

    /// Waits until the device holds what the settings file says.
    QStringList deviceDifferences()
    {
        constexpr int timeout = 20000;
        QElapsedTimer timer;
        timer.start();
        QStringList lines;
        do {
            runEvents(100);
            lines = differences(m_tamber.state(), storedState(stored().values()));
        } while (!lines.isEmpty() && timer.elapsed() < timeout);
        return lines;
    }

    /// Compares with a new window that reads the settings file.
    QStringList screenDifferences()
    {
        Settings settings = stored();
        simulator::SimulatedTamber tamber(m_clock);
        simulator::SimulatedTransport transport(tamber);
        MainWindow fresh(settings, transport, demoEdition);
        fresh.show();
        runEvents(restTime);
        const QStringList before = shown(*m_window->centralWidget());
        QStringList lines;
        const QStringList after = shown(*fresh.centralWidget());
        for (const QString &line : after)
            if (!before.contains(line)) lines += line;
        return before.size() == after.size() ? lines : lines << "controls are missing"_s;
    }

    qint64 changes() const { return m_changes; }
    qint64 works() const { return m_works; }

private:
    Settings stored() const { return Settings(constants::demoOrganisation, settingsName); }

    void turnPage()
    {
        for (auto *button : m_window->findChildren<QAbstractButton *>())
            if (button->objectName().contains("From"_s) && button->isVisible() &&
                m_user->below(2) == 0)
                return button->click();
    }

    /// Replaces all steps of the undo history by small ones. What it needs depends on how many
    /// scenes happen to be among the last steps.
    void fillHistory()
    {
        const auto find = [this](const QString &name) {
            return m_window->findChild<QAbstractButton *>(name);
        };
        find("rB_MixerTrueBypass_off"_s)->click(); // bypass disables the strips
        auto *mute = find("pB_masterMute"_s);
        for (int i = 0; i < History::limit; ++i)
            mute->click();
    }

    void addWorks()
    {
        const auto triggers = [this](const QStringList &actions) {
            return [this, actions] { m_user->trigger(actions[m_user->below(actions.size())]); };
        };
        m_user->add(
            {"clipboard", 10,
             triggers(
                 {"actionCopy_Strip"_s, "actionPaste_Strip"_s, "actionPaste_EQ"_s,
                  "actionPaste_Compressor"_s, "actionReset_EQ"_s})});
        m_user->add({"channel editor", 1, triggers({"actionChannel_Editor"_s})});
        const auto openDialog = triggers(
            {"actionProduct_Information"_s, "actionGestures"_s, "actionInitialize_Memory"_s,
             "actionRename3"_s, "actionLoadExcept2"_s, "actionImport1"_s, "actionPanel_Guide"_s});
        m_user->add({"dialog", 1, [this, openDialog] {
                         openDialog();
                         QCoreApplication::processEvents();
                         m_user->closeDialogs();
                     }});
        m_user->add({"page", 1, [this] { turnPage(); }});
        m_user->add({"cable", 1, [this] { m_tamber.setPlugged(m_user->below(4) != 0); }});
    }

    Settings m_settings;
    simulator::RealClock m_clock;
    simulator::SimulatedTamber m_tamber{m_clock};
    simulator::SimulatedTransport m_transport;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<RandomUser> m_user;
    qint64 m_changes = 0;
    qint64 m_works = 0;
};

void reportGrowth(const QString &what, double before, double after, int minutes, double limit)
{
    report::figure(what + ", growth per minute"_s, (after - before) / minutes, "MB"_s);
    report::against(what + ", growth in all"_s, after - before, limit, "MB"_s);
}

void reportDifferences(const QString &what, const QStringList &lines)
{
    for (const QString &line : lines)
        std::printf("  %s\n", qPrintable(line));
    report::atMost(what, lines.size(), 0);
}

} // namespace

void benchSoak()
{
    const unsigned seed = randomSeed();
    const int count = report::amount("TAMBER_BENCH_MINUTES", 10);
    std::printf("seed %u\n", seed);
    Soaking soaking(seed);
    // Caches and the undo history are full after the first half.
    const int warm = count / 2;
    Resources before = Resources::now();
    Resources after = before;
    for (int i = 1; i <= count; ++i) {
        soaking.work(minute);
        soaking.rest();
        after = Resources::now();
        if (i == warm) before = after;
        std::printf(
            "minute %2d: resident %.1f MB, heap %.1f MB, threads %.0f, open files %.0f\n", i,
            after.memory, after.heap, after.threads, after.descriptors);
        std::fflush(stdout);
    }
    report::figure("works of the user"_s, static_cast<double>(soaking.works()), QString());
    report::figure("changes of the settings"_s, static_cast<double>(soaking.changes()), QString());
    reportGrowth("resident memory"_s, before.memory, after.memory, count - warm, 2);
    reportGrowth("heap in use"_s, before.heap, after.heap, count - warm, 1);
    report::against(
        "threads; limit: those at half-time"_s, after.threads, before.threads, QString());
    report::against(
        "open files; limit: those at half-time"_s, after.descriptors, before.descriptors,
        QString());
    reportDifferences("differences of device and file"_s, soaking.deviceDifferences());
    reportDifferences("differences of screen and file"_s, soaking.screenDifferences());
}
