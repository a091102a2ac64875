#include "simulator/simulatedtamber.h"

#include "device/intpack.h"
#include "simulator/describe.h"

#include <algorithm>
#include <cstring>

namespace simulator {
namespace {

constexpr Microseconds settleTime{1000};   // how long a set command keeps the DSP busy
constexpr Microseconds flashTime{1500000}; // how long the device writes a firmware image
constexpr std::uint8_t firmwareChunk = 61;
constexpr std::uint32_t firmwareWindow = 8 * firmwareChunk;
constexpr std::uint32_t maxFirmware = 1 << 24;

using vxctl::Tag;

bool within(int value, int from, int to)
{
    return value >= from && value <= to;
}

int signedByte(std::uint32_t number)
{
    return static_cast<std::int8_t>(number);
}

/// Returns the format that the items of a command have.
std::uint8_t formatOf(std::uint8_t tag)
{
    switch (tag) {
    case vxctl::tagFirmwareStatus:
    case vxctl::tagIdentity:
    case vxctl::tagRouteSource:
    case vxctl::tagRouteDestination:
    case vxctl::tagRouteApply:
    case vxctl::tagMeter:
    case vxctl::tagGainReduction:
    case 0x13: // contract: the device knows these unnamed tags; their meaning is unknown
    case 0x14:
        return vxmsg::formatFlag;
    case vxctl::tagFirmwareStart:
    case 0x17:
    case 0x27:
        return vxmsg::formatU32;
    case vxctl::tagFirmwareChunk:
    case vxctl::tagFirmwareRest:
        return vxmsg::formatBytes;
    default:
        return vxmsg::formatU8;
    }
}

} // namespace

/// The items of a message.
struct SimulatedTamber::Request
{
    std::array<vxmsg::Item, vxmsg::maxMessage / 2> items;
    std::size_t count = 0;
    vxmsg::Message message; ///< the items point into it

    std::uint32_t number(std::size_t i) const { return items[i].number; }
    std::uint32_t of(std::uint8_t tag) const
    {
        for (std::size_t i = 0; i < count; ++i)
            if (items[i].tag == tag) return items[i].number;
        return 0;
    }
};

/// A message that the device understands: the tags of its items in order, and the function that
/// executes it.
struct SimulatedTamber::Command
{
    std::vector<std::uint8_t> tags;
    bool (SimulatedTamber::*obey)(const Request &);

