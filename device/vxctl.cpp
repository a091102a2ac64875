#include "device/vxctl.h"

#include "device/intpack.h"
#include "device/vxlog.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <initializer_list>

namespace vxctl {
namespace {

constexpr int sendAttempts = 10;
constexpr int pollLimit = 100;
constexpr int pollInterval = 5; // milliseconds

int failed(int line)
{
    return vxlog::error(vxlog::vxctl, line);
}

struct RequestItem
{
    std::uint8_t tag;
    std::uint8_t format;
    std::uint32_t number;
};

RequestItem byte(std::uint8_t tag, std::uint32_t number)
{
    return {tag, vxmsg::formatU8, number};
}

RequestItem flag(std::uint8_t tag)
{
    return {tag, vxmsg::formatFlag, 0};
}

/// Sends these items and the end item as a set command.
int request(const Link &link, std::initializer_list<RequestItem> items)
{
    vxmsg::Message message;
    for (const RequestItem &item : items)
        if (vxmsg::append(message.buffer, item.tag, item.format, item.number) != 0)
            return failed(__LINE__);
    if (vxmsg::append(message.buffer, vxmsg::tagEnd, vxmsg::formatEnd) != 0)
        return failed(__LINE__);
    return transact(link, message.buffer);
}

/// Reads messages until visit returns true for an item. Fails after pollLimit messages.
template <typename Visit>
int poll(const Link &link, Visit visit)
{
    vxmsg::Message message;
    for (int i = 0; i < pollLimit; ++i) {
        vxmsg::reset(message.buffer);
        if (receive(link, message.buffer) != 0) return failed(__LINE__);
        vxmsg::Item item;
        while (vxmsg::next(message.buffer, item) == 0)
            if (visit(item)) return 0;
        if (!link.clock.sleep(pollInterval)) return 1;
    }
    return failed(__LINE__);
}

void printDebugText(const vxmsg::Item &item)
{
    if (item.format == vxmsg::formatBytes)
        std::printf("\ndbg:%.*s\n", item.length, reinterpret_cast<const char *>(item.bytes));
}

/// Queries the identity and copies the reply with one tag: bytes as they are, a u16 with its low
/// byte first. Keeps polling while the reply is empty.
int identity(
    const Link &link, std::uint8_t reply, std::uint8_t *to, std::uint8_t size, std::uint8_t &length)
{
    if (request(link, {flag(tagIdentity)}) != 0) return failed(__LINE__);
    return poll(link, [&](const vxmsg::Item &item) {
        if (item.tag == tagDebugText) printDebugText(item);
        if (item.tag != reply) return false;
        if (item.format == vxmsg::formatBytes) {
            length = std::min(item.length, size);
            std::memcpy(to, item.bytes, length);
        } else if (item.format == vxmsg::formatU16) {
            length = 2;
            intpack::put16(to, item.number);
        } else {
            return false;
        }
        return item.length > 0;
    });
}

int identityNumber(const Link &link, std::uint8_t reply, std::uint16_t &number)
{
    std::uint8_t bytes[2] = {};
    std::uint8_t length = 0;
    if (identity(link, reply, bytes, sizeof bytes, length) != 0) return failed(__LINE__);
    number = intpack::get16(bytes);
    return 0;
}

/// Adds the levels of one message to the list. Returns whether a record was completed.
bool takeMeters(vxmsg::Buffer &message, MeterRecord *records, int &count)
{
    const int before = count;
    vxmsg::Item item;
    while (count < meterCount && vxmsg::next(message, item) == 0) {
        MeterRecord &record = records[count];
        switch (item.tag) {
        case tagChannelType:
            record.ch_type = item.number;
            break;
        case tagChannelNumber:
            record.ch_no = static_cast<std::uint8_t>(item.number);
            break;
        case tagMeterLevel:
            record.level = static_cast<std::uint16_t>(item.number);
            ++count;
            break;
        default:
            break;
        }
    }
    return count > before;
}

} // namespace

int send(const Link &link, const vxmsg::Buffer &message)
{
    if (message.position > vxmsg::maxMessage) return failed(__LINE__);
    for (int attempt = 0; attempt < sendAttempts; ++attempt) {
        if (link.clock.stopping()) return 1;
        const int result = link.transport.transferOut(
            link.device, requestSend, 0, 0, message.position, message.data);
        if (result == 0) return 0;
        failed(__LINE__);
        if (!link.clock.sleep(pollInterval)) return 1;
    }
    return failed(__LINE__);
}

int receive(const Link &link, vxmsg::Buffer &message)
{
    vxmsg::reset(message);
    std::uint16_t length = message.capacity;
    if (length > vxmsg::maxMessage) {
        failed(__LINE__);
        length = vxmsg::maxMessage;
    }
    if (link.clock.stopping()) return 1;
    const int result =
        link.transport.transferIn(link.device, requestFetch, 0, 0, length, message.data);
    return result == 0 ? 0 : failed(__LINE__);
}

int waitReady(const Link &link)
{
    vxmsg::Message message;
    for (int i = 0; i < pollLimit; ++i) {
        if (receive(link, message.buffer) != 0) return failed(__LINE__);
        bool busy = false;
        vxmsg::Item item;
        while (vxmsg::next(message.buffer, item) == 0) {
            if (item.tag != tagReady) continue;
            if (item.number != 0) return 0;
            busy = true;
        }
        if (!busy) return 0;
        if (!link.clock.sleep(pollInterval)) return 1;
    }
    return failed(__LINE__);
}

int transact(const Link &link, const vxmsg::Buffer &message)
{
    if (waitReady(link) != 0) return failed(__LINE__);
    return send(link, message) == 0 ? 0 : failed(__LINE__);
}

int set_parameter(
    const Link &link, std::uint32_t ch_type, std::uint8_t ch_no, std::uint8_t parameter,
    std::uint8_t data)
{
    return request(
        link,
        {byte(tagChannelType, ch_type), byte(tagChannelNumber, ch_no), byte(parameter, data)});
}

int set_eq(
    const Link &link, std::uint32_t ch_type, std::uint8_t ch_no, std::uint32_t band, const Eq &eq)
{
    // contract: the switch comes last, here and in the compressor command.
    return request(
        link, {byte(tagChannelType, ch_type), byte(tagChannelNumber, ch_no), byte(tagEqBand, band),
               byte(tagEqGain, eq.gain), byte(tagEqFreq, eq.freq), byte(tagEqQ, eq.q),
               byte(tagEqOn, eq.on)});
}

int set_comp(const Link &link, std::uint32_t ch_type, std::uint8_t ch_no, const Comp &comp)
{
    return request(
        link,
        {byte(tagChannelType, ch_type), byte(tagChannelNumber, ch_no),
         byte(tagCompThreshold, comp.threshold), byte(tagCompRatio, comp.ratio),
         byte(tagCompAttack, comp.attack), byte(tagCompRelease, comp.release),
         byte(tagCompGain, comp.gain), byte(tagCompLink, comp.link), byte(tagCompOn, comp.on)});
}

int set_assign_ch(
    const Link &link, std::uint32_t in_type, std::uint8_t in_ch, std::uint32_t out_type,
    std::uint8_t out_ch)
{
    return request(
        link, {byte(tagChannelType, in_type), byte(tagChannelNumber, in_ch), flag(tagRouteSource),
               byte(tagChannelType, out_type), byte(tagChannelNumber, out_ch),
               flag(tagRouteDestination), flag(tagRouteApply)});
}

int set_send_stereobus(const Link &link, std::uint8_t on)
{
    return request(link, {byte(tagStereoBus, on)});
}

int set_truebypass(const Link &link, std::uint8_t on)
{
    return request(link, {byte(tagTrueBypass, on)});
}

int get_meter(const Link &link, MeterRecord *records, int &count)
{
    count = 0;
    if (request(link, {flag(tagMeter)}) != 0) return failed(__LINE__);
    vxmsg::Message message;
    for (int unanswered = 0; count < meterCount;) {
        if (unanswered == pollLimit) return failed(__LINE__);
        vxmsg::reset(message.buffer);
        if (receive(link, message.buffer) != 0) return failed(__LINE__);
        if (takeMeters(message.buffer, records, count)) {
            unanswered = 0;
            continue;
        }
        ++unanswered;
        if (!link.clock.sleep(pollInterval)) return 1;
    }
    return 0;
}

int get_grmeter(const Link &link, std::uint32_t ch_type, std::uint8_t ch_no, std::uint16_t &meter)
{
    // contract: here the number precedes the type, unlike in every other command.
    if (request(
            link, {byte(tagChannelNumber, ch_no), byte(tagChannelType, ch_type),
                   flag(tagGainReduction)}) != 0)
        return failed(__LINE__);
    bool sameType = false;
    bool sameNumber = false;
    return poll(link, [&](const vxmsg::Item &item) {
        if (item.tag == tagChannelType) sameType = item.number == ch_type;
        if (item.tag == tagChannelNumber) sameNumber = item.number == ch_no;
        if (item.tag != tagGainReductionLevel || !sameType || !sameNumber) return false;
        meter = static_cast<std::uint16_t>(item.number);
        return true;
    });
}

int get_version(const Link &link, std::uint16_t &version)
{
    return identityNumber(link, tagVersion, version);
}

int get_build(const Link &link, std::uint16_t &build)
{
    return identityNumber(link, tagBuild, build);
}

int get_product_name(const Link &link, char *name, std::uint8_t &length)
{
    length = 0;
    return identity(
        link, tagProductName, reinterpret_cast<std::uint8_t *>(name), productNameSize, length);
}

int get_debugprint(const Link &link, char *text, std::uint8_t &length)
{
    length = 0;
    vxmsg::Message message;
    if (receive(link, message.buffer) != 0) return failed(__LINE__);
    vxmsg::Item item;
    while (vxmsg::next(message.buffer, item) == 0) {
        if (item.tag != tagDebugText || item.format != vxmsg::formatBytes) continue;
        length = std::min<std::uint8_t>(item.length, debugTextSize);
        std::memcpy(text, item.bytes, length);
    }
    return 0;
}

int get_sample_rate(const Link &link, std::uint32_t &rate)
{
    if (link.clock.stopping()) return 1;
    return link.transport.sampleRate(link.device, rate) == 0 ? 0 : failed(__LINE__);
}

} // namespace vxctl
