#include "benchmarks.h"
#include "report.h"
#include "tests/app/demo.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>

namespace {

constexpr unsigned long settling = 3;   // seconds
constexpr unsigned long measuring = 10; // seconds

/// A running program without user input, alone on the screen. Destroying the object ends it.
class IdleProgram
{
public:
    explicit IdleProgram(const char *program)
    {
        QProcessEnvironment environment = m_home.environment();
        environment.remove("TAMBER_TRACE"_s);
        m_process.setProcessEnvironment(environment);
        m_process.start(QString::fromLocal8Bit(program), QStringList());
        while (!m_display.showsAny())
            QThread::msleep(1);
        QThread::sleep(settling);
    }
    ~IdleProgram()
    {
        m_process.kill();
        m_process.waitForFinished();
        while (m_display.showsAny())
            QThread::msleep(1);
    }

    struct Load
    {
        double all; ///< of all threads
        double gui; ///< of the GUI thread
    };
    /// Measures for ten seconds and returns the load in percent of one processor.
    Load load() const
    {
        QElapsedTimer timer;
        timer.start();
        const Load before = timeTaken();
        QThread::sleep(measuring);
        const Load after = timeTaken();
        const double percent = 100.0 / static_cast<double>(timer.nsecsElapsed());
        return {(after.all - before.all) * percent, (after.gui - before.gui) * percent};
    }

    /// Hides a window of the program, as when it is minimised.
    void hide(const QString &title)
    {
        const xcb_window_t window = m_display.find(title, m_process.processId());
        xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
        xcb_unmap_window(connection, window);
        xcb_flush(connection);
        while (m_display.find(title, m_process.processId()))
            QThread::msleep(1);
        xcb_disconnect(connection);
    }

private:
    /// Returns the user and system time so far, in nanoseconds. The kernel's other counters are too
    /// coarse for programs with so little load.
    Load timeTaken() const
    {
        const QString gui = QString::number(m_process.processId());
        const QDir threads("/proc/%1/task"_s.arg(gui));
        Load taken = {0, 0};
        for (const QString &thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QFile file(threads.filePath(thread + "/schedstat"_s));
            if (!file.open(QIODevice::ReadOnly)) qFatal("no times of the program's threads");
            const double time = file.readAll().split(' ')[0].toDouble();
            taken.all += time;
            if (thread == gui) taken.gui = time;
        }
        return taken;
    }

    PrivateHome m_home;
    XDisplay m_display;
    QProcess m_process;
};

} // namespace

void benchLoad()
{
    constexpr double demoLimit = 0.8;  // percent of one processor
    constexpr double panelLimit = 0.5; // of that the panel's own thread
    const double reference = IdleProgram(REPAINT_WINDOW).load().all;
    report::figure("1000 x 300 widget repainted ten times a second: processor"_s, reference, "%"_s);
    IdleProgram demo(TAMBER_DEMO);
    report::against("demo with its meters running: processor"_s, demo.load().all, demoLimit, "%"_s);
    demo.hide("Simulated Tamber"_s);
    const IdleProgram::Load panel = demo.load();
    report::figure("demo without the device's window: processor"_s, panel.all, "%"_s);
    report::against("of that the panel's window"_s, panel.gui, panelLimit, "%"_s);
}
