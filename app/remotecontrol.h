#pragma once

#include "remote/server.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <optional>

class ControlGestures;
class History;
class QMessageBox;
class Scenes;

/// The remote control as the user sees it: whether it is on, for whom, and the question about a
/// computer in the network. The native store keeps the choices. While it is off there is no server.
/// GUI thread only.
class RemoteControl : public QObject
{
    Q_OBJECT

public:
    /// What the remote control works on. All must outlive the object.
    struct Context
    {
        storage::Store &store;
        mixer::Mixer &mixer;
        const mixer::Presence &presence;
        mixer::WallClock &clock;
        const ControlGestures &gestures;
        History &history;
        Scenes &scenes;
    };

    /// Starts the server if it was on last.
    /// @param organisation of the native store
    /// @param window parent of the boxes
    RemoteControl(const Context &context, const QString &organisation, QWidget *window);

    /// @name Who can reach the mixer: nobody, this computer or this network
    ///@{
    std::optional<remote::Reach> reach() const { return m_reach; }
    void setReach(std::optional<remote::Reach> reach);
    int port() const { return m_port; }
    void setPort(int port); ///< ignores ports outside remote::portRange
    /// Returns whether another program uses the port. The port is tried again every second.
    bool isPortInUse() const { return m_reach && !m_server; }
    ///@}

    /// Closes the server until resume(), while no change can be taken. All choices stay.
    void suspend();
    void resume();

    /// While this is on, nobody can control the mixer, and nobody is told anything.
    void setRefusingAll(bool refusing);
    bool isRefusingAll() const { return m_isRefusingAll; }

    std::vector<remote::Client> clients() const;
    qint64 now() const { return m_context.clock.now(); }
    const remote::Permissions &permissions() const { return m_permissions; }
    void forget(const QString &address);

    void sendMeters()
    {
        if (m_server) m_server->sendMeters();
    }
    /// Sends the whole state, for a store that was replaced.
    void sendEverything()
    {
        if (m_server) m_server->sendEverything();
    }

signals:
    void changed(); ///< anything but the list of clients

private:
    remote::Panel panel();
    QString countScene();
    void start();
    void listen();
    void ask(const QHostAddress &address);
    void dropQuestions();
    void openQuestion();
    void answer(const QHostAddress &address, remote::Permission permission);
    void readChoices();
    void storeChoices() const;

    const Context m_context;
    const QString m_organisation;
    QWidget *const m_window;
    std::optional<remote::Reach> m_reach;
    int m_port = remote::defaultPort;
    bool m_isRefusingAll = false;
    remote::Permissions m_permissions;
    std::unique_ptr<remote::Server> m_server; ///< null while it is off or the port is in use
    QTimer m_retry;                           ///< runs while the port is in use
    remote::RateCounter m_scenes;             ///< saves and recalls of all clients
    std::vector<QHostAddress> m_questions;    ///< the first one is on screen
    QPointer<QMessageBox> m_question;
};
