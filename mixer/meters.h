#pragma once

#include "common/device.h"
#include "mixer/levelmeter.h"

#include <array>

class QVXDevice;

namespace mixer {

/// The 34 level meters: those of the channels, of the pairs' sides and of the master. A pair's
/// meters show the levels of its two channels, linked or not. GUI thread only.
class Meters
{
public:
    /// In the order channel 1, channel 2, pair 1-2 left, pair 1-2 right, channel 3, ... and at last
    /// the master's left and right.
    static constexpr int count = 2 * tamber::inputCount + tamber::masterSides;
    using Readings = std::array<MeterReading, count>;

    /// @param device must outlive the object
    explicit Meters(QVXDevice &device) : m_device(device) {}

    /// Takes the levels that the device sent last, asks for new ones, and moves the meters. False
    /// if the device did not answer well; the meters stay as they are then. Every 100 ms.
    bool poll();

    /// No device answers: no meter may look as if one did.
    void clear();

    Readings readings() const;

private:
    /// Inputs 1 to 16, then the master's left and right.
    using Levels = std::array<std::uint16_t, tamber::inputCount + tamber::masterSides>;

    bool fetch(Levels &levels);
    void show(const Levels &levels);

    QVXDevice &m_device;
    std::array<LevelMeter, count> m_meters;
    int m_ticks = 0; ///< of the current second
};

} // namespace mixer
