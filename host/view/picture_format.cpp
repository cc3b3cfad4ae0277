#include "view/picture_format.h"

#include "win/casing.h"

namespace headless {

std::optional<PictureFormat> pictureFormatOf(const std::filesystem::path& file) {
    const std::wstring ending = lowerCased(file.extension().wstring());
    if (ending == L".png") return PictureFormat::kPng;
    if (ending == L".svg") return PictureFormat::kSvg;
    if (ending == L".pdf") return PictureFormat::kPdf;
    return std::nullopt;
}

} // namespace headless
