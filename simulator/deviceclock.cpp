#include "simulator/deviceclock.h"

#include <thread>

namespace simulator {

Microseconds RealClock::now() const
{
    return std::chrono::duration_cast<Microseconds>(std::chrono::steady_clock::now() - m_start);
}

void RealClock::pass(Microseconds time)
{
    std::this_thread::sleep_for(time);
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
