#include "app/mainwindow.h"
#include "benchmarks.h"
#include "common/constants.h"
#include "report.h"
#include "resources.h"
#include "simulateduser.h"
#include "simulator/simulatedtransport.h"
#include "storage/settings.h"
#include "tests/mixer/storedstate.h"
#include "tests/shorthand.h"
#include "timedapplication.h"

#include <QElapsedTimer>
#include <QLabel>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

constexpr char settingsName[] = "Tamber_Replug";
constexpr int stepTimeout = 10000; // milliseconds; a step normally takes at most two seconds
constexpr int pollInterval = 20;   // milliseconds
constexpr int stableTime = 200;    // milliseconds for which equal states must stay equal

/// A panel in use whose cable is pulled and plugged in repeatedly.
class Replugging
{
public:
    Replugging() : m_settings(constants::demoOrganisation, settingsName), m_transport(m_tamber)
    {
        storeVariety(m_settings.store());
        leaveAlone(m_settings);
        m_window = std::make_unique<MainWindow>(m_settings, m_transport, demoEdition);
        m_user = std::make_unique<SimulatedUser>(*m_window);
        m_window->show();
        if (!becomes([this] { return agrees(); })) complain("the first send"_s);
    }

    /// Pulls the cable, changes controls and plugs the cable in. Returns whether the state of the
    /// device then becomes that of the file.
    bool round(int number)
    {
        m_name = "round %1"_s.arg(number);
        m_tamber.setPlugged(false);
        if (!becomes([this] { return knowsGone(); })) complain("the window does not know"_s);
        change();
        runEvents(37 * number % 300); // varies the phase of the panel's timers
        m_tamber.setPlugged(true);
        QElapsedTimer timer;
        timer.start();
        if (number % 2) {
            runEvents(10 + 53 * number % 1500);
            change(); // during the full send
        }
        const bool equal = becomes([this] { return knowsBack() && agrees(); });
        m_times.push_back(static_cast<double>(timer.elapsed()));
        runEvents(stableTime);
        if (equal && knowsBack() && agrees()) return true;
        complain(equal ? "equal, then not"_s : "unequal"_s);
        return false;
    }

    /// For each round the milliseconds from plugging in until the states are equal.
    const std::vector<double> &times() const { return m_times; }
    /// Returns how many changes of a control changed nothing in the settings.
    int idleChanges() const { return m_idleChanges; }

private:
    static bool becomes(const std::function<bool()> &condition)
    {
        QElapsedTimer timer;
        timer.start();
        while (!condition()) {
            if (timer.elapsed() > stepTimeout) return false;
            runEvents(pollInterval);
        }
        return true;
    }

    bool showsNoDevice() const
    {
        const auto *notice = m_window->findChild<QLabel *>("label_Notice"_s);
        return notice->isVisible() && notice->text().startsWith("No device answers."_s);
    }
    int boxes() const { return m_window->findChildren<QMessageBox *>().size(); }
    /// Whether the window shows that the device is gone, or that it is there again.
    bool knowsGone() const { return showsNoDevice() && boxes() == 1; }
    bool knowsBack() const { return !showsNoDevice() && boxes() == 0; }

    /// Returns the state in the file on disk.
    static simulator::MixerState stored()
    {
        return storedState(Settings(constants::demoOrganisation, settingsName).values());
    }
    bool agrees() const { return m_tamber.state() == stored(); }

    void change()
    {
        const simulator::MixerState before = storedState(m_settings.values());
        m_user->changeSomething();
        if (storedState(m_settings.values()) == before) ++m_idleChanges;
    }

    void complain(const QString &what) const
    {
        std::printf("%s: %s\n", qPrintable(m_name), qPrintable(what));
        for (const QString &line : differences(m_tamber.state(), stored()))
            std::printf("  %s\n", qPrintable(line));
        std::fflush(stdout);
    }

    Settings m_settings;
    simulator::RealClock m_clock;
    simulator::SimulatedTamber m_tamber{m_clock};
    simulator::SimulatedTransport m_transport;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<SimulatedUser> m_user;
    QString m_name = "start"_s;
    std::vector<double> m_times;
    int m_idleChanges = 0;
};

void reportTimes(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    report::figure(
        "plugged in until the state is equal: median"_s, times[times.size() / 2], "ms"_s);
    report::figure("plugged in until the state is equal: worst"_s, times.back(), "ms"_s);
}

} // namespace

void benchReplug()
{
    const int count = report::amount("TAMBER_BENCH_ROUNDS", 40);
    // Qt's caches grow at first, so growth is measured from the middle on. With few rounds they are
    // not full even then.
    const int warm = count / 2;
    Replugging replugging;
    Resources before = Resources::now();
    int equal = 0;
    for (int number = 1; number <= count; ++number) {
        equal += replugging.round(number);
        if (number == warm) before = Resources::now();
    }
    const Resources after = Resources::now();
    report::against("cable pulled and plugged in; limit: equal states"_s, count, equal, QString());
    report::figure("changes meanwhile that changed nothing"_s, replugging.idleChanges(), QString());
    reportTimes(replugging.times());
    const QString since = " since round %1"_s.arg(warm);
    report::against("heap in use, growth"_s + since, after.heap - before.heap, 0.25, "MB"_s);
    report::against("resident memory, growth"_s + since, after.memory - before.memory, 1, "MB"_s);
    report::against(
        "threads; limit: those after round %1"_s.arg(warm), after.threads, before.threads,
        QString());
    report::against(
        "open files; limit: those after round %1"_s.arg(warm), after.descriptors,
        before.descriptors, QString());
}
