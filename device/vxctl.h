#pragma once

#include "common/device.h"
#include "device/commandvalues.h"
#include "device/transport.h"
#include "device/vxmsg.h"

#include <cstdint>

/// The command set of the device: for each command its request, the reply that is awaited and how
/// the reply is read. Plain procedures without state, heap or exceptions; each returns 0 for
/// success and 1 for failure, and logs each failed check. Device worker's thread.
///
/// A command is a set (wait until the device is ready, send) or a query (the same, then poll for
/// the reply). Nothing is retried but the send, which is attempted 10 times 5 ms apart.
namespace vxctl {

/// What a message's items mean.
enum Tag : std::uint8_t {
    tagDebugText = 0x12,          ///< bytes, from the device, may come in any read
    tagFirmwareStart = 0x21,      ///< u32, total size in bytes
    tagFirmwareStatus = 0x22,     ///< flag, query
    tagFirmwareCredit = 0x23,     ///< reply: bytes that the device accepts now
    tagFirmwareOffset = 0x24,     ///< reply: where the device stands
    tagFirmwareChunk = 0x25,      ///< exactly 61 bytes of the image
    tagFirmwareRest = 0x26,       ///< fewer than 61
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

/// Channel types; the numbers count from 1.
enum ChannelType : std::uint8_t {
    channelLineOut = 1,  ///< line output 1 to 8
    channelMaster = 2,   ///< 1 left, 2 right
    channelComputer = 3, ///< computer playback 1 to 8, a routing source
    channelInput = 4,    ///< input 1 to 16
};

constexpr int meterCount = tamber::inputCount + tamber::masterSides;
constexpr int productNameSize = 64;
constexpr int debugTextSize = 64;

/// One level of a meter list. The list is handed on as bytes, so this layout is fixed.
struct MeterRecord
{
    std::uint32_t ch_type;
    std::uint8_t ch_no;
    std::uint8_t reserved; ///< 0
    std::uint16_t level;   ///< linear, 32768 full scale
};
static_assert(sizeof(MeterRecord) == 8, "meter lists are made of 8-byte records");

/// What a command needs: the way to the device and the waits on it.
struct Link
{
    Transport &transport;
    TransportContext &device;
    Clock &clock;
};

/// The exchanges that commands are made of.
int send(const Link &link, const vxmsg::Buffer &message);
/// Fetches one message into the whole buffer and resets it for parsing. A short read is a failure.
int receive(const Link &link, vxmsg::Buffer &message);
/// Polls until the device is ready: at most 100 times, 5 ms apart.
int waitReady(const Link &link);
/// A set transaction: waitReady, send.
int transact(const Link &link, const vxmsg::Buffer &message);

/// parameter is tagFader, tagPan, tagMute, tagSolo or tagPhase.
int set_parameter(
    const Link &link, std::uint32_t ch_type, std::uint8_t ch_no, std::uint8_t parameter,
    std::uint8_t data);
/// band is 0 low, 1 high, 2 high-mid, 3 low-mid.
int set_eq(
    const Link &link, std::uint32_t ch_type, std::uint8_t ch_no, std::uint32_t band, const Eq &eq);
int set_comp(const Link &link, std::uint32_t ch_type, std::uint8_t ch_no, const Comp &comp);
int set_assign_ch(
    const Link &link, std::uint32_t in_type, std::uint8_t in_ch, std::uint32_t out_type,
    std::uint8_t out_ch);
int set_send_stereobus(const Link &link, std::uint8_t on);
int set_truebypass(const Link &link, std::uint8_t on);

/// Fills records (room for meterCount) in the order in which the device sends them; count is the
/// number received, also on failure.
int get_meter(const Link &link, MeterRecord *records, int &count);
/// The gain reduction of one channel, linear, 32768 for none.
int get_grmeter(const Link &link, std::uint32_t ch_type, std::uint8_t ch_no, std::uint16_t &meter);

int get_version(const Link &link, std::uint16_t &version);
int get_build(const Link &link, std::uint16_t &build);
/// name has room for productNameSize bytes; length is what came, without a terminator.
int get_product_name(const Link &link, char *name, std::uint8_t &length);
/// Reads once and takes what debug text came: text has room for debugTextSize bytes. No text is a
/// success with length 0.
int get_debugprint(const Link &link, char *text, std::uint8_t &length);
int get_sample_rate(const Link &link, std::uint32_t &rate);

} // namespace vxctl
