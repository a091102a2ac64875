#pragma once

#include <QString>

#include <cstdint>

class QVXDevice;

namespace mixer {

/// The device's own description, as far as it is known and current.
struct Identity
{
    bool present = false;         ///< all other fields are empty without a device
    QString firmware;             ///< "1.02 0034", or "" if unknown
    QString name;                 ///< product name, or "" if unknown
    std::uint32_t sampleRate = 0; ///< in hertz, or 0 if unknown
};

/// Returns the device's last answers. GUI thread only.
Identity lastIdentity(const QVXDevice &device);

/// Asks the device for its identity, one question a tick: a command waits behind one question and
/// not behind all of them. GUI thread only.
class IdentityQuestions
{
public:
    /// @param device must outlive the object
    explicit IdentityQuestions(QVXDevice &device) : m_device(device) {}

    /// Asks all questions in the next ticks. The order goes on where it was, so that frequent calls
    /// keep no question from being asked.
    void begin() { m_left = count; }
    /// Asks the next question, if any is left. Call it every 100 ms.
    void tick();

private:
    static constexpr int count = 4;

    QVXDevice &m_device;
    int m_left = 0;
    int m_next = 0;
};

/// Returns the text of a firmware version: "1.02 0034" for version 102 and build 34. Pure.
QString firmwareText(std::uint16_t version, std::uint16_t build);

} // namespace mixer
