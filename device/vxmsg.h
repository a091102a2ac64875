#pragma once

#include <cstdint>

/// The tagged messages that the panel and the device exchange. A message is a sequence of items
/// without gaps; an item is a tag, a format code and a payload. No heap, no exceptions, no Qt. Any
/// thread may use a buffer, but only one at a time. Every operation that can fail returns 0 for
/// success and 1 for failure.
namespace vxmsg {

/// Size of the largest message, in bytes.
constexpr std::uint8_t maxMessage = 64;

/// Format codes. They tell what the payload of an item is. Numbers are little-endian.
// contract: the codes and sizes are the device's.
enum Format : std::uint8_t {
    formatEnd = 0,   ///< end of the message, with tag 0; 2 bytes in all
    formatFlag = 1,  ///< no payload, the item itself is the information; 2 bytes
    formatU8 = 2,    ///< 3 bytes
    formatU16 = 3,   ///< 4 bytes
    formatU32 = 4,   ///< 6 bytes
    formatBytes = 5, ///< a length byte n and n bytes; n + 3 bytes
};

constexpr std::uint8_t tagEnd = 0;

/// A message that is being built or parsed. The caller owns its bytes.
struct Buffer
{
    std::uint8_t *data;
    std::uint8_t capacity; ///< usable bytes of data
    std::uint8_t position; ///< where the next item is written or read
};

/// The zero-filled bytes of a message, for the stack, and the buffer that refers to them.
struct Message
{
    std::uint8_t bytes[maxMessage] = {};
    Buffer buffer{bytes, maxMessage, 0};

    Message() = default;
    Message(const Message &) = delete;
    Message &operator=(const Message &) = delete;
};

/// A decoded item.
struct Item
{
    std::uint8_t tag;
    std::uint8_t format;
    std::uint8_t length;       ///< payload bytes: 0, 1, 2, 4 or n
    std::uint32_t number;      ///< value of formats 2 to 4, otherwise 0
    const std::uint8_t *bytes; ///< payload of format 5, inside the buffer; otherwise null
};

/// Attaches the buffer to data and sets the position to 0. Never fails.
void init(Buffer &buffer, std::uint8_t *data, std::uint8_t capacity);

/// Sets the position to 0. The bytes stay as they are.
void reset(Buffer &buffer);

/// Appends an item of format 0 to 4 with the low 8, 16 or 32 bits of number. Fails if the item does
/// not fit or the format is another one.
// contract: with less than 2 bytes left, an end item is dropped and counts as a success; a full
// message needs no end item.
int append(Buffer &buffer, std::uint8_t tag, std::uint8_t format, std::uint32_t number = 0);

/// Appends an item of format 5 with length bytes. Fails if the item does not fit.
// contract: length 0 fills the buffer to its capacity with as many bytes as that takes.
int append(Buffer &buffer, std::uint8_t tag, const std::uint8_t *bytes, std::uint8_t length);

/// Decodes the item at the position and advances past it. Returns 1 at the end of the message, for
/// a truncated item and for an invalid format. The last two are logged. After a 1, no further item
/// can be read.
int next(Buffer &buffer, Item &item);

} // namespace vxmsg
