#pragma once

#include "storage/settings.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

/// An application that adds up the time that its GUI thread spends in events: input, timers,
/// queued calls, repaints. What an event causes while it is handled counts with it.
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

    double milliseconds() const { return static_cast<double>(m_nanoseconds) / 1e6; }

private:
    bool m_nested = false;
    qint64 m_nanoseconds = 0;
};

/// Settings of a user who has seen the start information, for a panel that is left alone: it looks
/// for updates where nobody answers.
inline void leaveAlone(Settings &settings)
{
    settings.write(storage::informationSeen, true);
    settings.write(storage::updateAddress, QStringLiteral("http://127.0.0.1:9/"));
}

/// Runs the event loop for so long.
inline void runEvents(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}
