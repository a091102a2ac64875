#pragma once

#include <atomic>
#include <chrono>

namespace simulator {

using Microseconds = std::chrono::microseconds;

/// The time that a simulated device lives in. Any thread.
class DeviceClock
{
public:
    virtual ~DeviceClock() = default;
    /// Since the device was made.
    virtual Microseconds now() const = 0;
    /// Lets time pass, as a transfer does.
    virtual void pass(Microseconds time) = 0;
};

/// The time of the wall: pass() sleeps.
class RealClock final : public DeviceClock
{
public:
    Microseconds now() const override;
    void pass(Microseconds time) override;

private:
    const std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

/// A time that stands still but for pass(), which returns at once.
class SteppedClock final : public DeviceClock
{
public:
    Microseconds now() const override;
    void pass(Microseconds time) override;

private:
    std::atomic<Microseconds::rep> m_now{0};
};

} // namespace simulator
