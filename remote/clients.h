#pragma once

#include "mixer/wallclock.h"

#include <QByteArray>
#include <QHostAddress>
#include <QMap>
#include <QSet>
#include <QString>

#include <vector>

/// Who may control the mixer, and what each client is sent. Knows no socket. GUI thread only.
namespace remote {

/// The user's answer about a computer in the network.
enum class Permission {
    Now,    ///< until remote control is switched off or the panel ends
    Always, ///< kept
    Refuse, ///< for as long as Now: the user's "Not Now"
    Never,  ///< kept
};
/// By the computer's address in words.
using Permissions = QMap<QString, Permission>;

/// Where packets come from and go to.
struct Endpoint
{
    QHostAddress address;
    quint16 port;

    bool operator==(const Endpoint &o) const { return address == o.address && port == o.port; }
    QString inWords() const;
};

/// Counts events, such as messages, against a limit for each second.
struct RateCounter
{
    /// Adds messages. Returns how many of them are within the limit.
    int add(int messages, int limit, qint64 now);

    qint64 begin = 0;
    int messages = 0;
};

/// A client: a program that has sent a message from one port.
struct Client
{
    Endpoint endpoint;
    qint64 since = 0; ///< time of the first message
    qint64 heard = 0; ///< time of the last message
    QString last;     ///< the last message in words
    RateCounter count;
    quint16 replyPort = 0; ///< answers go to this port; 0 for the client's own
    qint64 changesTo = 0;  ///< end of the subscription to changes
    qint64 metersTo = 0;   ///< end of the subscription to meters
    qint64 stateSent = 0;  ///< time of the last whole state
    bool isStateDue = false;
    /// Addresses that the client moves, with the time of its last message to each.
    QMap<QByteArray, qint64> moving;
};

class Clients
{
public:
    static constexpr int most = 8;
    static constexpr int perSecond = 500;      ///< messages of one client
    static constexpr int subscription = 10000; ///< milliseconds
    static constexpr int settlingTime = 250;   ///< milliseconds without a message to an address
    static constexpr int silentTime = 60000;   ///< after which a client leaves the list
    static constexpr int mostQuestions = most; ///< that wait for the user's answer
    static constexpr int quietTime = 10000;    ///< without a question after "not now"
    static constexpr int stateInterval = 1000; ///< between two whole states for a client

    /// @param clock must outlive the object
    explicit Clients(mixer::WallClock &clock) : m_clock(clock) {}

    /// What to do with a packet.
    enum class Verdict {
        Take,
        Full,   ///< answer with an error: there are eight clients already
        Ignore, ///< no answer
        Ask,    ///< no answer, and the user is to be asked about the address
    };
    /// Decides about a packet. A new client enters the list. If the list is full, it takes the
    /// place of the client that has been silent longest and has no subscription.
    Verdict admit(const Endpoint &from);

    /// How many messages may be performed.
    struct Allowance
    {
        int messages;
        bool isExceeded; ///< now, for the first time in this second
    };
    /// Counts messages of a client in the list, and those of all clients.
    Allowance count(const Endpoint &from, int messages);

    void note(const Endpoint &from, const QString &lastMessage);

    /// @name Permissions of computers in the network. This computer needs none.
    ///@{
    const Permissions &permissions() const { return m_permissions; }
    void setPermissions(const Permissions &permissions) { m_permissions = permissions; }
    /// Returns whether the user has answered about a computer.
    bool isKnown(const QHostAddress &address) const
    {
        return m_permissions.contains(address.toString());
    }
    /// Answers a question. A computer that may not speak any more leaves the list. With
    /// Permission::Refuse the other questions that wait for an answer are forgotten too.
    void answer(const QHostAddress &address, Permission permission);
    /// Forgets an answer; the user is asked again.
    void forget(const QString &address);
    /// While this is on, every packet is ignored and nothing is sent. Subscriptions end, and
    /// questions that wait for an answer are forgotten.
    void setRefusingAll(bool refusing);
    ///@}

    /// @name Subscriptions
    ///@{
    /// Returns where to send what a client is to be told.
    Endpoint replyTo(const Endpoint &from) const;
    /// Begins, renews or ends a subscription to changes. One that begins makes the whole state due.
    /// @param port of the client's computer at which it wants to be told; 0 for that of the
    ///             subscription before, at first its own. Programs that send and receive at
    ///             different ports need it. If another client is told at the port already, that
    ///             one's subscription is meant, so that a program may send each message from a new
    ///             port.
    void subscribe(const Endpoint &from, bool on, quint16 port = 0);
    /// The same for meters, without a state.
    void subscribeMeters(const Endpoint &from, bool on, quint16 port = 0);
    std::vector<Endpoint> subscribers() const;
    std::vector<Endpoint> meterSubscribers() const;
    /// Returns the clients that are to be sent the whole state now: once, and not more often than
    /// once a second.
    std::vector<Endpoint> takeDueStates();
    bool isAnyStateDue() const;
    ///@}

    /// @name Echoes
    /// What a client moves is not sent back to it, only the value at which it stops.
    ///@{
    void noteMove(const Endpoint &from, const QByteArray &address);
    bool isMoving(const Endpoint &client, const QByteArray &address) const;
    bool isAnyMoving() const;
    struct Stop
    {
        Endpoint client;
        QByteArray address;
    };
    std::vector<Stop> takeStops();
    ///@}

    /// Returns the clients that were heard in the last minute or have a subscription.
    std::vector<Client> list() const;
    qint64 now() const { return m_clock.now(); }

private:
    bool mayStay(const Client &client, qint64 now) const;
    Client *find(const Endpoint &endpoint);
    const Client *find(const Endpoint &endpoint) const;
    Client *subscriber(const Endpoint &from, quint16 port);
    bool makeSpace();

    mixer::WallClock &m_clock;
    std::vector<Client> m_clients;
    RateCounter m_count; ///< of all clients
    Permissions m_permissions;
    QSet<QString> m_asked;   ///< addresses whose question waits for an answer
    qint64 m_quietUntil = 0; ///< no question before
    bool m_isRefusingAll = false;
};

} // namespace remote
