#include "device/firmwaretransfer.h"

#include "device/vxlog.h"

#include <algorithm>
#include <cstdio>

namespace vxctl {
namespace {

constexpr std::uint32_t chunkSize = 61;
constexpr int statusReads = 10000;
constexpr int stallLimit = 2000;
constexpr int interval = 5; // milliseconds
constexpr int finishPolls = 10;
constexpr int finishInterval = 1000; // milliseconds
constexpr std::uint32_t creditAbsent = 255;

// Reasons for a stall, as the console line shows them.
// contract: the two numbers.
constexpr int stallNoCredit = 272;
constexpr int stallOffset = 274;

int failed(int line)
{
    return vxlog::error(vxlog::vxctl, line);
}

struct Status
{
    std::uint32_t credit = 0;
    std::uint32_t offset = 0;
    bool hasCredit = false;
    bool hasOffset = false;

    bool complete() const { return hasCredit && hasOffset; }
    void add(const vxmsg::Item &item)
    {
        if (item.tag == tagFirmwareCredit) {
            credit = item.number;
            hasCredit = true;
        } else if (item.tag == tagFirmwareOffset) {
            offset = item.number;
            hasOffset = true;
        }
    }
};

int sendWithEnd(const Link &link, vxmsg::Buffer &message)
{
    if (vxmsg::append(message, vxmsg::tagEnd, vxmsg::formatEnd) != 0) return failed(__LINE__);
    return transact(link, message);
}

int askStatus(const Link &link)
{
    vxmsg::Message message;
    if (vxmsg::append(message.buffer, tagFirmwareStatus, vxmsg::formatFlag) != 0)
        return failed(__LINE__);
    return sendWithEnd(link, message.buffer);
}

void printDebugText(const vxmsg::Item &item)
{
    if (item.tag == tagDebugText && item.format == vxmsg::formatBytes)
        std::printf(
            "\n\n--debug--%.*s\n---------", item.length,
            reinterpret_cast<const char *>(item.bytes));
}

int readStatus(const Link &link, Status &status)
{
    vxmsg::Message message;
    for (int i = 0; i < statusReads; ++i) {
        if (receive(link, message.buffer) != 0) return failed(__LINE__);
        vxmsg::Item item;
        while (vxmsg::next(message.buffer, item) == 0) {
            printDebugText(item);
            status.add(item);
        }
        if (status.complete()) return 0;
        if (!link.clock.sleep(interval)) return 1;
    }
    return failed(__LINE__);
}

int sendChunk(const Link &link, const std::uint8_t *bytes, std::uint32_t count)
{
    const auto length = static_cast<std::uint8_t>(std::min(count, chunkSize));
    const std::uint8_t tag = length == chunkSize ? tagFirmwareChunk : tagFirmwareRest;
    vxmsg::Message message;
    if (vxmsg::append(message.buffer, tag, bytes, length) != 0) return failed(__LINE__);
    return sendWithEnd(link, message.buffer);
}

int sendChunks(
    const Link &link, const std::uint8_t *image, std::uint32_t total, std::uint32_t credit,
    std::uint32_t &pos)
{
    while (credit > 0 && pos < total) {
        const std::uint32_t count = std::min({total - pos, credit, chunkSize});
        if (sendChunk(link, image + pos, count) != 0) return failed(__LINE__);
        pos += count;
        credit -= count;
    }
    return 0;
}

/// Waits until the device has written its flash, for at most ten seconds.
// contract: the transfer succeeds even if the ten seconds run out; the device can still be writing.
int finish(const Link &link)
{
    for (int i = 0; i < finishPolls; ++i) {
        if (askStatus(link) != 0) return failed(__LINE__);
        vxmsg::Message message;
        if (receive(link, message.buffer) != 0) return failed(__LINE__);
        std::uint32_t credit = creditAbsent;
        vxmsg::Item item;
        while (vxmsg::next(message.buffer, item) == 0)
            if (item.tag == tagFirmwareCredit) credit = item.number;
        if (credit == 0) break;
        if (!link.clock.sleep(finishInterval)) return 1;
    }
    std::printf("FWUP OK");
    return 0;
}

/// Returns why no chunk can be sent after this status, or 0 if one can.
int stallCode(const Status &status, std::uint32_t pos)
{
    if (status.credit == 0) return stallNoCredit;
    if (status.offset == pos) return 0;
    std::printf("offset = %u, pos = %u\n", status.offset, pos);
    return stallOffset;
}

} // namespace

int transferFirmware(
    const Link &link, const std::uint8_t *image, std::uint32_t total, std::uint32_t &progress)
{
    vxmsg::Message start;
    if (vxmsg::append(start.buffer, tagFirmwareStart, vxmsg::formatU32, total) != 0)
        return failed(__LINE__);
    if (sendWithEnd(link, start.buffer) != 0) return failed(__LINE__);

    progress = 0;
    for (int stall = 0; progress < total;) {
        std::printf("pos = %d/%d\n", static_cast<int>(progress), static_cast<int>(total));
        Status status;
        if (askStatus(link) != 0 || readStatus(link, status) != 0) return failed(__LINE__);
        const int code = stallCode(status, progress);
        if (code == 0) {
            if (sendChunks(link, image, total, status.credit, progress) != 0)
                return failed(__LINE__);
            stall = 0;
            continue;
        }
        if (++stall > stallLimit) {
            failed(__LINE__);
            std::printf("timeout line:%d\n", code);
            return 1;
        }
        if (!link.clock.sleep(interval)) return 1;
    }
    return finish(link);
}

} // namespace vxctl
