#pragma once

#include <cstdint>

/// The byte order of messages and driver requests: least significant byte first.
namespace intpack {

inline void put16(std::uint8_t *to, std::uint32_t value)
{
    to[0] = static_cast<std::uint8_t>(value);
    to[1] = static_cast<std::uint8_t>(value >> 8);
}

inline void put32(std::uint8_t *to, std::uint32_t value)
{
    put16(to, value);
    put16(to + 2, value >> 16);
}

inline std::uint16_t get16(const std::uint8_t *from)
{
    return static_cast<std::uint16_t>(from[0] | from[1] << 8);
}

inline std::uint32_t get32(const std::uint8_t *from)
{
    return get16(from) | static_cast<std::uint32_t>(get16(from + 2)) << 16;
}

} // namespace intpack
