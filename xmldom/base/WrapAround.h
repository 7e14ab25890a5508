#ifndef XMLDOM_BASE_WRAPAROUND_H
#define XMLDOM_BASE_WRAPAROUND_H

/// Marks a function whose unsigned arithmetic is meant to wrap around, because the checks of
/// integers that clang++ can build in (scripts/sanitizers) take that for a mistake.
#if defined(__clang__)
#define XMLDOM_WRAPS_AROUND __attribute__((no_sanitize("unsigned-integer-overflow")))
#else
#define XMLDOM_WRAPS_AROUND
#endif

#endif
