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
    ShortRead, ///< answers with fewer bytes than requested
    Refused,   ///< refuses every message
    Malformed, ///< answers with a truncated item
    Foreign,   ///< sends a message with unrequested items before each answer
    Slow,      ///< every transfer takes slowTransferTime
};

/// How long a transfer takes.
constexpr Microseconds transferTime{250};
/// How long a transfer takes with Fault::Slow.
constexpr Microseconds slowTransferTime{250000};

/// How often the meters get new levels. A change of the mixer shows at once.
constexpr Microseconds meterPeriod{50000};

/// A Tamber in software. It accepts every message of the command set, refuses what a real device
/// refuses, keeps the mixer state and meters sixteen input signals. Unplugging switches it off, so
/// it starts with its defaults when it is plugged in again. Any thread; a lock protects it.
class SimulatedTamber
{
public:
    /// The clock must outlive the device.
    explicit SimulatedTamber(DeviceClock &clock);

    /// @name For the transport
    ///@{
    /// Processes a message from the panel. Returns false if the device refuses it.
    bool take(const std::uint8_t *message, std::size_t length);
    /// Writes the device's next message: 64 bytes, padded with zeros.
    void give(std::uint8_t *message);
    DeviceClock &clock() { return m_clock; }
    ///@}

    /// @name Controls for the user and for tests
    ///@{
    bool isPlugged() const;
    /// Pulls the USB cable or plugs it in.
    void setPlugged(bool plugged);
    Fault fault() const;
    void setFault(Fault fault);
    std::uint32_t sampleRate() const; ///< hertz
    void setSampleRate(std::uint32_t hertz);
    /// Makes the next messages carry this debug text, in pieces of at most 61 bytes.
    void say(const std::string &text);
    ///@}

    /// @name Observation
    ///@{
    MixerState state() const;
    /// Returns the meter readings of the current meter period, up to its end.
    Levels levels() const;
    /// Returns the number of messages accepted since the construction.
    std::uint64_t taken() const;
    /// Returns the number of messages refused since the construction.
    std::uint64_t refused() const;
    /// Returns the last accepted set command in words, or an empty text before the first one.
    std::string lastCommand() const;
    /// Returns what has arrived of the last firmware image.
    std::vector<std::uint8_t> firmware() const;
    ///@}

    /// @name Identity
    ///@{
    static constexpr std::uint16_t version = 102;
    static constexpr std::uint16_t build = 34;
    static constexpr char productName[] = "Tamber";
    ///@}

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
    const Levels &readings() const;

    /// The levels of a state during one meter period.
    struct Readings
    {
        Microseconds::rep period = -1;
        MixerState state;
        Levels levels{};
    };

    mutable std::mutex m_mutex;
    mutable Readings m_readings; ///< the last that were computed
    DeviceClock &m_clock;
    MixerState m_state;
    bool m_plugged = true;
    Fault m_fault = Fault::None;
    std::uint32_t m_sampleRate = 48000;
    Microseconds m_busyUntil{0};
    std::deque<Bytes> m_answers;
    Bytes m_lastCommand{}; ///< the message of the last set command
    std::string m_debugText;
    std::uint64_t m_taken = 0;
    std::uint64_t m_refused = 0;

    std::vector<std::uint8_t> m_firmware;
    std::uint32_t m_firmwareTotal = 0;
    std::uint32_t m_firmwareCredit = 0;
    Microseconds m_flashUntil{0};
};

} // namespace simulator
