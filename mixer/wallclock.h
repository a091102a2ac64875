#pragma once

#include <QtGlobal>

#include <chrono>

namespace mixer {

/// A clock for the presence logic; a test can step its own.
class WallClock
{
public:
    virtual ~WallClock() = default;
    /// Returns milliseconds since an arbitrary moment. The time never goes back, and it goes on
    /// while the computer sleeps.
    virtual qint64 now() = 0;
};

/// The computer's clock.
class RealWallClock final : public WallClock
{
public:
    /// Returns the process-wide clock.
    static RealWallClock &instance();

    qint64 now() override;

private:
    std::chrono::steady_clock::time_point m_steady = std::chrono::steady_clock::now();
    std::chrono::system_clock::time_point m_wall = std::chrono::system_clock::now();
    std::chrono::milliseconds m_now{0};
};

} // namespace mixer
