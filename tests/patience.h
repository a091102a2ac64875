#pragma once

/// How much slower this build is than an ordinary one, at most: the sanitizers take their time.
#if defined(__SANITIZE_THREAD__)
constexpr int slowness = 15;
#elif defined(__SANITIZE_ADDRESS__)
constexpr int slowness = 5;
#else
constexpr int slowness = 1;
#endif
