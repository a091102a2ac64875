#pragma once

#include <atomic>
#include <chrono>

namespace simulator {

using Microseconds = std::chrono::microseconds;

/// The clock of a simulated device. Any thread.
class DeviceClock
{
public:
    virtual ~DeviceClock() = default;
    /// Returns the time since the clock was made.
    virtual Microseconds now() const = 0;
    /// Lets this much time pass, for example the time of a transfer.
    virtual void pass(Microseconds time) = 0;
};

/// Wall-clock time. pass() sleeps, but adds short times up until they are worth a sleep: waking up
/// loads the processor more than a transfer does.
class RealClock final : public DeviceClock
{
public:
    Microseconds now() const override;
    void pass(Microseconds time) override;

private:
    const std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    std::atomic<Microseconds::rep> m_owed{0}; ///< time that has yet to be slept
};

/// A clock for tests. Only pass() advances it, and pass() returns at once.
class SteppedClock final : public DeviceClock
{
public:
    Microseconds now() const override;
    void pass(Microseconds time) override;

private:
    std::atomic<Microseconds::rep> m_now{0};
};

} // namespace simulator
