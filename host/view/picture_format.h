// The kinds of files that pictures are kept in.
#pragma once

#include <filesystem>
#include <optional>

namespace headless {

enum class PictureFormat { kPng, kSvg, kPdf };

/// The format that a file's ending asks for: .png, .svg or .pdf in any case.
[[nodiscard]] std::optional<PictureFormat> pictureFormatOf(const std::filesystem::path& file);

} // namespace headless
