#include "simulator/describe.h"

#include "device/vxctl.h"
#include "simulator/mixerstate.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <map>

namespace simulator {
namespace {

/// The last number that came with each tag.
using Numbers = std::map<std::uint8_t, std::uint32_t>;

std::string onOff(std::uint32_t number)
{
    return number != 0 ? "on" : "off";
}

std::string channel(std::uint32_t type, std::uint32_t number)
{
    const std::string digits = std::to_string(number);
    switch (type) {
    case vxctl::channelMaster:
        return number == 1 ? "master left" : "master right";
    case vxctl::channelComputer:
        return "computer " + digits;
    case vxctl::channelInput:
        return "input " + digits;
    default:
        return "channel " + digits;
    }
}

/// Returns the value of a byte in two's complement.
int asSigned(std::uint32_t number)
{
    const int byte = static_cast<int>(number & 0xff);
    return byte < 0x80 ? byte : byte - 0x100;
}

std::string level(std::uint32_t number)
{
    const int value = asSigned(number);
    return value <= silentFader ? "silence" : std::to_string(value) + " dB";
}

std::string pan(std::uint32_t number)
{
    constexpr int most = 127;
    const int value = asSigned(number);
    if (value == 0) return "the centre";
    const int percent = (std::abs(value) * 100 + most / 2) / most;
    return std::to_string(percent) + (value < 0 ? " % left" : " % right");
}

std::string band(std::uint32_t number)
{
    static constexpr const char *names[] = {"low", "high", "high-mid", "low-mid"};
    return number < std::size(names) ? names[number] : "unknown";
}

/// A command in words. The tag occurs in no other command.
struct Phrase
{
    std::uint8_t tag;
    std::string (*say)(const std::string &channel, Numbers &n);
};

const Phrase phrases[] = {
    {vxctl::tagFader,
     [](const std::string &channel, Numbers &n) {
         return "Fader of " + channel + " to " + level(n[vxctl::tagFader]);
     }},
    {vxctl::tagPan,
     [](const std::string &channel, Numbers &n) {
         return "Pan of " + channel + " to " + pan(n[vxctl::tagPan]);
     }},
    {vxctl::tagMute,
     [](const std::string &channel, Numbers &n) {
         return "Mute of " + channel + ' ' + onOff(n[vxctl::tagMute]);
     }},
    {vxctl::tagSolo,
     [](const std::string &channel, Numbers &n) {
         return "Solo of " + channel + ' ' + onOff(n[vxctl::tagSolo]);
     }},
    {vxctl::tagPhase,
     [](const std::string &channel, Numbers &n) {
         return "Phase of " + channel + (n[vxctl::tagPhase] != 0 ? " inverted" : " normal");
     }},
    {vxctl::tagEqBand,
     [](const std::string &channel, Numbers &n) {
         return "EQ of " + channel + ' ' + onOff(n[vxctl::tagEqOn]) + ", " +
                band(n[vxctl::tagEqBand]) + " band to " + level(n[vxctl::tagEqGain]);
     }},
    {vxctl::tagCompThreshold,
     [](const std::string &channel, Numbers &n) {
         return "Compressor of " + channel + ' ' + onOff(n[vxctl::tagCompOn]);
     }},
    {vxctl::tagStereoBus,
     [](const std::string &, Numbers &n) {
         return "Computer out to stereo bus " + onOff(n[vxctl::tagStereoBus]);
     }},
    {vxctl::tagTrueBypass,
     [](const std::string &, Numbers &n) {
         return "Mixer true bypass " + onOff(n[vxctl::tagTrueBypass]);
     }},
    {vxctl::tagFirmwareStart,
     [](const std::string &, Numbers &n) {
         return "Firmware of " + std::to_string(n[vxctl::tagFirmwareStart]) + " bytes announced";
     }},
    {vxctl::tagFirmwareChunk,
     [](const std::string &, Numbers &) { return std::string("A piece of firmware"); }},
    {vxctl::tagFirmwareRest,
     [](const std::string &, Numbers &) { return std::string("The last piece of firmware"); }},
};

} // namespace

std::string describe(const std::uint8_t *message, std::size_t length)
{
    vxmsg::Message copy;
    std::copy_n(message, std::min<std::size_t>(length, vxmsg::maxMessage), copy.bytes);
    Numbers numbers;
    std::string source;
    for (vxmsg::Item item{}; vxmsg::next(copy.buffer, item) == 0;) {
        numbers[item.tag] = item.number;
        if (item.tag == vxctl::tagRouteSource)
            source = channel(numbers[vxctl::tagChannelType], numbers[vxctl::tagChannelNumber]);
    }
    const std::uint32_t number = numbers[vxctl::tagChannelNumber];
    if (!source.empty()) return "Line out " + std::to_string(number) + " plays " + source;
    const std::string last = channel(numbers[vxctl::tagChannelType], number);
    for (const Phrase &phrase : phrases)
        if (numbers.count(phrase.tag) != 0) return phrase.say(last, numbers);
    return {};
}

} // namespace simulator
