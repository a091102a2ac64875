#pragma once

#if defined(__has_feature) // Clang's way to ask; GCC defines the macros itself
#if __has_feature(address_sanitizer) && !defined(__SANITIZE_ADDRESS__)
#define __SANITIZE_ADDRESS__
#endif
#if __has_feature(thread_sanitizer) && !defined(__SANITIZE_THREAD__)
#define __SANITIZE_THREAD__
#endif
#endif

/// The factor for time limits: builds with sanitizers are slower.
#if defined(__SANITIZE_THREAD__)
constexpr int slowness = 15;
#elif defined(__SANITIZE_ADDRESS__)
constexpr int slowness = 5;
#else
constexpr int slowness = 1;
#endif
