/// The decoder of messages: whatever the bytes are, each item lies inside the message, and writing
/// the items again gives the same bytes.

#include "check.h"
#include "device/vxmsg.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

using namespace vxmsg;

namespace {

int writeAgain(Buffer &copy, const Item &item)
{
    if (item.format != formatBytes) return append(copy, item.tag, item.format, item.number);
    // A length of 0 would fill the buffer.
    return item.length ? append(copy, item.tag, item.bytes, item.length) : 1;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto length = static_cast<std::uint8_t>(std::min<std::size_t>(size, maxMessage));
    std::uint8_t bytes[maxMessage] = {};
    std::copy_n(data, length, bytes);
    Buffer message;
    init(message, bytes, length);
    Message again;
    bool isSame = true;
    for (;;) {
        const std::uint8_t start = message.position;
        Item item;
        if (next(message, item) != 0) break;
        FUZZ_CHECK(message.position > start && message.position <= length);
        if (item.format == formatBytes && item.length != 0)
            FUZZ_CHECK(item.bytes >= bytes && item.bytes + item.length <= bytes + length);
        isSame = isSame && writeAgain(again.buffer, item) == 0;
        if (!isSame) continue;
        FUZZ_CHECK(again.buffer.position == message.position);
        FUZZ_CHECK(std::memcmp(bytes, again.bytes, message.position) == 0);
    }
    Item after;
    FUZZ_CHECK(next(message, after) != 0);
    return 0;
}
