// Fetches objects from memory before they are looked at.
#pragma once

#include <cstddef>

namespace headless {

/// The objects of a drawing lie all over the memory. Whoever goes through all of them does not wait
/// for each if it asks for that many places further on.
constexpr std::size_t kFetchedAhead = 8;

/// Null is harmless.
inline void fetch(const void* object) {
    constexpr std::size_t kCacheLine = 64;
    constexpr std::size_t kUsualSize = 256; // of objects, in bytes
    for (std::size_t at = 0; object != nullptr && at < kUsualSize; at += kCacheLine)
        __builtin_prefetch(static_cast<const char*>(object) + at);
}

} // namespace headless
