// Writes drawings as DXF files.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

class AcDbDatabase;

namespace headless {

/// What a saving did, and how it ended.
struct DxfWriteResult {
    /// One line for the user when nothing was written, naming the file and what is wrong; else
    /// empty.
    std::string refusal = {};
    /// Plain words on what the user may not expect: the drawing had to get a newer version.
    std::vector<std::string> notes = {};
    // Objects whose records differ from those that were read.
    std::size_t changed = 0;
    std::size_t added = 0;
    std::size_t removed = 0;
    /// Names of the header variables with another value.
    std::vector<std::string> variables = {};
    std::string version = {}; // "AC1015", empty when the file states none

    explicit operator bool() const { return refusal.empty(); }
    bool anyChange() const { return changed + added + removed + variables.size() > 0; }
};

/// Writes a drawing. What did not change since it was read is written byte for byte as it was, in
/// the version and form of the file that it was read from; a new drawing becomes an ASCII file of
/// version 2018. A drawing of R12 with something that R12 has no word for becomes one of 2000,
/// which a note tells.
///
/// The file is written beside the target and takes its place when it is complete, see
/// FileReplacement: the target may be the very file that the drawing was read from.
DxfWriteResult writeDxf(AcDbDatabase& db, const std::filesystem::path& file);

/// The same, its bytes passed on in pieces. Never refuses.
DxfWriteResult writeDxf(AcDbDatabase& db, const std::function<void(std::string_view)>& sink);

} // namespace headless
