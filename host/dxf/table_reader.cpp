#include "dxf/table_reader.h"

#include <algorithm>
#include <array>

#include "db/database.h"
#include "db/drawing_roots.h"
#include "db/residence.h"
#include "dxf/application_values.h"
#include "dxf/group_codes.h"
#include "rx/class_dictionary.h"

namespace headless {
namespace {

// What records name comes before them: applications, linetypes, then layers and styles.
constexpr std::array<std::string_view, 9> kReadingOrder = {
    "TABLE", "APPID", "LTYPE", "STYLE", "BLOCK_RECORD", "LAYER", "UCS", "VIEW", "VPORT"};

std::size_t rankOf(std::string_view name) {
    const auto* const found = std::find(kReadingOrder.begin(), kReadingOrder.end(), name);
    return static_cast<std::size_t>(found - kReadingOrder.begin());
}

AcRxClass* tableRecordClass(std::string_view name) {
    AcRxClass* const found = ClassDictionary::instance().byDxfName(name);
    const bool record = found != nullptr && found->isDerivedFrom(AcDbSymbolTableRecord::desc());
    return record ? found : nullptr;
}

struct Place {
    std::size_t rank;
    ScanPosition position;
};

} // namespace

void TableReader::readSection() {
    std::vector<Place> places;
    ScanPosition end = context_.scanner.position();
    {
        const DxfReadReport::Pause pause(context_.report);
        ScannedRecord record;
        ScanPosition before = end;
        while (context_.scanner.next(record) && record.name != "ENDSEC" &&
               record.name != "SECTION" && record.name != "EOF") {
            places.push_back({rankOf(record.name), before});
            before = context_.scanner.position();
        }
        end = record.cutOff ? context_.scanner.position() : before;
    }
    std::stable_sort(places.begin(), places.end(),
                     [](const Place& a, const Place& b) { return a.rank < b.rank; });
    for (const Place& place : places) {
        context_.scanner.seek(place.position);
        ScannedRecord record;
        if (!context_.scanner.next(record)) break;
        readRecord(record);
    }
    context_.scanner.seek(end);
}

void TableReader::readRecord(const ScannedRecord& record) {
    if (record.name == "ENDTAB") {
        context_.addPiece(DxfPiece::Kind::kTableEnd, record);
        return;
    }
    const RecordParts parts = context_.splitter.split(record, true);
    if (record.cutOff) {
        context_.leaveOut(parts, "the file ends within it");
    } else if (record.name == "TABLE") {
        readTable(parts);
    } else if (AcRxClass* const recordClass = tableRecordClass(record.name)) {
        readTableRecord(recordClass, parts);
    } else {
        context_.leaveOut(parts, "no table has such records");
    }
}

void TableReader::readTable(const RecordParts& parts) {
    context_.addPiece(DxfPiece::Kind::kTable, parts.record);
    AcRxClass* const recordClass = tableRecordClass(textOf(parts.own, 2));
    if (recordClass == nullptr) return;
    AcDbSymbolTable* const table = DrawingRoots::table(context_.db, recordClass, parts.handle);
    if (table == nullptr) return;
    Residence::setSource(*table, spanOf(parts.record));
    context_.takeExtensionDictionary(*table, parts);
}

void TableReader::readTableRecord(AcRxClass* recordClass, const RecordParts& parts) {
    AcDbSymbolTable* const table = DrawingRoots::table(context_.db, recordClass);
    std::unique_ptr<AcDbSymbolTableRecord> record(
        AcDbSymbolTableRecord::cast(recordClass->create()));
    if (table == nullptr || record == nullptr || !context_.fill(*record, parts)) return;
    readApplicationValues(*record, parts.record.tags, context_.filer);
    context_.settleHandle(Residence::admitRecord(*table, std::move(record), parts.handle), parts);
}

} // namespace headless
