// KRV_HAS_SSE2: whether the compiler may use SSE2, which every 64-bit PC has. Where it may not,
// plain code with the same results takes its place.
#pragma once

#if defined(__SSE2__) || defined(_M_X64)
#define KRV_HAS_SSE2 1
#else
#define KRV_HAS_SSE2 0
#endif
