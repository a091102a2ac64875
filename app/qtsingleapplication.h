#pragma once

#include <QApplication>
#include <QLocalServer>
#include <QLockFile>
#include <QPointer>

#include <memory>

/// An application that runs once per user session. The first process of a program holds a lock and
/// listens on a local socket. Later processes find the lock held and can send messages to the
/// first. The lock of a crashed process does not stop the next start. GUI thread only.
// contract: the interface of this class.
class QtSingleApplication : public QApplication
{
    Q_OBJECT

public:
    /// @param GUIenabled has no effect
    QtSingleApplication(int &argc, char **argv, bool GUIenabled = true);
    ~QtSingleApplication() override;

    /// Returns whether another process of this program is running. If not, this process takes the
    /// lock and listens. Returns false, without a lock, if there is no safe folder for the lock.
    bool isRunning();

    /// Sets the window that activateWindow() brings to the front.
    /// @param activateOnMessage whether each message of a later process does so too
    void setActivationWindow(QWidget *window, bool activateOnMessage = true);
    /// Returns that window, or null if it is not set or was deleted.
    QWidget *activationWindow() const;

public slots:
    /// Sends a message to the first process and blocks until the first process acknowledges it.
    /// Returns false if there is no acknowledgement within `timeout` milliseconds.
    bool sendMessage(const QString &message, int timeout = 5000);

    /// Raises and activates the activation window, and the modal box above it if one is open.
    void activateWindow();

signals:
    /// A later process has sent a message to this process.
    void messageReceived(const QString &message);

private:
    bool isStale(QLockFile &lock) const;
    void listen();
    void acceptConnection();

    const QString m_id;     ///< identifies the program, user and session
    const QString m_folder; ///< folder of lock and socket; "" if no folder is safe
    std::unique_ptr<QLockFile> m_lock;
    QLocalServer m_server;
    QPointer<QWidget> m_window;
};
