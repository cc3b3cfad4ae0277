#include "excel/image_info.h"

#include <cstdint>

namespace headless::excel {
namespace {

constexpr double kMetersPerInch = 0.0254;
constexpr double kCentimetersPerInch = 2.54;

/// Numbers in a file, 0 past its end.
class Bytes {
public:
    explicit Bytes(std::string_view bytes) : bytes_(bytes) {}

    [[nodiscard]] std::uint32_t byte(std::size_t at) const {
        return at < bytes_.size() ? static_cast<unsigned char>(bytes_[at]) : 0U;
    }
    [[nodiscard]] int big16(std::size_t at) const {
        return static_cast<int>(byte(at) << 8 | byte(at + 1));
    }
    [[nodiscard]] int big32(std::size_t at) const {
        return static_cast<int>(byte(at) << 24 | byte(at + 1) << 16 | byte(at + 2) << 8 |
                                byte(at + 3));
    }
    [[nodiscard]] int little16(std::size_t at) const {
        return static_cast<int>(byte(at + 1) << 8 | byte(at));
    }
    [[nodiscard]] int little32(std::size_t at) const {
        return static_cast<int>(byte(at + 3) << 24 | byte(at + 2) << 16 | byte(at + 1) << 8 |
                                byte(at));
    }
    [[nodiscard]] std::string_view text(std::size_t at, std::size_t length) const {
        return at < bytes_.size() ? bytes_.substr(at, length) : std::string_view();
    }
    [[nodiscard]] std::size_t size() const { return bytes_.size(); }

private:
    std::string_view bytes_;
};

void setResolution(ImageInfo& info, double x, double y) {
    if (x >= 1.0 && y >= 1.0) {
        info.dotsPerInchX = x;
        info.dotsPerInchY = y;
    }
}

ImageInfo pngInfo(const Bytes& bytes) {
    ImageInfo info;
    info.extension = "png";
    info.pixelWidth = bytes.big32(16);
    info.pixelHeight = bytes.big32(20);
    for (std::size_t at = 8; at + 12 <= bytes.size();) {
        const int length = bytes.big32(at);
        if (length < 0) break;
        constexpr std::uint32_t kPerMeter = 1;
        if (bytes.text(at + 4, 4) == "pHYs" && bytes.byte(at + 16) == kPerMeter) {
            setResolution(info, bytes.big32(at + 8) * kMetersPerInch,
                          bytes.big32(at + 12) * kMetersPerInch);
        }
        at += static_cast<std::size_t>(length) + 12;
    }
    return info;
}

ImageInfo jpegInfo(const Bytes& bytes) {
    ImageInfo info;
    info.extension = "jpeg";
    for (std::size_t at = 2; at + 4 <= bytes.size() && bytes.byte(at) == 0xFF;) {
        const std::uint32_t marker = bytes.byte(at + 1);
        const bool isFrame =
            marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (isFrame) {
            info.pixelHeight = bytes.big16(at + 5);
            info.pixelWidth = bytes.big16(at + 7);
            break;
        }
        if (marker == 0xE0 && bytes.text(at + 4, 4) == "JFIF") {
            const double unit = bytes.byte(at + 11) == 1   ? 1.0
                                : bytes.byte(at + 11) == 2 ? kCentimetersPerInch
                                                           : 0.0;
            setResolution(info, bytes.big16(at + 12) * unit, bytes.big16(at + 14) * unit);
        }
        at += 2 + static_cast<std::size_t>(bytes.big16(at + 2));
    }
    return info;
}

} // namespace

std::optional<ImageInfo> imageInfo(std::string_view file) {
    const Bytes bytes(file);
    ImageInfo info;
    if (file.starts_with("\x89PNG\r\n\x1a\n")) {
        info = pngInfo(bytes);
    } else if (file.starts_with("\xFF\xD8\xFF")) {
        info = jpegInfo(bytes);
    } else if (file.starts_with("GIF8")) {
        info.extension = "gif";
        info.pixelWidth = bytes.little16(6);
        info.pixelHeight = bytes.little16(8);
    } else if (file.starts_with("BM")) {
        info.extension = "bmp";
        info.pixelWidth = bytes.little32(18);
        info.pixelHeight = bytes.little32(22);
    }
    if (info.pixelWidth <= 0 || info.pixelHeight <= 0) return std::nullopt;
    return info;
}

} // namespace headless::excel
