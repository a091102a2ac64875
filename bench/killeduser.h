#pragma once

#include <QtGlobal>

#include <chrono>

/// A panel with a random user, in a process that is to be killed. The files lie in the home that
/// the environment names. The process says what happens in lines on its standard output. Each
/// begins with a "@", a word and the time in milliseconds of the computer's steady clock:
/// - "state": the values have changed, or have been read at the start; a third word is the SHA-1 of
///   the settings file that holds them,
/// - "ready": the panel is usable,
/// - "idle": everything that was due in the event loop at this time is done,
/// - "begin": a work begins; a third word names it,
/// - "end": the work has ended.

/// The first argument of the process. The second is the seed.
constexpr char killedUserArgument[] = "--killed-user";

/// Returns the time of the steady clock, in milliseconds. It is the same in all processes.
inline qint64 steadyTime()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

/// Runs the process. Never returns normally.
int runKilledUser(unsigned seed);
