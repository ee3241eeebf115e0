#pragma once

/// Factor for time limits: sanitizers check every memory access.
#if defined(__SANITIZE_THREAD__)
inline constexpr int slowdown = 10;
#elif defined(__SANITIZE_ADDRESS__)
inline constexpr int slowdown = 4;
#else
inline constexpr int slowdown = 1;
#endif