    bool matches(const Request &request) const
    {
        return std::equal(
            tags.begin(), tags.end(), request.items.begin(),
            request.items.begin() + static_cast<std::ptrdiff_t>(request.count),
            [](std::uint8_t tag, const vxmsg::Item &item) {
                return tag == item.tag && formatOf(tag) == item.format;
            });
    }
};

/// A message to the panel.
class SimulatedTamber::Answer
{
public:
    Answer &add(std::uint8_t tag, std::uint8_t format, std::uint32_t number)
    {
        vxmsg::append(m_message.buffer, tag, format, number);
        return *this;
    }
    Answer &add(std::uint8_t tag, const char *text)
    {
        vxmsg::append(
            m_message.buffer, tag, reinterpret_cast<const std::uint8_t *>(text),
            static_cast<std::uint8_t>(std::strlen(text)));
        return *this;
    }
    Answer &addChannel(std::uint8_t type, std::size_t number)
    {
        add(vxctl::tagChannelType, vxmsg::formatU8, type);
        return add(vxctl::tagChannelNumber, vxmsg::formatU8, static_cast<std::uint32_t>(number));
    }
    void copyTo(Bytes &bytes) const { std::copy_n(m_message.bytes, bytes.size(), bytes.begin()); }

private:
    vxmsg::Message m_message;
};

const std::vector<SimulatedTamber::Command> &SimulatedTamber::commands()
{
    using namespace vxctl;
    using T = SimulatedTamber;
    static const std::vector<Command> table = {
        {{tagChannelType, tagChannelNumber, tagFader}, &T::setParameter},
        {{tagChannelType, tagChannelNumber, tagPan}, &T::setParameter},
        {{tagChannelType, tagChannelNumber, tagMute}, &T::setParameter},
        {{tagChannelType, tagChannelNumber, tagSolo}, &T::setParameter},
        {{tagChannelType, tagChannelNumber, tagPhase}, &T::setParameter},
        {{tagChannelType, tagChannelNumber, tagEqBand, tagEqGain, tagEqFreq, tagEqQ, tagEqOn},
         &T::setEq},
        {{tagChannelType, tagChannelNumber, tagCompThreshold, tagCompRatio, tagCompAttack,
          tagCompRelease, tagCompGain, tagCompLink, tagCompOn},
         &T::setComp},
        {{tagChannelType, tagChannelNumber, tagRouteSource, tagChannelType, tagChannelNumber,
          tagRouteDestination, tagRouteApply},
         &T::assign},
        {{tagStereoBus}, &T::setStereoBus},
        {{tagTrueBypass}, &T::setTrueBypass},
        {{tagMeter}, &T::queryMeters},
        {{tagChannelNumber, tagChannelType, tagGainReduction}, &T::queryGainReduction},
        {{tagIdentity}, &T::queryIdentity},
        {{tagFirmwareStart}, &T::firmwareStart},
        {{tagFirmwareStatus}, &T::firmwareStatus},
        {{tagFirmwareChunk}, &T::firmwareData},
        {{tagFirmwareRest}, &T::firmwareData},
        {{0x13}, &T::acceptSilently}, // the messages from here on have an unknown meaning
        {{0x14}, &T::queryByte},
        {{0x16}, &T::acceptSilently},
        {{0x17}, &T::acceptSilently},
        {{0x27}, &T::queryWord},
    };
    return table;
}

SimulatedTamber::SimulatedTamber(DeviceClock &clock) : m_clock(clock) {}

bool SimulatedTamber::parse(const std::uint8_t *message, std::size_t length, Request &request)
{
    if (length > vxmsg::maxMessage) return false;
    std::copy_n(message, length, request.message.bytes);
    vxmsg::Buffer &buffer = request.message.buffer;
    buffer.capacity = static_cast<std::uint8_t>(length);
    while (request.count < request.items.size() &&
           vxmsg::next(buffer, request.items[request.count]) == 0)
        ++request.count;
    const std::size_t rest = length - buffer.position;
    const std::uint8_t *end = request.message.bytes + buffer.position;
    // The end item is optional only in a message that has no space for it.
    const bool full = rest == 0 && length + 2 > vxmsg::maxMessage;
    return full || (rest >= 2 && end[0] == vxmsg::tagEnd && end[1] == vxmsg::formatEnd);
}

bool SimulatedTamber::take(const std::uint8_t *message, std::size_t length)
{
    const std::lock_guard lock(m_mutex);
    Request request;
    const bool taken =
        m_fault != Fault::Refused && parse(message, length, request) && obey(request);
    ++(taken ? m_taken : m_refused);
    return taken;
}

bool SimulatedTamber::obey(const Request &request)
{
    const auto &table = commands();
    const auto command = std::find_if(
        table.begin(), table.end(), [&](const Command &c) { return c.matches(request); });
    if (command == table.end()) return false;
    m_answers.clear();
    const bool obeyed = (this->*command->obey)(request);
    // A query is answered at once. A set command keeps the DSP busy for a moment.
    if (m_answers.empty()) {
        m_busyUntil = m_clock.now() + settleTime;
        if (obeyed) std::copy_n(request.message.bytes, m_lastCommand.size(), m_lastCommand.begin());
    }
    return obeyed;
}

void SimulatedTamber::give(std::uint8_t *message)
{
    const std::lock_guard lock(m_mutex);
    static constexpr Bytes cutOff = {vxctl::tagProductName, vxmsg::formatBytes, 200};
    const Bytes bytes = m_fault == Fault::Malformed ? cutOff : nextMessage();
    std::copy(bytes.begin(), bytes.end(), message);
}

SimulatedTamber::Bytes SimulatedTamber::nextMessage()
{
    if (m_fault == Fault::Busy) return readiness(false);
    if (!m_debugText.empty()) return debugText();
    if (m_answers.empty()) return readiness(m_clock.now() >= m_busyUntil);
    const Bytes answer = m_answers.front();
    m_answers.pop_front();
    return answer;
}

SimulatedTamber::Bytes SimulatedTamber::readiness(bool ready)
{
    Bytes bytes{};
    vxmsg::Buffer buffer{bytes.data(), vxmsg::maxMessage, 0};
    vxmsg::append(buffer, vxctl::tagReady, vxmsg::formatU8, ready ? 1 : 0);
    return bytes;
}

SimulatedTamber::Bytes SimulatedTamber::debugText()
{
    constexpr std::size_t maxText = vxmsg::maxMessage - 3;
    const std::size_t count = std::min(maxText, m_debugText.size());
    Bytes bytes{};
    vxmsg::Buffer buffer{bytes.data(), vxmsg::maxMessage, 0};
    vxmsg::append(
        buffer, vxctl::tagDebugText, reinterpret_cast<const std::uint8_t *>(m_debugText.data()),
        static_cast<std::uint8_t>(count));
    m_debugText.erase(0, count);
    return bytes;
}

void SimulatedTamber::queue(const Answer &answer)
{
    Bytes bytes{};
    if (m_fault == Fault::Foreign && m_answers.empty()) {
        Answer foreign;
        foreign.add(0x7E, vxmsg::formatU32, 0xFFFFFFFF).addChannel(vxctl::channelLineOut, 99);
        foreign.add(vxctl::tagGainReductionLevel, vxmsg::formatU16, 1).add(0x7D, "not yours");
        foreign.copyTo(bytes);
        m_answers.push_back(bytes);
    }
    answer.copyTo(bytes);
    m_answers.push_back(bytes);
}

bool SimulatedTamber::setParameter(const Request &r)
{
    if (r.number(0) == vxctl::channelMaster) return setMaster(r);
    if (r.number(0) != vxctl::channelInput) return false;
    const int number = static_cast<int>(r.number(1));
    if (!within(number, 1, inputCount)) return false;
    Input &input = m_state.inputs[static_cast<std::size_t>(number - 1)];
    const int value = signedByte(r.number(2));
    switch (r.items[2].tag) {
    case vxctl::tagFader:
        if (!within(value, silentFader, 6)) return false;
        input.fader = value;
        return true;
    case vxctl::tagPan:
        if (!within(value, -127, 127)) return false;
        input.pan = value;
        return true;
    default:
        break;
    }
    if (!within(value, 0, 1)) return false;
    switch (r.items[2].tag) {
    case vxctl::tagMute:
        input.mute = value != 0;
        return true;
    case vxctl::tagSolo:
        input.solo = value != 0;
        return true;
    case vxctl::tagPhase:
        input.phase = value != 0;
        return true;
    default:
        return false;
    }
}

bool SimulatedTamber::setMaster(const Request &r)
{
    const int number = static_cast<int>(r.number(1));
    const int value = signedByte(r.number(2));
    if (!within(number, 1, 2)) return false;
    MasterSide &side = m_state.master[static_cast<std::size_t>(number - 1)];
    if (r.items[2].tag == vxctl::tagFader && within(value, silentFader, 6)) {
        side.fader = value;
        return true;
    }
    if (r.items[2].tag == vxctl::tagMute && within(value, 0, 1)) {
        side.mute = value != 0;
        return true;
    }
    return false;
}

bool SimulatedTamber::setEq(const Request &r)
{
    constexpr int low = 0;
    constexpr int high = 1;
    const int number = static_cast<int>(r.number(1));
    const int band = static_cast<int>(r.of(vxctl::tagEqBand));
    const int gain = signedByte(r.of(vxctl::tagEqGain));
    const auto freq = static_cast<std::uint8_t>(r.of(vxctl::tagEqFreq));
    const auto q = static_cast<std::uint8_t>(r.of(vxctl::tagEqQ));
    const bool shelf = band == low || band == high;
    const int maxQ = band == high ? 0 : band == low ? 1 : 6;
    if (r.number(0) != vxctl::channelInput || !within(number, 1, inputCount)) return false;
    if (!within(band, 0, 3) || !within(gain, -12, 12) || !within(freq, 0, shelf ? 31 : 63) ||
        !within(q, 0, maxQ) || !within(static_cast<int>(r.of(vxctl::tagEqOn)), 0, 1))
        return false;
    Eq &eq = m_state.inputs[static_cast<std::size_t>(number - 1)].eq;
    eq.bands[static_cast<std::size_t>(band)] = {
        static_cast<std::int8_t>(gain), freq, shelf ? std::uint8_t{0} : q};
    if (band == low) eq.lowCut = q != 0;
    eq.on = r.of(vxctl::tagEqOn) != 0;
    return true;
}

bool SimulatedTamber::setComp(const Request &r)
{
    struct Limit
    {
        Tag tag;
        int most;
    };
    static constexpr Limit limits[] = {
        {vxctl::tagCompThreshold, 32}, {vxctl::tagCompRatio, 14}, {vxctl::tagCompAttack, 99},
        {vxctl::tagCompRelease, 99},   {vxctl::tagCompGain, 20},  {vxctl::tagCompLink, 1},
        {vxctl::tagCompOn, 1},
    };
    const int number = static_cast<int>(r.number(1));
    if (r.number(0) != vxctl::channelInput || !within(number, 1, inputCount)) return false;
    for (const Limit &limit : limits)
        if (!within(static_cast<int>(r.of(limit.tag)), 0, limit.most)) return false;
    const auto byte = [&r](Tag tag) { return static_cast<std::uint8_t>(r.of(tag)); };
    m_state.inputs[static_cast<std::size_t>(number - 1)].comp = {
        byte(vxctl::tagCompThreshold), byte(vxctl::tagCompRatio), byte(vxctl::tagCompAttack),
        byte(vxctl::tagCompRelease),   byte(vxctl::tagCompGain),  byte(vxctl::tagCompLink) != 0,
        byte(vxctl::tagCompOn) != 0,
    };
    return true;
}

bool SimulatedTamber::assign(const Request &r)
{
    const int sourceType = static_cast<int>(r.number(0));
    const int sourceNo = static_cast<int>(r.number(1));
    const int sources = sourceType == vxctl::channelMaster     ? 2
                        : sourceType == vxctl::channelComputer ? 8
                                                               : 0;
    const int out = static_cast<int>(r.number(4));
    if (!within(sourceNo, 1, sources)) return false;
    if (r.number(3) != vxctl::channelLineOut || !within(out, 1, lineOutCount)) return false;
    m_state.lineOuts[static_cast<std::size_t>(out - 1)] = {
        static_cast<std::uint8_t>(sourceType), static_cast<std::uint8_t>(sourceNo)};
    return true;
}

bool SimulatedTamber::setStereoBus(const Request &r)
{
    if (r.number(0) > 1) return false;
    m_state.stereoBus = r.number(0) != 0;
    return true;
}

bool SimulatedTamber::setTrueBypass(const Request &r)
{
    if (r.number(0) > 1) return false;
    m_state.trueBypass = r.number(0) != 0;
    return true;
}

bool SimulatedTamber::queryMeters(const Request &)
{
    constexpr std::size_t inOneMessage = 6;
    const Levels &now = readings();
    for (std::size_t first = 0; first < vxctl::meterCount; first += inOneMessage) {
        Answer answer;
        for (std::size_t i = first; i < first + inOneMessage; ++i) {
            const bool input = i < inputCount;
            answer.addChannel(
                input ? vxctl::channelInput : vxctl::channelMaster,
                input ? i + 1 : i - inputCount + 1);
            answer.add(
                vxctl::tagMeterLevel, vxmsg::formatU16,
                input ? now.inputs[i] : now.master[i - inputCount]);
        }
        queue(answer);
    }
    return true;
}

bool SimulatedTamber::queryGainReduction(const Request &r)
{
    const int number = static_cast<int>(r.number(0));
    if (r.number(1) != vxctl::channelInput || !within(number, 1, inputCount)) return false;
    Answer answer;
    answer.addChannel(vxctl::channelInput, r.number(0))
        .add(
            vxctl::tagGainReductionLevel, vxmsg::formatU16,
            readings().gainReduction[static_cast<std::size_t>(number - 1)]);
    queue(answer);
    return true;
}

bool SimulatedTamber::queryIdentity(const Request &)
{
    Answer answer;
    answer.add(vxctl::tagVersion, vxmsg::formatU16, version)
        .add(vxctl::tagBuild, vxmsg::formatU16, build)
        .add(vxctl::tagProductName, productName);
    queue(answer);
    return true;
}

bool SimulatedTamber::firmwareStart(const Request &r)
{
    m_firmware.clear();
    m_firmwareTotal = r.number(0);
    return m_firmwareTotal <= maxFirmware;
}

bool SimulatedTamber::firmwareStatus(const Request &)
{
    const bool complete = m_firmware.size() >= m_firmwareTotal;
    m_firmwareCredit = complete ? (m_clock.now() < m_flashUntil ? 1 : 0) : firmwareWindow;
    Answer answer;
    answer.add(vxctl::tagFirmwareCredit, vxmsg::formatU32, m_firmwareCredit)
        .add(
            vxctl::tagFirmwareOffset, vxmsg::formatU32,
            static_cast<std::uint32_t>(m_firmware.size()));
    queue(answer);
    return true;
}

bool SimulatedTamber::firmwareData(const Request &r)
{
    const vxmsg::Item &item = r.items[0];
    const bool whole = item.length == firmwareChunk;
    if (whole != (item.tag == vxctl::tagFirmwareChunk)) return false;
    if (item.length > m_firmwareCredit) return false;
    if (m_firmware.size() + item.length > m_firmwareTotal) return false;
    m_firmware.insert(m_firmware.end(), item.bytes, item.bytes + item.length);
    m_firmwareCredit -= item.length;
    if (m_firmware.size() == m_firmwareTotal) m_flashUntil = m_clock.now() + flashTime;
    return true;
}

bool SimulatedTamber::acceptSilently(const Request &)
{
    return true;
}

bool SimulatedTamber::queryByte(const Request &)
{
    Answer answer;
    answer.add(0x15, vxmsg::formatU8, 0);
    queue(answer);
    return true;
}

bool SimulatedTamber::queryWord(const Request &)
{
    Answer answer;
    answer.add(0x28, vxmsg::formatU32, 0);
    queue(answer);
    return true;
}

const Levels &SimulatedTamber::readings() const
{
    const auto period = m_clock.now() / meterPeriod;
    if (m_readings.period != period || m_readings.state != m_state) {
        const double seconds = std::chrono::duration<double>((period + 1) * meterPeriod).count();
        m_readings = {period, m_state, levelsAt(m_state, seconds)};
    }
    return m_readings.levels;
}

bool SimulatedTamber::isPlugged() const
{
    const std::lock_guard lock(m_mutex);
    return m_plugged;
}

void SimulatedTamber::setPlugged(bool plugged)
{
    const std::lock_guard lock(m_mutex);
    if (m_plugged == plugged) return;
    m_plugged = plugged;
    m_state = MixerState();
    m_answers.clear();
    m_lastCommand = Bytes{};
    m_debugText.clear();
    m_firmware.clear();
    m_firmwareTotal = 0;
    m_firmwareCredit = 0;
}

Fault SimulatedTamber::fault() const
{
    const std::lock_guard lock(m_mutex);
    return m_fault;
}

void SimulatedTamber::setFault(Fault fault)
{
    const std::lock_guard lock(m_mutex);
    m_fault = fault;
}

std::uint32_t SimulatedTamber::sampleRate() const
{
    const std::lock_guard lock(m_mutex);
    return m_sampleRate;
}

void SimulatedTamber::setSampleRate(std::uint32_t hertz)
{
    const std::lock_guard lock(m_mutex);
    m_sampleRate = hertz;
}

void SimulatedTamber::say(const std::string &text)
{
    const std::lock_guard lock(m_mutex);
    m_debugText += text;
}

MixerState SimulatedTamber::state() const
{
    const std::lock_guard lock(m_mutex);
    return m_state;
}

Levels SimulatedTamber::levels() const
{
    const std::lock_guard lock(m_mutex);
    return readings();
}

std::uint64_t SimulatedTamber::taken() const
{
    const std::lock_guard lock(m_mutex);
    return m_taken;
}

std::uint64_t SimulatedTamber::refused() const
{
    const std::lock_guard lock(m_mutex);
    return m_refused;
}

std::string SimulatedTamber::lastCommand() const
{
    const std::lock_guard lock(m_mutex);
    return describe(m_lastCommand.data(), m_lastCommand.size());
}

std::vector<std::uint8_t> SimulatedTamber::firmware() const
{
    const std::lock_guard lock(m_mutex);
    return m_firmware;
}

} // namespace simulator
