// UTF-8 with a note of whether anything was broken; toUtf8() and fromUtf8() are the everyday form.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace headless {

constexpr wchar_t kReplacement = 0xFFFD;

/// Wide text of UTF-8 bytes. Each longest broken piece becomes one U+FFFD and sets `invalid`.
std::wstring decodeUtf8(std::string_view bytes, bool& invalid);

/// UTF-8 of wide text. What is no scalar value becomes U+FFFD and sets `invalid`.
std::string encodeUtf8(std::wstring_view text, bool& invalid);

} // namespace headless
