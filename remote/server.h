#pragma once

#include "remote/clients.h"
#include "remote/dispatcher.h"
#include "remote/nearnetworks.h"

#include <QObject>
#include <QTimer>
#include <QUdpSocket>

#include <memory>
#include <vector>

namespace remote {

/// Who can reach the server.
enum class Reach { Computer, Network };

constexpr quint16 defaultPort = 9000;

/// Remote control over the network: takes packets, performs their messages and answers, and tells
/// the subscribers what has changed. While no object exists there is no socket. GUI thread only.
class Server : public QObject
{
    Q_OBJECT

public:
    /// All references must outlive the object.
    Server(
        const storage::Store &store, mixer::Mixer &mixer, const mixer::Presence &presence,
        const Panel &panel, mixer::WallClock &clock);

    /// Opens the sockets, for IPv4 and where possible for IPv6. Returns false if the port is in
    /// use; the server then has no socket.
    /// @param port 0 for any free one
    bool listen(Reach reach, quint16 port);
    quint16 port() const { return m_sockets.empty() ? quint16(0) : m_sockets.front()->localPort(); }

    Clients &clients() { return m_clients; }
    const Clients &clients() const { return m_clients; }

    /// Sends the subscribers the whole state. For values that were replaced without a change set.
    void sendEverything();
    /// Sends the subscribers the current scene if it has changed.
    void sendScene();
    /// Sends those who want them the levels and the gain reduction. Call it every 100 ms.
    void sendMeters();

signals:
    /// A computer in the network wants to control the mixer; see Clients::answer().
    void asked(const QHostAddress &address);

private:
    bool open(const QHostAddress &address, quint16 port);
    void receive(QUdpSocket &socket);
    void take(const Endpoint &from, const QByteArray &packet);
    void read(const Endpoint &from, const QByteArray &packet);
    void refuse(const Endpoint &from, const QByteArray &packet);
    bool isOwn(const Endpoint &endpoint) const;
    void perform(const Endpoint &from, const Message &message);
    void subscribe(const Endpoint &from, const Address &address, int wanted);
    void answer(const Endpoint &to, const Message &message);
    void sendDueStates();
    void send(const Endpoint &client, const std::vector<Message> &messages);
    void sendPacket(const Endpoint &to, const QByteArray &packet);
    void collect(const storage::ChangeSet &changes);
    void add(int address);
    void flush();
    Message stateOf(const Address &address) const;

    const storage::Store &m_store;
    Dispatcher m_dispatcher;
    Clients m_clients;
    std::vector<std::unique_ptr<QUdpSocket>> m_sockets;
    std::vector<bool> m_changed;     ///< by the index of addresses(); not sent yet
    Argument m_scene;                ///< told last
    QTimer m_flush;                  ///< runs while something has changed, is moving or is due
    std::optional<qint64> m_refused; ///< time of the last answer that there is no place
    NearNetworks m_near;
};

} // namespace remote
