#include "remote/oscpackets.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <oscpack/osc/OscOutboundPacketStream.h>
#include <oscpack/osc/OscReceivedElements.h>

namespace remote {
namespace {

constexpr int bundleHead = 16; ///< bytes of the bundle's name and its time
constexpr int elementHead = 4; ///< bytes of the size in front of each message of a bundle

Argument readArgument(const osc::ReceivedMessageArgument &argument)
{
    switch (argument.TypeTag()) {
    case osc::TRUE_TYPE_TAG:
        return 1;
    case osc::FALSE_TYPE_TAG:
        return 0;
    case osc::INT32_TYPE_TAG:
        return static_cast<int>(argument.AsInt32Unchecked());
    case osc::INT64_TYPE_TAG:
        return static_cast<float>(argument.AsInt64Unchecked());
    case osc::FLOAT_TYPE_TAG:
        return argument.AsFloatUnchecked();
    case osc::DOUBLE_TYPE_TAG:
        return static_cast<float>(argument.AsDoubleUnchecked());
    case osc::STRING_TYPE_TAG:
    case osc::SYMBOL_TYPE_TAG:
        return QString::fromUtf8(argument.AsStringUnchecked());
    default:
        return {};
    }
}

/// Returns whether the library can read a message without leaving the packet. The library does not
/// check where a blob ends, and no address takes one. It looks for the end of an address at every
/// fourth byte only, so it would find other type tags behind an address that is not padded with
/// zeros.
bool isSafeToRead(const char *message, int size)
{
    const char *const end = message + size;
    const char *const addressEnd = std::find(message, end, '\0');
    const auto tagsAt = ((addressEnd - message) / 4 + 1) * 4;
    if (tagsAt > size) return false;
    const char *const tags = message + tagsAt;
    if (std::any_of(addressEnd, tags, [](char c) { return c != '\0'; })) return false;
    const char *const tagsEnd = std::find(tags, end, '\0');
    return std::find(tags, tagsEnd, 'b') == tagsEnd;
}

/// Reads a message or an element of a bundle. Returns false if it is not safe to read.
template <typename Element>
bool readMessage(const Element &element, std::vector<Message> &messages)
{
    if (!isSafeToRead(element.Contents(), element.Size())) return false;
    const osc::ReceivedMessage received(element);
    Message message;
    message.address = received.AddressPattern();
    for (auto i = received.ArgumentsBegin(); i != received.ArgumentsEnd(); ++i) {
        if (message.arguments.size() == mostArguments) break;
        message.arguments.push_back(readArgument(*i));
    }
    messages.push_back(std::move(message));
    return true;
}

/// Returns whether the sizes of a bundle's elements lead to its end. The library adds them up
/// without a check, and a size of -4 would keep it busy for ever.
bool areSizesSound(const char *bundle, int size)
{
    int at = bundleHead;
    while (at + elementHead <= size) {
        const int length = qFromBigEndian<qint32>(bundle + at);
        at += elementHead;
        if (length < 0 || length > size - at) return false;
        at += length;
    }
    return at == size;
}

template <typename Packet>
bool readBundle(const Packet &packet, int depth, std::vector<Message> &messages)
{
    if (depth > deepestBundle || !areSizesSound(packet.Contents(), packet.Size())) return false;
    const osc::ReceivedBundle bundle(packet);
    for (auto i = bundle.ElementsBegin(); i != bundle.ElementsEnd(); ++i) {
        const bool isRead =
            i->IsBundle() ? readBundle(*i, depth + 1, messages) : readMessage(*i, messages);
        if (!isRead) return false;
    }
    return true;
}

void write(osc::OutboundPacketStream &stream, const Message &message)
{
    stream << osc::BeginMessage(message.address.constData());
    for (const Argument &argument : message.arguments) {
        if (const auto *number = std::get_if<int>(&argument))
            stream << static_cast<osc::int32>(*number);
        else if (const auto *real = std::get_if<float>(&argument))
            stream << *real;
        else if (const auto *text = std::get_if<QString>(&argument))
            stream << text->toUtf8().constData();
        else
            stream << osc::OscNil;
    }
    stream << osc::EndMessage;
}

} // namespace

std::optional<std::vector<Message>> readPacket(const QByteArray &packet)
{
    if (packet.isEmpty() || packet.size() > longestPacket) return std::nullopt;
    std::vector<Message> messages;
    try {
        const osc::ReceivedPacket received(packet.constData(), packet.size());
        const bool isRead = received.IsBundle() ? readBundle(received, 1, messages)
                                                : readMessage(received, messages);
        if (!isRead) return std::nullopt;
    } catch (const osc::Exception &) {
        return std::nullopt;
    }
    return messages;
}

QByteArray writeMessage(const Message &message)
{
    std::array<char, longestPacket> buffer;
    osc::OutboundPacketStream stream(buffer.data(), buffer.size());
    try {
        write(stream, message);
    } catch (const osc::Exception &) {
        return {};
    }
    return {stream.Data(), static_cast<int>(stream.Size())};
}

/// The library writes each message; the bundle around them is a head and a size for each.
std::vector<QByteArray> writeBundles(const std::vector<Message> &messages)
{
    std::vector<QByteArray> bundles;
    std::array<char, bundleHead> head;
    osc::OutboundPacketStream stream(head.data(), head.size());
    stream << osc::BeginBundleImmediate << osc::EndBundle;
    for (const Message &message : messages) {
        const QByteArray packet = writeMessage(message);
        const int length = elementHead + packet.size();
        if (packet.isEmpty() || bundleHead + length > longestBundle) continue;
        if (bundles.empty() || bundles.back().size() + length > longestBundle)
            bundles.emplace_back(head.data(), bundleHead);
        for (int shift = 24; shift >= 0; shift -= 8)
            bundles.back() += static_cast<char>(packet.size() >> shift);
        bundles.back() += packet;
    }
    return bundles;
}

} // namespace remote
