// A checksum for tables too large to write down.
#pragma once

#include <cstdint>

/// FNV-1a, 64 bits, byte by byte.
class Fnv {
public:
    void add(unsigned byte) { hash_ = (hash_ ^ (byte & 0xFFU)) * 0x100000001B3U; }
    /// Low byte first.
    void add16(unsigned value) {
        add(value);
        add(value >> 8);
    }
    [[nodiscard]] std::uint64_t value() const { return hash_; }

private:
    std::uint64_t hash_ = 0xCBF29CE484222325U;
};
