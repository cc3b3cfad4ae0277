#include "view/picture_format.h"

#include "win/casing.h"
#include "win/code_page.h"

namespace headless {

std::optional<PictureFormat> pictureFormatOf(const std::filesystem::path& file) {
    const std::wstring ending = lowerCased(fromUtf8(file.extension().string()));
    if (ending == L".png") return PictureFormat::kPng;
    if (ending == L".svg") return PictureFormat::kSvg;
    if (ending == L".pdf") return PictureFormat::kPdf;
    return std::nullopt;
}

} // namespace headless
