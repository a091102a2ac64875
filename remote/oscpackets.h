#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <variant>
#include <vector>

/// Reading and writing the packets of Open Sound Control 1.0. Pure functions; any thread.
namespace remote {

/// A value of a message. The first alternative stands for a value of any other type, such as a
/// blob. Read values are widened: T and F become 1 and 0, a long integer and a double become a
/// float.
using Argument = std::variant<std::monostate, int, float, QString>;

/// A message: an address such as "/strip/3/fader" and its values.
struct Message
{
    QByteArray address;
    std::vector<Argument> arguments;

    bool operator==(const Message &o) const
    {
        return address == o.address && arguments == o.arguments;
    }
};

constexpr int longestPacket = 8192; ///< bytes that are read
constexpr int deepestBundle = 4;    ///< bundles inside each other that are read
constexpr int mostArguments = 16;   ///< of a message; what follows is left out
/// Bytes of a packet that is written. Networks send packets of this size in one piece.
constexpr int longestBundle = 1400;

/// Returns the messages of a packet in their order, those of bundles included; times are ignored.
/// Returns nothing if any part of the packet is malformed or a limit is exceeded.
std::optional<std::vector<Message>> readPacket(const QByteArray &packet);

/// Returns a packet with one message, or an empty one if it would exceed `longestPacket`.
QByteArray writeMessage(const Message &message);
/// Returns bundles with these messages in their order, to be executed at once, each of at most
/// `longestBundle` bytes. A message that does not fit into one is left out.
std::vector<QByteArray> writeBundles(const std::vector<Message> &messages);

} // namespace remote
