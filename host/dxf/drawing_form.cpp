#include "dxf/drawing_form.h"

#include <algorithm>
#include <array>

#include "dxf/source.h"

namespace headless {
namespace {

// In the order of DrawingVersion.
constexpr std::array<std::string_view, 9> kNames = {
    "AC1009", "AC1012", "AC1014", "AC1015", "AC1018", "AC1021", "AC1024", "AC1027", "AC1032"};

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view lineEndOf(std::string_view bytes) {
    const std::size_t end = bytes.find_first_of("\r\n");
    if (end == std::string_view::npos || bytes[end] == '\n') return "\n";
    return end + 1 < bytes.size() && bytes[end + 1] == '\n' ? "\r\n" : "\r";
}

bool padsCodes(std::string_view bytes, std::string_view lineEnd) {
    constexpr std::size_t kLooked = 1U << 16;
    const std::string padded = std::string(lineEnd) + "  0" + std::string(lineEnd);
    return bytes.starts_with(' ') || bytes.substr(0, kLooked).find(padded) != std::string::npos;
}

/// Binary files begin with a code 0, which two zero bytes make where codes have two bytes.
bool hasOneByteCodes(std::string_view bytes) {
    constexpr std::size_t kSecondByte = 23;
    return bytes.size() > kSecondByte && bytes[kSecondByte] != '\0';
}

} // namespace

DrawingVersion versionNamed(std::string_view name) {
    // Versions between the known ones are of drawings saved before their release came out.
    const auto* const above = std::upper_bound(kNames.begin(), kNames.end(), name);
    if (above == kNames.begin() || !name.starts_with("AC1")) return DrawingVersion::kR12;
    return static_cast<DrawingVersion>(above - kNames.begin() - 1);
}

std::string_view nameOf(DrawingVersion version) {
    return kNames[static_cast<std::size_t>(version)];
}

DrawingForm formOfUpgrade(const DxfSource& source) {
    DrawingForm form = formOf(source);
    form.version = DrawingVersion::k2000;
    form.oneByteCodes = false;
    // Escapes serve any code page.
    form.codePage = L"ANSI_1252";
    form.encoder = TextEncoder(0);
    return form;
}

DrawingForm formOf(const DxfSource& source) {
    DrawingForm form;
    form.version = versionNamed(source.version);
    form.binary = source.binary;
    form.encoder = TextEncoder::like(source.decoder, form.version >= DrawingVersion::k2007);
    std::string_view bytes = source.input->bytes();
    if (form.binary) {
        form.oneByteCodes = hasOneByteCodes(bytes);
        return form;
    }
    if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
    form.lineEnd = lineEndOf(bytes);
    form.padded = padsCodes(bytes, form.lineEnd);
    return form;
}

} // namespace headless
