#include "app/mainwindow.h"
#include "benchmarks.h"
#include "common/constants.h"
#include "report.h"
#include "simulator/simulatedtransport.h"
#include "storage/settings.h"
#include "tests/app/gestures.h"
#include "tests/mixer/storedstate.h"
#include "tests/shorthand.h"
#include "timedapplication.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <malloc.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr char settingsName[] = "Tamber_Replug";
constexpr int stepTimeout = 10000; // milliseconds; a step normally takes at most two seconds
constexpr int pollInterval = 20;   // milliseconds
constexpr int stableTime = 200;    // milliseconds for which equal states must stay equal

int rounds()
{
    constexpr int usual = 20;
    const int asked = qEnvironmentVariableIntValue("TAMBER_BENCH_ROUNDS");
    return asked > 1 ? asked : usual;
}

/// The system resources that this process uses.
struct Resources
{
    double memory;      ///< resident memory in megabytes of 1024 x 1024 bytes
    double heap;        ///< allocated heap in the same unit, without free blocks
    double threads;     ///< number of threads
    double descriptors; ///< number of open file descriptors

    static Resources now()
    {
        QFile pages("/proc/self/statm"_s);
        pages.open(QIODevice::ReadOnly);
        const double resident = pages.readAll().split(' ').value(1).toDouble();
        pages.close();
        return {
            resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024 * 1024),
            static_cast<double>(mallinfo2().uordblks) / (1024 * 1024), entries("/proc/self/task"_s),
            entries("/proc/self/fd"_s)};
    }

private:
    static double entries(const QString &folder)
    {
        const auto all = QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot;
        return static_cast<double>(QDir(folder).entryList(all).size());
    }
};

/// A simulated user who changes one control of the window at a time, in turn.
class SimulatedUser
{
public:
    explicit SimulatedUser(const MainWindow &window) : m_window(window) {}

    void changeSomething()
    {
        const std::vector<std::function<void()>> changes = {
            [this] { drag("faderKnob"_s + strip()); },
            [this] { click("pB_Mute"_s + strip()); },
            [this] { drag("panKnob"_s + side()); },
            [this] { click("pB_EQ"_s + strip()); },
            [this] { click("pB_Comp"_s + strip()); },
            [this] { click("pB_Phase"_s + side()); },
            [this] { click("pB_Solo"_s + strip()); },
            [this] { edit("lowGainKnob"_s); },
            [this] { edit("thresholdKnob"_s); },
            [this] { click("pB_LowCut"_s); },
            [this] { click((isLinked() ? "pB_LinkOff"_s : "pB_LinkOn"_s) + pair()); },
            [this] { drag("masterFaderKnob"_s); },
            [this] { click("pB_masterMute"_s); },
            [this] { route(); },
            [this] { click("cB_ToStereoBus"_s); },
            [this] { click("rB_MixerTrueBypass_on"_s); },
            [this] { click("rB_MixerTrueBypass_off"_s); },
        };
        changes[m_count++ % changes.size()]();
    }

private:
    int number() const { return static_cast<int>(7 * m_count % 16) + 1; }
    QString pair() const
    {
        const int left = (number() - 1) / 2 * 2 + 1;
        return "%1_%2"_s.arg(left).arg(left + 1);
    }
    bool isLinked() const { return !find<QWidget>("pB_Mute%1"_s.arg(number()))->isVisible(); }
    QString strip() const { return isLinked() ? pair() : QString::number(number()); }
    QString side() const
    {
        const QString suffix = number() % 2 ? "_L"_s : "_R"_s;
        return isLinked() ? pair() + suffix : QString::number(number());
    }

    template <typename Widget>
    Widget *find(const QString &name) const
    {
        auto *widget = m_window.findChild<Widget *>(name);
        if (!widget) qFatal("no %s", qPrintable(name));
        return widget;
    }
    void click(const QString &button) { find<QAbstractButton>(button)->click(); }
    /// Drags far enough to change the value, alternately in both directions.
    void drag(const QString &knob)
    {
        const int way = m_count % 2 ? 12 : -12;
        ::drag(find<QWidget>(knob), {QPoint(0, way)});
    }
    void edit(const QString &knob)
    {
        auto *select = find<QAbstractButton>("pB_Analog"_s + strip());
        if (!select->isChecked()) select->click();
        drag(knob);
    }
    void route()
    {
        auto *list = find<QComboBox>("cB_LineOut%1"_s.arg(number() % 8 + 1));
        list->setCurrentIndex((list->currentIndex() + 1) % list->count());
    }

    const MainWindow &m_window;
    std::size_t m_count = 0;
};

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

    bool showsNotice() const
    {
        return m_window->findChild<QLabel *>("label_Notice"_s)->isVisible();
    }
    int boxes() const { return m_window->findChildren<QMessageBox *>().size(); }
    /// Whether the window shows that the device is gone, or that it is there again.
    bool knowsGone() const { return showsNotice() && boxes() == 1; }
    bool knowsBack() const { return !showsNotice() && boxes() == 0; }

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
    const int count = rounds();
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
