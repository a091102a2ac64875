#include "device/vxlog.h"

#include <cstdio>

int vxlog::error(const char *source, int line)
{
    std::printf("%s:%d:ERROR\n", source, line);
    return 1;
}

int vxlog::error(const char *source, int line, std::uint32_t value)
{
    std::printf("%s:%d:ERROR %#x\n", source, line, static_cast<unsigned int>(value));
    return 1;
}
