// A picture file for tests.
#pragma once

#include <string>

namespace test_support {

/// A black PNG of 1 by 1 pixels, without a resolution.
inline std::string onePixelPng() {
    static constexpr unsigned char kBytes[] = {
        0x89, 'P', 'N', 'G', 13,   10,   26,   10, // signature
        0,    0,   0,   13,  'I',  'H',  'D',  'R',  0,    0,    0,    1,    0, 0, 0, 1, // 1 by 1
        8,    0,   0,   0,   0,    0x3A, 0x7E, 0x9B, 0x55,                         // 8 bits of gray
        0,    0,   0,   10,  'I',  'D',  'A',  'T',  0x78, 0x9C, 0x63, 0x60, 0, 0, //
        0,    2,   0,   1,   0x48, 0xAF, 0xA4, 0x71,                               //
        0,    0,   0,   0,   'I',  'E',  'N',  'D',  0xAE, 0x42, 0x60, 0x82};
    return {reinterpret_cast<const char*>(kBytes), sizeof kBytes};
}

} // namespace test_support
