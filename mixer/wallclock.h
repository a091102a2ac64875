#pragma once

#include <QtGlobal>

#include <chrono>

namespace mixer {

/// The time that the presence logic lives in.
class WallClock
{
public:
    virtual ~WallClock() = default;
    /// Milliseconds since some moment. Never goes back, and goes on while the computer sleeps.
    virtual qint64 now() = 0;
};

/// The computer's own time.
class RealWallClock final : public WallClock
{
public:
    static RealWallClock &instance();

    qint64 now() override;

private:
    std::chrono::steady_clock::time_point m_steady = std::chrono::steady_clock::now();
    std::chrono::system_clock::time_point m_wall = std::chrono::system_clock::now();
    std::chrono::milliseconds m_now{0};
};

} // namespace mixer
