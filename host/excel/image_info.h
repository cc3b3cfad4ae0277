// What a picture file tells about its size.
#pragma once

#include <optional>
#include <string_view>

namespace headless::excel {

/// Of one picture at its own resolution (96 dots to the inch when it names none).
struct ImageInfo {
    int pixelWidth = 0;
    int pixelHeight = 0;
    double dotsPerInchX = 96.0;
    double dotsPerInchY = 96.0;
    const char* extension = "";

    [[nodiscard]] double widthPoints() const { return pixelWidth * 72.0 / dotsPerInchX; }
    [[nodiscard]] double heightPoints() const { return pixelHeight * 72.0 / dotsPerInchY; }
};

/// Of a PNG, JPEG, GIF or BMP file; nothing for other or damaged bytes.
[[nodiscard]] std::optional<ImageInfo> imageInfo(std::string_view bytes);

} // namespace headless::excel
