#include "device/vxmsg.h"

#include "device/intpack.h"
#include "device/vxlog.h"

#include <cstring>

namespace vxmsg {
namespace {

constexpr int headerSize = 2;      // tag and format
constexpr int bytesHeaderSize = 3; // tag, format and length

int failed(int line)
{
    return vxlog::error(vxlog::vxmsg, line);
}

int remaining(const Buffer &buffer)
{
    return buffer.position < buffer.capacity ? buffer.capacity - buffer.position : 0;
}

/// Returns the size of an item of a fixed format, or 0 for any other format.
int fixedSize(std::uint8_t format)
{
    switch (format) {
    case formatEnd:
    case formatFlag:
        return headerSize;
    case formatU8:
        return headerSize + 1;
    case formatU16:
        return headerSize + 2;
    case formatU32:
        return headerSize + 4;
    default:
        return 0;
    }
}

void putNumber(std::uint8_t *payload, std::uint8_t format, std::uint32_t number)
{
    switch (format) {
    case formatU8:
        *payload = static_cast<std::uint8_t>(number);
        break;
    case formatU16:
        intpack::put16(payload, number);
        break;
    case formatU32:
        intpack::put32(payload, number);
        break;
    default:
        break;
    }
}

std::uint32_t getNumber(const std::uint8_t *payload, std::uint8_t format)
{
    switch (format) {
    case formatU8:
        return *payload;
    case formatU16:
        return intpack::get16(payload);
    case formatU32:
        return intpack::get32(payload);
    default:
        return 0;
    }
}

void advance(Buffer &buffer, int size)
{
    buffer.position = static_cast<std::uint8_t>(buffer.position + size);
}

} // namespace

void init(Buffer &buffer, std::uint8_t *data, std::uint8_t capacity)
{
    buffer = {data, capacity, 0};
}

void reset(Buffer &buffer)
{
    buffer.position = 0;
}

int append(Buffer &buffer, std::uint8_t tag, std::uint8_t format, std::uint32_t number)
{
    const int space = remaining(buffer);
    if (space < headerSize) return tag == tagEnd ? 0 : failed(__LINE__);
    const int size = fixedSize(format);
    if (size == 0) return failed(__LINE__);
    if (format == formatEnd && tag != tagEnd) return failed(__LINE__);
    if (size > space) return failed(__LINE__);

    std::uint8_t *item = buffer.data + buffer.position;
    item[0] = tag;
    item[1] = format;
    putNumber(item + headerSize, format, number);
    advance(buffer, size);
    return 0;
}

int append(Buffer &buffer, std::uint8_t tag, const std::uint8_t *bytes, std::uint8_t length)
{
    const int space = remaining(buffer);
    if (space < headerSize) return tag == tagEnd ? 0 : failed(__LINE__);
    if (space < bytesHeaderSize) return failed(__LINE__);
    const int count = length > 0 ? length : space - bytesHeaderSize;
    if (count + bytesHeaderSize > space) return failed(__LINE__);
    if (!bytes && count > 0) return failed(__LINE__);

    std::uint8_t *item = buffer.data + buffer.position;
    item[0] = tag;
    item[1] = formatBytes;
    item[2] = static_cast<std::uint8_t>(count);
    if (count > 0) std::memcpy(item + bytesHeaderSize, bytes, static_cast<std::size_t>(count));
    advance(buffer, count + bytesHeaderSize);
    return 0;
}

int next(Buffer &buffer, Item &item)
{
    const int space = remaining(buffer);
    if (space < headerSize) return 1;
    const std::uint8_t *from = buffer.data + buffer.position;
    const std::uint8_t format = from[1];
    if (format == formatEnd) return 1;
    if (format > formatBytes) return vxlog::error(vxlog::vxmsg, __LINE__, format);

    if (format == formatBytes) {
        if (space < bytesHeaderSize) return failed(__LINE__);
        if (from[2] + bytesHeaderSize > space) return failed(__LINE__);
        item = {from[0], format, from[2], 0, from + bytesHeaderSize};
        advance(buffer, item.length + bytesHeaderSize);
        return 0;
    }
    const int size = fixedSize(format);
    if (size > space) return failed(__LINE__);
    const auto length = static_cast<std::uint8_t>(size - headerSize);
    item = {from[0], format, length, getNumber(from + headerSize, format), nullptr};
    advance(buffer, size);
    return 0;
}

} // namespace vxmsg
