#include "remote/server.h"

#include "remote/messagewords.h"

#include <QNetworkDatagram>
#include <QNetworkInterface>

#include <map>

namespace remote {

namespace {

constexpr int flushInterval = 20; ///< milliseconds; changes within it make one bundle
constexpr int packetsAtOnce = 50;
const QString fullText = QStringLiteral("There are eight clients already.");
const QString exceededText = QStringLiteral("More than 500 messages in a second are left out.");
const QByteArray errorAddress = QByteArrayLiteral("/error");

Message error(const QString &sentence)
{
    return {errorAddress, {sentence}};
}

/// Returns the indices of the addresses that show a setting.
const std::vector<int> &addressesOf(const Setting &setting)
{
    using Place = std::pair<storage::Group, storage::Key>;
    static const std::map<Place, std::vector<int>> all = [] {
        std::map<Place, std::vector<int>> made;
        for (std::size_t i = 0; i < addresses().size(); ++i) {
            if (!addresses()[i].hasValue()) continue;
            for (const Setting &each : settingsOf(addresses()[i]))
                made[{each.group, each.key}].push_back(static_cast<int>(i));
        }
        return made;
    }();
    static const std::vector<int> none;
    const auto found = all.find({setting.group, setting.key});
    return found == all.end() ? none : found->second;
}

/// Returns the indices of the addresses whose value is about this.
std::vector<int> addressesAbout(std::initializer_list<What> wanted)
{
    std::vector<int> indices;
    for (std::size_t i = 0; i < addresses().size(); ++i)
        for (const What what : wanted)
            if (addresses()[i].row->what == what) indices.push_back(static_cast<int>(i));
    return indices;
}

} // namespace

Server::Server(
    const storage::Store &store, mixer::Mixer &mixer, const mixer::Presence &presence,
    const Panel &panel, mixer::WallClock &clock)
    : m_store(store), m_dispatcher(store, mixer, presence, panel), m_clients(clock),
      m_changed(addresses().size()), m_scene(m_dispatcher.valueOf(*find("/scene/recall")))
{
    m_flush.setSingleShot(true);
    m_flush.setInterval(flushInterval);
    connect(&m_flush, &QTimer::timeout, this, &Server::flush);
    connect(&store, &storage::Store::committed, this, &Server::collect);
}

bool Server::open(const QHostAddress &address, quint16 port)
{
    auto socket = std::make_unique<QUdpSocket>();
    // Otherwise some systems let two programs have one port, and packets go to either.
    if (!socket->bind(address, port, QAbstractSocket::DontShareAddress)) {
        const auto fault = socket->error();
        return fault != QAbstractSocket::AddressInUseError;
    }
    QUdpSocket *const bound = socket.get();
    connect(bound, &QUdpSocket::readyRead, this, [this, bound] { receive(*bound); });
    m_sockets.push_back(std::move(socket));
    return true;
}

bool Server::listen(Reach reach, quint16 wanted)
{
    const bool isLocal = reach == Reach::Computer;
    m_sockets.clear();
    const bool isOpen = open(isLocal ? QHostAddress::LocalHost : QHostAddress::AnyIPv4, wanted) &&
                        !m_sockets.empty() &&
                        open(isLocal ? QHostAddress::LocalHostIPv6 : QHostAddress::AnyIPv6, port());
    if (!isOpen) m_sockets.clear();
    return isOpen;
}

void Server::receive(QUdpSocket &socket)
{
    // The socket calls again if more packets wait. In between the window is not kept waiting.
    for (int i = 0; i < packetsAtOnce && socket.hasPendingDatagrams(); ++i) {
        const QNetworkDatagram datagram = socket.receiveDatagram(longestPacket + 1);
        if (!datagram.isValid()) continue;
        const int port = datagram.senderPort();
        take({datagram.senderAddress(), static_cast<quint16>(qMax(0, port))}, datagram.data());
    }
}

/// Decides about a packet before it is read: what is too much costs nothing but this.
void Server::take(const Endpoint &from, const QByteArray &packet)
{
    if (isOwn(from)) return; // or the panel would control itself
    if (!from.address.isLoopback() && !m_clients.isKnown(from.address) && !m_near.has(from.address))
        return;
    switch (m_clients.admit(from)) {
    case Clients::Verdict::Take:
        break;
    case Clients::Verdict::Full:
        return refuse(from, packet);
    case Clients::Verdict::Ask:
        emit asked(from.address);
        return;
    case Clients::Verdict::Ignore:
        return;
    }
    const Clients::Allowance first = m_clients.count(from, 1);
    if (first.isExceeded) answer(from, error(exceededText));
    if (first.messages > 0) read(from, packet);
}

void Server::read(const Endpoint &from, const QByteArray &packet)
{
    const auto messages = readPacket(packet);
    if (!messages)
        return answer(from, error(QStringLiteral("The packet is not valid OSC or too large.")));
    if (messages->empty()) return;
    const int more = static_cast<int>(messages->size()) - 1;
    const Clients::Allowance rest = m_clients.count(from, more);
    for (int i = 0; i <= qMin(more, rest.messages); ++i)
        perform(from, (*messages)[static_cast<std::size_t>(i)]);
    if (rest.isExceeded) answer(from, error(exceededText));
}

/// Says that there is no place, but not more often than once a second, and never to an error: two
/// panels would answer each other for ever.
void Server::refuse(const Endpoint &from, const QByteArray &packet)
{
    constexpr int interval = 1000; // milliseconds
    const qint64 now = m_clients.now();
    if (packet.startsWith(errorAddress) || (m_refused && now - *m_refused < interval)) return;
    m_refused = now;
    answer(from, error(fullText));
}

bool Server::isOwn(const Endpoint &endpoint) const
{
    return endpoint.port == port() &&
           (endpoint.address.isLoopback() ||
            QNetworkInterface::allAddresses().contains(endpoint.address));
}

void Server::perform(const Endpoint &from, const Message &message)
{
    // Two servers that got each other's address would answer errors with errors for ever.
    if (message.address == errorAddress) return;
    m_clients.note(from, inWords(message));
    if (const Address *moved = find(message.address);
        moved && moved->hasValue() && !message.arguments.empty()) {
        m_clients.noteMove(from, message.address);
        if (!m_flush.isActive()) m_flush.start();
    }
    const Dispatcher::Outcome outcome = m_dispatcher.perform(message);
    const Endpoint to = m_clients.replyTo(from);
    if (!outcome.error.isEmpty()) answer(to, error(outcome.error));
    if (outcome.value) answer(to, {message.address, {*outcome.value}});
    if (outcome.subscribe) subscribe(from, *outcome.address, *outcome.subscribe);
}

/// @param wanted 1 or a port to begin, 0 to end
void Server::subscribe(const Endpoint &from, const Address &address, int wanted)
{
    const bool on = wanted != 0;
    const auto port = static_cast<quint16>(wanted > 1 ? wanted : 0);
    if (isOwn({from.address, port}))
        return answer(from, error(QStringLiteral("Port %1 is the panel's own.").arg(port)));
    if (address.row->what == What::SubscribeMeters)
        return m_clients.subscribeMeters(from, on, port);
    m_clients.subscribe(from, on, port);
    sendDueStates();
}

void Server::sendDueStates()
{
    const std::vector<Endpoint> clients = m_clients.takeDueStates();
    if (m_clients.isAnyStateDue() && !m_flush.isActive()) m_flush.start();
    if (clients.empty()) return;
    std::vector<Message> state;
    for (const Address &each : addresses())
        if (each.isPartOfState()) state.push_back(stateOf(each));
    for (const Endpoint &client : clients)
        send(client, state);
}

Message Server::stateOf(const Address &address) const
{
    return {address.path, {m_dispatcher.valueOf(address)}};
}

void Server::answer(const Endpoint &to, const Message &message)
{
    sendPacket(to, writeMessage(message));
}

void Server::send(const Endpoint &client, const std::vector<Message> &messages)
{
    const Endpoint to = m_clients.replyTo(client);
    for (const QByteArray &packet : writeBundles(messages))
        sendPacket(to, packet);
}

void Server::sendPacket(const Endpoint &to, const QByteArray &packet)
{
    for (const auto &socket : m_sockets)
        if (socket->localAddress().protocol() == to.address.protocol())
            socket->writeDatagram(packet, to.address, to.port);
}

void Server::add(int address)
{
    m_changed[static_cast<std::size_t>(address)] = true;
    if (!m_flush.isActive()) m_flush.start();
}

void Server::collect(const storage::ChangeSet &changes)
{
    for (const storage::Change &change : changes.changes)
        for (const int address : addressesOf({change.group, change.key}))
            add(address);
}

void Server::flush()
{
    const std::vector<Endpoint> subscribers = m_clients.subscribers();
    std::vector<Message> changed;
    for (std::size_t i = 0; i < m_changed.size() && !subscribers.empty(); ++i)
        if (m_changed[i]) changed.push_back(stateOf(addresses()[i]));
    m_changed.assign(m_changed.size(), false);
    const std::vector<Clients::Stop> stops = m_clients.takeStops();
    for (const Endpoint &client : subscribers) {
        std::vector<Message> news;
        for (const Message &message : changed)
            if (!m_clients.isMoving(client, message.address)) news.push_back(message);
        for (const Clients::Stop &stop : stops)
            if (stop.client == client) news.push_back(stateOf(*find(stop.address)));
        send(client, news);
    }
    if (m_clients.isAnyMoving()) m_flush.start();
    sendDueStates();
}

void Server::sendEverything()
{
    for (std::size_t i = 0; i < addresses().size(); ++i)
        if (addresses()[i].isPartOfState()) add(static_cast<int>(i));
}

void Server::sendScene()
{
    const Address &scene = *find("/scene/recall");
    const Argument current = m_dispatcher.valueOf(scene);
    if (current == m_scene) return;
    m_scene = current;
    add(static_cast<int>(&scene - addresses().data()));
}

void Server::sendMeters()
{
    const std::vector<Endpoint> clients = m_clients.meterSubscribers();
    if (clients.empty()) return;
    static const std::vector<int> meters = addressesAbout({What::Level, What::Reduction});
    std::vector<Message> levels;
    levels.reserve(meters.size());
    for (const int address : meters)
        levels.push_back(stateOf(addresses()[static_cast<std::size_t>(address)]));
    for (const Endpoint &client : clients)
        send(client, levels);
}

} // namespace remote
