#pragma once

#include "common/device.h"
#include "mixer/levelmeter.h"

#include <array>

class QVXDevice;

namespace mixer {

/// The 34 level meters: one for each channel, each side of a pair and each side of the master.
/// A pair's meters show the levels of its two channels, linked or not. GUI thread only.
class Meters
{
public:
    /// The order of the readings is channel 1, channel 2, pair 1-2 left, pair 1-2 right, channel 3,
    /// and so on. The master's left and right come last.
    static constexpr int count = 2 * tamber::inputCount + tamber::masterSides;
    using Readings = std::array<MeterReading, count>;

    /// @param device must outlive the object
    explicit Meters(QVXDevice &device) : m_device(device) {}

    /// Moves the meters by the levels that the device sent last, and requests new ones. Call it
    /// every 100 ms. Returns false if the last request failed; the meters then stay as they are.
    bool poll();

    /// Empties all meters and clears their peak marks. The clip memories stay. Call it while no
    /// device answers.
    void clear();
    /// Clears all clip memories.
    void clearClips();

    /// Returns the level of an input (1 to 16) as the device sent it last, linear, 32768 for full
    /// scale; 0 while no device answers.
    std::uint16_t level(int input) const { return m_levels[static_cast<std::size_t>(input - 1)]; }

    /// Returns what the meters show now.
    Readings readings() const;
    /// Returns what the meter of an input (1 to 16) as a channel shows.
    MeterReading ofInput(int input) const;
    /// Returns what the master's left (1) or right (2) meter shows.
    MeterReading ofMaster(int side) const;

private:
    /// Linear levels of inputs 1 to 16, then the master's left and right.
    using Levels = std::array<std::uint16_t, tamber::inputCount + tamber::masterSides>;

    bool fetch(Levels &levels);
    void show(const Levels &levels);

    QVXDevice &m_device;
    std::array<LevelMeter, count> m_meters;
    Levels m_levels{}; ///< as they were sent last
    int m_ticks = 0;   ///< calls of poll() in the current second
};

} // namespace mixer
