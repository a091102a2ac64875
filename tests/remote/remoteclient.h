#pragma once

#include "remote/oscpackets.h"
#include "tests/patience.h"

#include <QUdpSocket>
#include <QtTest>

#include <map>

/// A client of a remote-control server in the same process, over the loopback interface.
class RemoteClient
{
public:
    static constexpr int patience = 10000 * slowness;

    explicit RemoteClient(quint16 server, QHostAddress address = QHostAddress::LocalHost)
        : m_server(server), m_address(address)
    {
        if (!m_socket.bind(address, 0)) qFatal("no socket");
    }

    quint16 port() const { return m_socket.localPort(); }
    void sendPacket(const QByteArray &packet)
    {
        m_socket.writeDatagram(packet, m_address, m_server);
    }
    void send(const QByteArray &address, const std::vector<remote::Argument> &arguments = {})
    {
        sendPacket(remote::writeMessage({address, arguments}));
    }

    /// Receives what has arrived. The values are kept by address.
    void receive()
    {
        while (m_socket.hasPendingDatagrams()) {
            QByteArray packet(int(m_socket.pendingDatagramSize()), '\0');
            m_socket.readDatagram(packet.data(), packet.size());
            const auto messages = remote::readPacket(packet);
            for (const remote::Message &message : messages.value()) {
                values[message.address] = message.arguments.at(0);
                ++counts[message.address];
                ++count;
            }
        }
    }
    /// Waits for a value at an address. Forgets it afterwards.
    remote::Argument take(const QByteArray &address)
    {
        const auto arrived = [&] {
            receive();
            return values.count(address) > 0;
        };
        if (!QTest::qWaitFor(arrived, patience)) return {};
        const remote::Argument value = values[address];
        values.erase(address);
        return value;
    }
    remote::Argument ask(const QByteArray &address)
    {
        receive();
        values.erase(address);
        send(address);
        return take(address);
    }
    QString takeError()
    {
        const remote::Argument sentence = take("/error");
        const auto *text = std::get_if<QString>(&sentence);
        return text ? *text : QString();
    }
    /// Waits until the server has taken everything that was sent before. Its answers have arrived.
    void settle() { ask("/reduction"); }

    std::map<QByteArray, remote::Argument> values; ///< the newest one of each address
    std::map<QByteArray, int> counts;              ///< messages by address
    int count = 0;                                 ///< messages

private:
    QUdpSocket m_socket;
    const quint16 m_server;
    const QHostAddress m_address;
};
