#include "dxf/reader.h"

#include <algorithm>

#include "db/database.h"
#include "dxf/drawing_reader.h"
#include "dxf/signature.h"

namespace headless {
namespace {

std::string readInto(AcDbDatabase& db, std::shared_ptr<const DxfInput> input, DxfReadReport& report,
                     const DxfReadOptions& options) {
    const std::string_view bytes = input->bytes();
    if (std::string refusal = refusalOf(bytes); !refusal.empty()) return refusal;

    const auto source = std::make_shared<DxfSource>();
    source->input = std::move(input);
    db.keepSource(source, bytes, source.get());
    const auto scanner = RecordScanner::make(bytes, report);
    source->binary = report.binary();
    DrawingReader reader(db, *source, *scanner, report, options.progress);
    std::string refusal = reader.read();
    std::stable_sort(
        source->pieces.begin(), source->pieces.end(),
        [](const DxfPiece& a, const DxfPiece& b) { return a.span.offset < b.span.offset; });
    return refusal;
}

} // namespace

DxfReadResult readDxf(AcDbDatabase& db, const std::filesystem::path& file, DxfReadReport& report,
                      const DxfReadOptions& options) {
    std::string refusal;
    auto input = DxfInput::open(file, refusal);
    if (input == nullptr) return {file.string() + ": " + refusal};
    return readDxf(db, std::move(input), file.string(), report, options);
}

DxfReadResult readDxf(AcDbDatabase& db, std::shared_ptr<const DxfInput> input,
                      const std::string& name, DxfReadReport& report,
                      const DxfReadOptions& options) {
    const std::string refusal = readInto(db, std::move(input), report, options);
    if (refusal.empty()) return {};
    return {name + ": " + refusal};
}

} // namespace headless
