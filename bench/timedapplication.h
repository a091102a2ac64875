#pragma once

#include "storage/settings.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

/// An application that measures the time that its GUI thread spends in events: input, timers,
/// queued calls and repaints. Nested events count as part of the outer one.
class TimedApplication : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        const bool isGuiThread = QThread::currentThread() == thread();
        if (!isGuiThread || m_nested) return QApplication::notify(receiver, event);
        m_nested = true;
        QElapsedTimer timer;
        timer.start();
        const bool handled = QApplication::notify(receiver, event);
        m_nanoseconds += timer.nsecsElapsed();
        m_nested = false;
        return handled;
    }

    /// Returns the time spent in events so far.
    double milliseconds() const { return static_cast<double>(m_nanoseconds) / 1e6; }

private:
    bool m_nested = false;
    qint64 m_nanoseconds = 0;
};

/// Prepares the settings so that the panel shows no boxes: the start information counts as seen,
/// and the address for updates is one where no server answers.
inline void leaveAlone(Settings &settings)
{
    settings.write(storage::informationSeen, true);
    settings.write(storage::updateAddress, QStringLiteral("http://127.0.0.1:9/"));
}

/// Runs the event loop for this time.
inline void runEvents(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}
