// The bytes of a drawing file, held in memory.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace headless {

/// Bytes that stay where they are for as long as somebody shares them: objects keep pointing into
/// the file they were read from.
class DxfInput {
public:
    /// Reads a file whole. Mapping it would cost no less once everything was looked at, and what
    /// other programs write over the file, or cut off it, would reach the open drawing.
    /// @param refusal  on failure why, without the file's name ("no such file").
    /// @return         null on failure.
    static std::shared_ptr<const DxfInput> open(const std::filesystem::path& file,
                                                std::string& refusal);
    static std::shared_ptr<const DxfInput> fromMemory(std::string bytes);

    std::string_view bytes() const { return bytes_; }

private:
    DxfInput() = default;

    std::string buffer_;
    std::unique_ptr<char[]> read_; // of a file
    std::string_view bytes_;
};

} // namespace headless
