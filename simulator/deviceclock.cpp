#include "simulator/deviceclock.h"

#include <thread>

namespace simulator {

/// The shortest sleep: some transfers.
static constexpr Microseconds shortestSleep{1000};

Microseconds RealClock::now() const
{
    return std::chrono::duration_cast<Microseconds>(std::chrono::steady_clock::now() - m_start);
}

void RealClock::pass(Microseconds time)
{
    if ((m_owed += time.count()) < shortestSleep.count()) return;
    std::this_thread::sleep_for(Microseconds(m_owed.exchange(0)));
}

Microseconds SteppedClock::now() const
{
    return Microseconds(m_now.load());
}

void SteppedClock::pass(Microseconds time)
{
    m_now += time.count();
}

} // namespace simulator
