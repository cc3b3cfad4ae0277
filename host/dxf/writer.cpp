#include "dxf/writer.h"

#include <cerrno>
#include <optional>
#include <system_error>

#include "db/database.h"
#include "dxf/new_drawing.h"
#include "dxf/source_update.h"
#include "win/replace_file.h"

namespace headless {
namespace {

std::string reasonOf(int error) {
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        return "its folder is not there";
    case EACCES:
    case EPERM:
    case EROFS:
        return "not allowed to write it";
    case EISDIR:
        return "is a folder, not a drawing";
    case ENOSPC:
    case EDQUOT:
        return "the disk is full";
    default:
        return "cannot be written (" + std::generic_category().message(error) + ")";
    }
}

} // namespace

DxfWriteResult writeDxf(AcDbDatabase& db, const std::function<void(std::string_view)>& sink) {
    DxfWriteResult result;
    const auto source = dxfSource(db);
    if (source == nullptr) {
        NewDrawing(db, DrawingForm(), nullptr, result).write(sink);
        return result;
    }
    SourceUpdate update(db, *source, result);
    if (const std::string newer = update.needsNewerVersion(); !newer.empty()) {
        result.notes.push_back("saved as a drawing of 2000: drawings of R12 cannot hold " + newer);
        NewDrawing(db, formOfUpgrade(*source), source.get(), result).write(sink);
        return result;
    }
    update.prepare();
    update.write(sink);
    return result;
}

DxfWriteResult writeDxf(AcDbDatabase& db, const std::filesystem::path& file) {
    FileReplacement replacement(file.string());
    DxfWriteResult result;
    if (replacement.error() == 0)
        result = writeDxf(db, [&](std::string_view bytes) { replacement.write(bytes); });
    struct stat status {};
    if (const int error = replacement.commit(Durability::kPower, status))
        result.refusal = file.string() + ": " + reasonOf(error);
    return result;
}

} // namespace headless
