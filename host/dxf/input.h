// The bytes of a drawing file, mapped into memory or held in a buffer.
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
    /// Maps a file privately: other programs' later changes to it may or may not be seen.
    /// @param refusal  on failure why, without the file's name ("no such file").
    /// @return         null on failure.
    static std::shared_ptr<const DxfInput> open(const std::filesystem::path& file,
                                                std::string& refusal);
    static std::shared_ptr<const DxfInput> fromMemory(std::string bytes);

    ~DxfInput();
    DxfInput(const DxfInput&) = delete;
    DxfInput& operator=(const DxfInput&) = delete;

    std::string_view bytes() const { return bytes_; }

private:
    DxfInput() = default;

    std::string buffer_;
    void* mapping_ = nullptr;
    std::string_view bytes_;
};

} // namespace headless
