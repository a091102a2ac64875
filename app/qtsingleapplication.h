#pragma once

#include <QApplication>
#include <QLocalServer>
#include <QLockFile>
#include <QPointer>

#include <memory>

/// An application that runs once per user session. The first process of a program holds a lock and
/// listens; later ones find the lock held and can send it messages. A process that crashed leaves
/// nothing behind that stops the next start. GUI thread only.
class QtSingleApplication : public QApplication
{
    Q_OBJECT

public:
    QtSingleApplication(int &argc, char **argv, bool GUIenabled = true);
    ~QtSingleApplication() override;

    /// True when another process of this program runs. Otherwise this one is the first from now on.
    bool isRunning();

    /// The window that messageReceived brings to the front, unless activateOnMessage is false.
    void setActivationWindow(QWidget *window, bool activateOnMessage = true);
    QWidget *activationWindow() const;

public slots:
    /// Sends a message to the first process, and waits until that has acknowledged it; false when
    /// it has not within timeout milliseconds. Blocks.
    bool sendMessage(const QString &message, int timeout = 5000);

    /// Raises and activates the activation window, and the box that is open over it.
    void activateWindow();

signals:
    /// A later process has sent this.
    void messageReceived(const QString &message);

private:
    bool isStale(QLockFile &lock) const;
    void listen();
    void acceptConnection();

    const QString m_id;     ///< of the program in this session
    const QString m_folder; ///< of the lock and the socket; "" if there is none that is safe
    std::unique_ptr<QLockFile> m_lock;
    QLocalServer m_server;
    QPointer<QWidget> m_window;
};
