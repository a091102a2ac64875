#pragma once

#include <cstdint>

/// The tagged messages that the panel and the device exchange: items packed back to back, each a
/// tag, a format code and a payload. No heap, no exceptions, no Qt; any thread, one at a time.
/// Every operation that can fail returns 0 for success and 1 for failure.
namespace vxmsg {

/// The most that one control transfer carries, in bytes.
constexpr std::uint8_t maxMessage = 64;

/// Format codes: what an item's payload is. Numbers are little-endian.
enum Format : std::uint8_t {
    formatEnd = 0,   ///< end of the message, with tag 0; 2 bytes in all
    formatFlag = 1,  ///< no payload: its presence is the meaning; 2 bytes
    formatU8 = 2,    ///< 3 bytes
    formatU16 = 3,   ///< 4 bytes
    formatU32 = 4,   ///< 6 bytes
    formatBytes = 5, ///< a length byte n and n bytes; n + 3 bytes
};

constexpr std::uint8_t tagEnd = 0;

/// A message being built or parsed, in bytes that the caller owns.
struct Buffer
{
    std::uint8_t *data;
    std::uint8_t capacity; ///< usable bytes of data
    std::uint8_t position; ///< where the next item is written or read
};

/// A whole message on the stack, zero-filled, with its buffer.
struct Message
{
    std::uint8_t bytes[maxMessage] = {};
    Buffer buffer{bytes, maxMessage, 0};

    Message() = default;
    Message(const Message &) = delete;
    Message &operator=(const Message &) = delete;
};

/// An item as next() hands it out.
struct Item
{
    std::uint8_t tag;
    std::uint8_t format;
    std::uint8_t length;       ///< payload bytes: 0, 1, 2, 4 or n
    std::uint32_t number;      ///< value of formats 2 to 4, else 0
    const std::uint8_t *bytes; ///< payload of format 5, inside the buffer, else null
};

/// Attaches the buffer to data and starts at position 0. Never fails.
void init(Buffer &buffer, std::uint8_t *data, std::uint8_t capacity);

/// Back to position 0; the bytes stay.
void reset(Buffer &buffer);

/// Appends an item of format 0 to 4. The low 8, 16 or 32 bits of number are stored. An end item
/// that finds less than 2 bytes of room is left out: a full message needs none.
int append(Buffer &buffer, std::uint8_t tag, std::uint8_t format, std::uint32_t number = 0);

/// Appends an item of format 5 with length bytes; length 0 takes as many of bytes as fill the
/// buffer to its capacity.
int append(Buffer &buffer, std::uint8_t tag, const std::uint8_t *bytes, std::uint8_t length);

/// Decodes the item at the position and advances past it. Returns 1 at the end of the message, on
/// an item that is cut off and on an invalid format; the latter two are logged. No further item can
/// be read then.
int next(Buffer &buffer, Item &item);

} // namespace vxmsg
