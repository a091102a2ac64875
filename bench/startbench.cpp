#include "benchmarks.h"
#include "report.h"
#include "tests/xinput.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <algorithm>
#include <array>

namespace {

constexpr int rounds = 21;

/// Starts a program alone on the screen and measures how long it takes to show its window.
/// Destroying the object ends the program.
class Started
{
public:
    explicit Started(const char *program)
    {
        QElapsedTimer timer;
        timer.start();
        m_process.start(QString::fromLocal8Bit(program), QStringList());
        while (!m_display.showsAny())
            QThread::usleep(500);
        m_milliseconds = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    }
    ~Started()
    {
        m_process.kill();
        m_process.waitForFinished();
        while (m_display.showsAny())
            QThread::msleep(1);
    }

    double milliseconds() const { return m_milliseconds; }

    /// Returns the resident memory in megabytes of 1024 x 1024 bytes.
    double memory() const
    {
        QFile status(QStringLiteral("/proc/%1/status").arg(m_process.processId()));
        if (!status.open(QIODevice::ReadOnly)) return 0;
        for (const QByteArray &line : status.readAll().split('\n'))
            if (line.startsWith("VmRSS:")) return line.simplified().split(' ')[1].toDouble() / 1024;
        return 0;
    }

private:
    XDisplay m_display;
    QProcess m_process;
    double m_milliseconds;
};

using Times = std::array<double, rounds>;

/// Returns the value that this share of the times does not exceed.
double quantile(Times times, double share)
{
    std::sort(times.begin(), times.end());
    return times[static_cast<std::size_t>(share * (rounds - 1))];
}

double memoryAtRest(const char *program)
{
    const Started started(program);
    QThread::sleep(3); // enough time for the full send
    return started.memory();
}

} // namespace

void benchStart()
{
    // By turns, so that a busy moment of the machine meets both.
    Times bare;
    Times panel;
    for (std::size_t round = 0; round < rounds; ++round) {
        bare[round] = Started(BARE_WINDOW).milliseconds();
        panel[round] = Started(TAMBER_DEMO).milliseconds();
    }
    const double median = quantile(bare, 0.5);
    report::figure(
        QStringLiteral("bare window with one label: start"), median, QStringLiteral("ms"));
    report::figure(QStringLiteral("... nine of ten in"), quantile(bare, 0.9), QStringLiteral("ms"));
    report::against(
        QStringLiteral("panel: process start to mapped window"), quantile(panel, 0.5), 1.6 * median,
        QStringLiteral("ms"));
    report::figure(
        QStringLiteral("... nine of ten in"), quantile(panel, 0.9), QStringLiteral("ms"));

    const double bareMemory = memoryAtRest(BARE_WINDOW);
    report::figure(
        QStringLiteral("bare window with one label: resident"), bareMemory, QStringLiteral("MB"));
    // Negative where the bare window loads a graphics driver, which the panel does without.
    report::against(
        QStringLiteral("panel: resident beyond the bare window"),
        memoryAtRest(TAMBER_DEMO) - bareMemory, 20, QStringLiteral("MB"));
}
