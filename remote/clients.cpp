#include "remote/clients.h"

#include <algorithm>

namespace remote {

namespace {

constexpr int second = 1000; // milliseconds

bool isAllowed(Permission permission)
{
    return permission == Permission::Now || permission == Permission::Always;
}

template <typename Predicate>
std::vector<Endpoint> endpointsOf(const std::vector<Client> &clients, Predicate isWanted)
{
    std::vector<Endpoint> endpoints;
    for (const Client &client : clients)
        if (isWanted(client)) endpoints.push_back(client.endpoint);
    return endpoints;
}

} // namespace

QString Endpoint::inWords() const
{
    return address.isLoopback() ? QStringLiteral("this computer, port %1").arg(port)
                                : QStringLiteral("%1, port %2").arg(address.toString()).arg(port);
}

Client *Clients::find(const Endpoint &endpoint)
{
    const auto place = std::find_if(m_clients.begin(), m_clients.end(), [&](const Client &client) {
        return client.endpoint == endpoint;
    });
    return place == m_clients.end() ? nullptr : &*place;
}

const Client *Clients::find(const Endpoint &endpoint) const
{
    return const_cast<Clients *>(this)->find(endpoint);
}

bool Clients::mayStay(const Client &client, qint64 now) const
{
    return std::max({client.heard + silentTime, client.changesTo, client.metersTo}) > now;
}

/// Frees a place in the list. Returns false if every client has a subscription.
bool Clients::makeSpace()
{
    const qint64 time = now();
    m_clients.erase(
        std::remove_if(
            m_clients.begin(), m_clients.end(),
            [&](const Client &client) { return !mayStay(client, time); }),
        m_clients.end());
    if (m_clients.size() < most) return true;
    auto silent = m_clients.end();
    for (auto client = m_clients.begin(); client != m_clients.end(); ++client) {
        const bool isSubscribed = std::max(client->changesTo, client->metersTo) > time;
        if (!isSubscribed && (silent == m_clients.end() || client->heard < silent->heard))
            silent = client;
    }
    if (silent == m_clients.end()) return false;
    m_clients.erase(silent);
    return true;
}

Clients::Verdict Clients::admit(const Endpoint &from)
{
    if (m_isRefusingAll || from.port == 0 || from.address.isNull()) return Verdict::Ignore;
    if (!from.address.isLoopback()) {
        const QString address = from.address.toString();
        const auto known = m_permissions.constFind(address);
        if (known == m_permissions.constEnd()) {
            if (m_asked.contains(address) || m_asked.size() >= mostQuestions ||
                now() < m_quietUntil)
                return Verdict::Ignore;
            m_asked.insert(address);
            return Verdict::Ask;
        }
        if (!isAllowed(*known)) return Verdict::Ignore;
    }
    Client *client = find(from);
    if (!client) {
        if (!makeSpace()) return Verdict::Full;
        client = &m_clients.emplace_back();
        client->endpoint = from;
        client->since = now();
    }
    client->heard = now();
    return Verdict::Take;
}

int RateCounter::add(int added, int limit, qint64 now)
{
    if (now - begin >= second) *this = {now, 0};
    const int free = std::max(0, limit - messages);
    messages += added;
    return std::min(added, free);
}

/// A client that changes its port with every message is still limited by the count of all.
Clients::Allowance Clients::count(const Endpoint &from, int messages)
{
    Client *client = find(from);
    if (!client) return {0, false};
    const int own = client->count.add(messages, perSecond, now());
    const int all = m_count.add(own, most * perSecond, now());
    const int before = client->count.messages - messages;
    return {all, before <= perSecond && client->count.messages > perSecond};
}

void Clients::note(const Endpoint &from, const QString &lastMessage)
{
    if (Client *client = find(from)) client->last = lastMessage;
}

void Clients::answer(const QHostAddress &address, Permission permission)
{
    m_asked.remove(address.toString());
    m_permissions.insert(address.toString(), permission);
    if (isAllowed(permission)) return;
    if (permission == Permission::Refuse) {
        m_quietUntil = now() + quietTime;
        m_asked.clear();
    }
    m_clients.erase(
        std::remove_if(
            m_clients.begin(), m_clients.end(),
            [&](const Client &client) { return client.endpoint.address == address; }),
        m_clients.end());
}

void Clients::forget(const QString &address)
{
    answer(QHostAddress(address), Permission::Never);
    m_permissions.remove(address);
    m_quietUntil = 0; // the user wants to be asked
}

void Clients::setRefusingAll(bool refusing)
{
    m_isRefusingAll = refusing;
    if (!refusing) return;
    m_asked.clear();
    for (Client &client : m_clients) {
        client.changesTo = client.metersTo = 0;
        client.isStateDue = false;
    }
}

Endpoint Clients::replyTo(const Endpoint &from) const
{
    const Client *client = find(from);
    return client && client->replyPort != 0 ? Endpoint{from.address, client->replyPort} : from;
}

/// Returns the client whose subscription is meant, null for none.
Client *Clients::subscriber(const Endpoint &from, quint16 port)
{
    if (port == 0) return find(from);
    const Endpoint wanted{from.address, port};
    const auto told = std::find_if(m_clients.begin(), m_clients.end(), [&](const Client &client) {
        return replyTo(client.endpoint) == wanted;
    });
    if (told != m_clients.end()) return &*told;
    Client *client = find(from);
    if (client) client->replyPort = port;
    return client;
}

void Clients::subscribe(const Endpoint &from, bool on, quint16 port)
{
    Client *client = subscriber(from, port);
    if (!client) return;
    const bool isNew = on && client->changesTo <= now();
    client->isStateDue = on && (isNew || client->isStateDue);
    client->changesTo = on ? now() + subscription : 0;
}

void Clients::subscribeMeters(const Endpoint &from, bool on, quint16 port)
{
    if (Client *client = subscriber(from, port)) client->metersTo = on ? now() + subscription : 0;
}

std::vector<Endpoint> Clients::takeDueStates()
{
    std::vector<Endpoint> due;
    const qint64 time = now();
    for (Client &client : m_clients) {
        const bool isTooSoon = client.stateSent > 0 && time - client.stateSent < stateInterval;
        if (!client.isStateDue || isTooSoon) continue;
        client.isStateDue = false;
        client.stateSent = time;
        due.push_back(client.endpoint);
    }
    return due;
}

bool Clients::isAnyStateDue() const
{
    return std::any_of(
        m_clients.begin(), m_clients.end(), [](const Client &client) { return client.isStateDue; });
}

std::vector<Endpoint> Clients::subscribers() const
{
    return endpointsOf(m_clients, [time = now()](const Client &c) { return c.changesTo > time; });
}

std::vector<Endpoint> Clients::meterSubscribers() const
{
    return endpointsOf(m_clients, [time = now()](const Client &c) { return c.metersTo > time; });
}

void Clients::noteMove(const Endpoint &from, const QByteArray &address)
{
    Client *client = find(from);
    if (client && client->changesTo > now()) client->moving[address] = now();
}

bool Clients::isMoving(const Endpoint &client, const QByteArray &address) const
{
    const Client *known = find(client);
    return known && known->moving.contains(address);
}

bool Clients::isAnyMoving() const
{
    return std::any_of(m_clients.begin(), m_clients.end(), [](const Client &client) {
        return !client.moving.isEmpty();
    });
}

/// Returns the moves that have ended since the last call.
std::vector<Clients::Stop> Clients::takeStops()
{
    std::vector<Stop> stops;
    const qint64 time = now();
    for (Client &client : m_clients) {
        for (auto move = client.moving.begin(); move != client.moving.end();) {
            const bool hasStopped = time - *move >= settlingTime;
            if (hasStopped) stops.push_back({client.endpoint, move.key()});
            move = hasStopped ? client.moving.erase(move) : move + 1;
        }
    }
    return stops;
}

std::vector<Client> Clients::list() const
{
    std::vector<Client> current;
    std::copy_if(
        m_clients.begin(), m_clients.end(), std::back_inserter(current),
        [this, time = now()](const Client &client) { return mayStay(client, time); });
    return current;
}

} // namespace remote
