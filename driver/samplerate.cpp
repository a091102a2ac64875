#include "driver/samplerate.h"

namespace driver {
namespace {

struct Row
{
    std::uint32_t hertz;
    const char *text;
};

// clang-format off
constexpr Row rows[] = {
    { 44100,  "44.1 kHz"},
    { 48000,  "48.0 kHz"},
    { 88200,  "88.2 kHz"},
    { 96000,  "96.0 kHz"},
    {176400, "176.4 kHz"},
    {192000, "192.0 kHz"},
};
// clang-format on

} // namespace

QString sampleRateText(std::uint32_t hertz)
{
    for (const Row &row : rows)
        if (row.hertz == hertz) return QLatin1String(row.text);
    return QString();
}

} // namespace driver
