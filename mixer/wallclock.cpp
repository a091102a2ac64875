#include "mixer/wallclock.h"

#include <algorithm>

using namespace std::chrono;

mixer::RealWallClock &mixer::RealWallClock::instance()
{
    static RealWallClock clock;
    return clock;
}

/// The steady clock may stop while the computer sleeps, and the wall clock may be set back. So the
/// clock that has advanced more counts. A wall clock that is set forward looks like sleep.
qint64 mixer::RealWallClock::now()
{
    const auto steady = steady_clock::now();
    const auto wall = system_clock::now();
    const auto passed =
        std::max(round<milliseconds>(steady - m_steady), round<milliseconds>(wall - m_wall));
    m_steady = steady;
    m_wall = wall;
    m_now += passed;
    return m_now.count();
}
