#pragma once

#include "device/vxctl.h"
#include "simulator/deviceclock.h"
#include "simulator/levels.h"
#include "simulator/mixerstate.h"

#include <array>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

namespace simulator {

/// How a simulated device can misbehave.
enum class Fault {
    None,
    Busy,      ///< never ready
    ShortRead, ///< answers fewer bytes than were asked for
    Refused,   ///< refuses every message
    Malformed, ///< answers with an item that is cut off
    Foreign,   ///< puts items before its answers that nobody asked for
    Slow,      ///< every transfer takes slowTransferTime
};

constexpr Microseconds transferTime{250};
constexpr Microseconds slowTransferTime{250000};

/// A Tamber in software, from its end of the cable: it takes every message of the command set,
/// refuses what a device refuses, holds the mixer's state, and meters sixteen input signals.
/// Unplugging cuts its power: it comes back with its defaults. Any thread; it has a lock.
class SimulatedTamber
{
public:
    /// The clock must outlive the device.
    explicit SimulatedTamber(DeviceClock &clock);

    /// @name The device's end of the cable
    ///@{
    /// Takes a message; false when it is refused.
    bool take(const std::uint8_t *message, std::size_t length);
    /// The next message of the device, 64 bytes.
    void give(std::uint8_t *message);
    DeviceClock &clock() { return m_clock; }
    ///@}

    /// @name The hands on the device
    ///@{
    bool isPlugged() const;
    void setPlugged(bool plugged);
    Fault fault() const;
    void setFault(Fault fault);
    std::uint32_t sampleRate() const;
    void setSampleRate(std::uint32_t hertz);
    /// Text that the next answers carry for a developer, in pieces of at most 61 bytes.
    void say(const std::string &text);
    ///@}

    /// @name What an observer sees
    ///@{
    MixerState state() const;
    Levels levels() const;
    /// Messages taken since construction, and messages refused.
    std::uint64_t taken() const;
    std::uint64_t refused() const;
    /// The last command that was obeyed and was no query, in words; empty before the first one.
    std::string lastCommand() const;
    /// The image of a finished or running firmware transfer.
    std::vector<std::uint8_t> firmware() const;
    ///@}

    static constexpr std::uint16_t version = 102;
    static constexpr std::uint16_t build = 34;
    static constexpr char productName[] = "Tamber";

private:
    using Bytes = std::array<std::uint8_t, vxmsg::maxMessage>;
    struct Request;
    struct Command;
    class Answer;

    static const std::vector<Command> &commands();
    static bool parse(const std::uint8_t *message, std::size_t length, Request &request);
    bool obey(const Request &request);

    bool setParameter(const Request &r);
    bool setMaster(const Request &r);
    bool setEq(const Request &r);
    bool setComp(const Request &r);
    bool assign(const Request &r);
    bool setStereoBus(const Request &r);
    bool setTrueBypass(const Request &r);
    bool queryMeters(const Request &r);
    bool queryGainReduction(const Request &r);
    bool queryIdentity(const Request &r);
    bool firmwareStart(const Request &r);
    bool firmwareStatus(const Request &r);
    bool firmwareData(const Request &r);
    bool acceptSilently(const Request &r);
    bool queryByte(const Request &r);
    bool queryWord(const Request &r);

    void queue(const Answer &answer);
    Bytes nextMessage();
    Bytes debugText();
    static Bytes readiness(bool ready);
    double seconds() const;

    mutable std::mutex m_mutex;
    DeviceClock &m_clock;
    MixerState m_state;
    bool m_plugged = true;
    Fault m_fault = Fault::None;
    std::uint32_t m_sampleRate = 48000;
    Microseconds m_busyUntil{0};
    std::deque<Bytes> m_answers;
    Bytes m_lastCommand{}; ///< as it came
    std::string m_debugText;
    std::uint64_t m_taken = 0;
    std::uint64_t m_refused = 0;

    std::vector<std::uint8_t> m_firmware;
    std::uint32_t m_firmwareTotal = 0;
    std::uint32_t m_firmwareCredit = 0;
    Microseconds m_flashUntil{0};
};

} // namespace simulator
