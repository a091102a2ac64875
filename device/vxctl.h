#pragma once

#include "common/device.h"
#include "device/commandvalues.h"
#include "device/transport.h"
#include "device/vxmsg.h"

#include <cstdint>

/// The command set of the device. Each command knows its request and, if there is one, its reply.
/// The functions have no state and use no heap and no exceptions. Each returns 0 for success and 1
/// for failure, and logs each failed check. Device worker's thread.
///
/// A set command waits until the device is ready and sends its request. A query does the same and
/// then polls for the reply. Only the send is retried: up to 10 attempts, 5 ms apart.
namespace vxctl {

/// Tags. They tell what an item means.
// contract: the tags and the order of the items in each request are the device's.
enum Tag : std::uint8_t {
    tagDebugText = 0x12,          ///< bytes, from the device; can arrive in any message
    tagFirmwareStart = 0x21,      ///< u32, total size in bytes
    tagFirmwareStatus = 0x22,     ///< flag, query
    tagFirmwareCredit = 0x23,     ///< reply: bytes that the device accepts now
    tagFirmwareOffset = 0x24,     ///< reply: bytes received so far
    tagFirmwareChunk = 0x25,      ///< exactly 61 bytes of the image
    tagFirmwareRest = 0x26,       ///< fewer than 61 bytes of the image
    tagIdentity = 0x31,           ///< flag, query
    tagVersion = 0x32,            ///< reply: u16
    tagBuild = 0x33,              ///< reply: u16
    tagProductName = 0x34,        ///< reply: bytes, at most 64
    tagRouteSource = 0x41,        ///< flag: the channel before it is the source
    tagRouteDestination = 0x42,   ///< flag: the channel before it is the destination
    tagRouteApply = 0x43,         ///< flag
    tagStereoBus = 0x44,          ///< u8, computer out to stereo bus
    tagTrueBypass = 0x45,         ///< u8, mixer true bypass
    tagEqBand = 0x51,             ///< u8, 0 to 3
    tagEqGain = 0x52,             ///< u8, two's complement dB
    tagEqFreq = 0x53,             ///< u8, step
    tagEqQ = 0x54,                ///< u8, step
    tagEqOn = 0x55,               ///< u8
    tagChannelType = 0x61,        ///< u8
    tagChannelNumber = 0x62,      ///< u8, from 1
    tagMeter = 0x71,              ///< flag, query
    tagMeterLevel = 0x72,         ///< reply: u16, one for each channel
    tagFader = 0x81,              ///< u8, two's complement dB, -127 silent
    tagPan = 0x82,                ///< u8, two's complement, -127 left to 127 right
    tagMute = 0x83,               ///< u8
    tagSolo = 0x84,               ///< u8
    tagPhase = 0x85,              ///< u8
    tagCompThreshold = 0x91,      ///< u8, step
    tagCompRatio = 0x92,          ///< u8, step
    tagCompAttack = 0x93,         ///< u8, step
    tagCompRelease = 0x94,        ///< u8, step
    tagCompGain = 0x95,           ///< u8
    tagCompLink = 0x96,           ///< u8, 1 for a linked pair
    tagCompOn = 0x97,             ///< u8
    tagReady = 0xA1,              ///< nonzero ready, 0 busy
    tagGainReduction = 0xB1,      ///< flag, query
    tagGainReductionLevel = 0xB2, ///< reply: u16
};

/// Channel types. Channel numbers count from 1.
enum ChannelType : std::uint8_t {
    channelLineOut = 1,  ///< line output 1 to 8
    channelMaster = 2,   ///< 1 left, 2 right
    channelComputer = 3, ///< computer playback 1 to 8, a routing source
    channelInput = 4,    ///< input 1 to 16
};

constexpr int meterCount = tamber::inputCount + tamber::masterSides;
constexpr int productNameSize = 64;
constexpr int debugTextSize = 64;

/// One level of a meter list.
// contract: the list travels as bytes in a signal, so this layout is fixed.
struct MeterRecord
{
    std::uint32_t ch_type;
    std::uint8_t ch_no;
    std::uint8_t reserved; ///< 0
    std::uint16_t level;   ///< linear, 32768 full scale
};
static_assert(sizeof(MeterRecord) == 8, "meter lists are made of 8-byte records");

/// What every command needs to reach the device.
struct Link
{
    Transport &transport;
    TransportContext &device;
    Clock &clock;
};

/// Sends the message up to its position. Fails after 10 attempts.
int send(const Link &link, const vxmsg::Buffer &message);
/// Fetches one message into the buffer and sets the position to 0. Fails if fewer bytes arrive than
/// the buffer holds.
int receive(const Link &link, vxmsg::Buffer &message);
/// Polls until the device is ready. Fails after 100 polls, 5 ms apart.
// contract: a message that does not say "busy" means that the device is ready.
int waitReady(const Link &link);
/// Waits until the device is ready, then sends the message.
int transact(const Link &link, const vxmsg::Buffer &message);

/// Sets one parameter of a channel: tagFader, tagPan, tagMute, tagSolo or tagPhase.
int set_parameter(
    const Link &link, std::uint32_t ch_type, std::uint8_t ch_no, std::uint8_t parameter,
    std::uint8_t data);
/// Sets one band of a channel's equalizer: 0 low, 1 high, 2 high-mid, 3 low-mid.
int set_eq(
    const Link &link, std::uint32_t ch_type, std::uint8_t ch_no, std::uint32_t band, const Eq &eq);
/// Sets all values of a channel's compressor.
int set_comp(const Link &link, std::uint32_t ch_type, std::uint8_t ch_no, const Comp &comp);
/// Makes a source (a master side or a computer channel) play on a line output.
int set_assign_ch(
    const Link &link, std::uint32_t in_type, std::uint8_t in_ch, std::uint32_t out_type,
    std::uint8_t out_ch);
/// Switches the computer output to the stereo bus on (1) or off (0).
int set_send_stereobus(const Link &link, std::uint8_t on);
/// Switches the mixer's true bypass on (1) or off (0).
int set_truebypass(const Link &link, std::uint8_t on);

/// Reads the levels of all meters into an array of meterCount records, in the order in which the
/// device sends them. Sets count to the number of records received, also on failure.
int get_meter(const Link &link, MeterRecord *records, int &count);
/// Reads the gain reduction of one channel: linear, 32768 for none.
int get_grmeter(const Link &link, std::uint32_t ch_type, std::uint8_t ch_no, std::uint16_t &meter);

/// Reads the firmware version; 102 means 1.02.
int get_version(const Link &link, std::uint16_t &version);
/// Reads the build number of the firmware.
int get_build(const Link &link, std::uint16_t &build);
/// Reads the product name into an array of productNameSize bytes, without a terminator.
int get_product_name(const Link &link, char *name, std::uint8_t &length);
/// Reads one message and copies its debug text into an array of debugTextSize bytes, without a
/// terminator. Succeeds with length 0 if there is no debug text.
int get_debugprint(const Link &link, char *text, std::uint8_t &length);
/// Reads the sample rate, in hertz.
int get_sample_rate(const Link &link, std::uint32_t &rate);

} // namespace vxctl
