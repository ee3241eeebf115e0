#pragma once

/// How many times as long as usual the program may take: a sanitizer looks at every access to memory.
#if defined(__SANITIZE_THREAD__)
inline constexpr int slowdown = 10;
#elif defined(__SANITIZE_ADDRESS__)
inline constexpr int slowdown = 4;
#else
inline constexpr int slowdown = 1;
#endif
