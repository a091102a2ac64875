#pragma once

/// The factor for time limits: builds with sanitizers are slower.
#if defined(__SANITIZE_THREAD__)
constexpr int slowness = 15;
#elif defined(__SANITIZE_ADDRESS__)
constexpr int slowness = 5;
#else
constexpr int slowness = 1;
#endif
