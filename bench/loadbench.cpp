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

/// A program at rest on a screen of its own; it ends with the object.
class AtRest
{
public:
    explicit AtRest(const char *program)
    {
        QProcessEnvironment environment = m_home.environment();
        environment.remove("TAMBER_TRACE"_s);
        m_process.setProcessEnvironment(environment);
        m_process.start(QString::fromLocal8Bit(program), QStringList());
        while (!m_display.showsAny())
            QThread::msleep(1);
        QThread::sleep(settling);
    }
    ~AtRest()
    {
        m_process.kill();
        m_process.waitForFinished();
        while (m_display.showsAny())
            QThread::msleep(1);
    }

    /// The part of a processor that it takes from now on, in percent: all of it, and of that what
    /// its first thread takes, the one with the windows.
    struct Load
    {
        double all;
        double gui;
    };
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

    /// Takes a window of the program off the screen, as when it is minimised.
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
    /// User and system time so far, in nanoseconds: the ticks of the other counters are too coarse
    /// for programs that do so little.
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
    const double reference = AtRest(REPAINT_WINDOW).load().all;
    report::figure("1000 x 300 widget repainted ten times a second: processor"_s, reference, "%"_s);
    AtRest demo(TAMBER_DEMO);
    const AtRest::Load load = demo.load();
    report::against("demo with its meters running: processor"_s, load.all, reference, "%"_s);
    report::figure("of that the thread with the windows"_s, load.gui, "%"_s);
    demo.hide("Simulated Tamber"_s);
    report::figure("demo without the device's window: processor"_s, demo.load().all, "%"_s);
}
