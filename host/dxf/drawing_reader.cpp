#include "dxf/drawing_reader.h"

#include "db/block_table.h"
#include "db/database.h"
#include "db/drawing_roots.h"
#include "db/entity.h"
#include "db/record_class.h"
#include "dxf/header_reader.h"

namespace headless {
namespace {

bool endsSection(std::string_view name) {
    return name == "ENDSEC" || name == "SECTION" || name == "EOF";
}

} // namespace

DrawingReader::DrawingReader(AcDbDatabase& db, DxfSource& source, RecordScanner& scanner,
                             DxfReadReport& report, std::function<void(double)> progress)
    : context_(db, source, scanner, report, *this), tables_(context_), blocks_(context_),
      objects_(context_), progress_(std::move(progress)) {}

std::string DrawingReader::read() {
    constexpr unsigned kRecordsBetweenReports = 4096;
    RecordScanner& scanner = context_.scanner;
    ScannedRecord record;
    bool ended = false;
    for (unsigned count = 1; !ended && scanner.next(record); ++count) {
        ended = !readRecord(record);
        if (progress_ && count % kRecordsBetweenReports == 0) {
            progress_(static_cast<double>(record.end) / static_cast<double>(scanner.size()));
        }
    }
    if (!scanner.failure().empty()) return scanner.failure();
    if (!anything_) return context_.report.place(1) + ": not a DXF drawing (it has no sections)";
    leaveSection();
    if (!ended) {
        context_.report.add(record.place, 0,
                            "the file ends without its end mark; something may be missing");
    }
    context_.filer.begin({});
    applyHeader(context_.db, context_.filer);
    completeDefaults(context_.db);
    context_.source.end = ended ? record.begin : scanner.size();
    context_.source.settings = context_.db.settings();
    return {};
}

bool DrawingReader::readRecord(const ScannedRecord& record) {
    if (record.name == "EOF") return false;
    if (record.name == "SECTION") {
        if (section_ != Section::kNone) {
            context_.report.add(record.place, 0, "a section begins before the last one has ended");
            leaveSection();
        }
        enterSection(record);
    } else if (record.name == "ENDSEC" || record.name.empty()) {
        // Broken files have header variables before the first section or behind one.
        readHeaderVariables(context_, record.tags);
        if (!context_.db.headerVariables().all().empty()) anything_ = true;
        leaveSection();
        context_.addPiece(
            record.name.empty() ? DxfPiece::Kind::kLoose : DxfPiece::Kind::kSectionEnd, record);
    } else {
        readSectionRecord(record);
    }
    return true;
}

DrawingReader::Section DrawingReader::sectionOf(std::string_view name) {
    if (name == "HEADER") return Section::kHeader;
    if (name == "TABLES") return Section::kTables;
    if (name == "BLOCKS") return Section::kBlocks;
    if (name == "ENTITIES") return Section::kEntities;
    if (name == "OBJECTS") return Section::kObjects;
    return Section::kOther;
}

void DrawingReader::enterSection(const ScannedRecord& record) {
    anything_ = true;
    section_ = sectionOf(textOf(record.tags, 2));
    if (readAhead_.contains(record.begin)) {
        skipSection();
        section_ = Section::kNone;
        return;
    }
    if (section_ == Section::kOther) {
        ScannedRecord whole = record;
        whole.name = textOf(record.tags, 2);
        whole.end = skipSection().offset;
        context_.addPiece(DxfPiece::Kind::kSection, whole);
        return;
    }
    context_.addPiece(DxfPiece::Kind::kSection, record);
    read_.insert(section_);
    if (section_ == Section::kHeader) readHeaderVariables(context_, record.tags);
    readAheadOf(section_);
    if (section_ > Section::kTables) ensureLayerZero();
    if (section_ == Section::kTables) tables_.readSection();
}

void DrawingReader::leaveSection() {
    if (section_ == Section::kBlocks || section_ == Section::kEntities) blocks_.endSection();
    section_ = Section::kNone;
}

void DrawingReader::readSectionRecord(const ScannedRecord& record) {
    const RecordParts parts = context_.splitter.split(record, true);
    if (record.cutOff) {
        context_.leaveOut(parts, "the file ends within it");
        return;
    }
    switch (section_) {
    case Section::kBlocks:
        blocks_.readInBlocks(parts);
        break;
    case Section::kEntities:
        blocks_.readInSpace(parts);
        break;
    case Section::kObjects:
        objects_.read(parts);
        break;
    case Section::kNone:
        readLooseRecord(parts);
        break;
    case Section::kHeader:
    case Section::kTables:
    case Section::kOther:
        context_.leaveOut(parts, "its section has no such records");
    }
}

void DrawingReader::readLooseRecord(const RecordParts& parts) {
    const AcRxClass* const kind = classOfRecord(parts.record.name, DxfRecord(parts.own));
    if (kind == nullptr || !kind->isDerivedFrom(AcDbEntity::desc())) {
        context_.leaveOut(parts, "it stands in no section");
        return;
    }
    if (!anyLoose_) {
        context_.report.add(parts.record.place, parts.handle,
                            "entities stand in no section; they are put into their space");
    }
    ensureLayerZero();
    anyLoose_ = true;
    anything_ = true;
    blocks_.readInSpace(parts);
}

ScanPosition DrawingReader::skipSection() {
    const DxfReadReport::Pause pause(context_.report);
    RecordScanner& scanner = context_.scanner;
    ScannedRecord record;
    ScanPosition before = scanner.position();
    while (scanner.next(record) && !endsSection(record.name))
        before = scanner.position();
    scanner.seek(before);
    return before;
}

const std::vector<DrawingReader::SectionPlace>& DrawingReader::index() {
    if (index_) return *index_;
    index_.emplace();
    const DxfReadReport::Pause pause(context_.report);
    RecordScanner& scanner = context_.scanner;
    const ScanPosition here = scanner.position();
    scanner.rewind();
    ScannedRecord record;
    ScanPosition before = scanner.position();
    while (scanner.next(record) && record.name != "EOF") {
        if (record.name == "SECTION") {
            index_->push_back({sectionOf(textOf(record.tags, 2)), before});
        }
        before = scanner.position();
    }
    scanner.seek(here);
    return *index_;
}

void DrawingReader::readAheadOf(Section section) {
    for (const Section needed : {Section::kHeader, Section::kTables, Section::kBlocks}) {
        if (needed >= section || read_.contains(needed)) continue;
        read_.insert(needed);
        for (const SectionPlace& place : index()) {
            if (place.section == needed) readWholeSection(place);
        }
    }
}

void DrawingReader::readWholeSection(const SectionPlace& place) {
    RecordScanner& scanner = context_.scanner;
    const ScanPosition here = scanner.position();
    const Section outer = section_;
    section_ = Section::kNone;
    scanner.seek(place.position);
    ScannedRecord record;
    bool first = true;
    while (scanner.next(record) && (first || !endsSection(record.name)) && readRecord(record)) {
        if (first) readAhead_.insert(record.begin);
        first = false;
    }
    leaveSection();
    section_ = outer;
    scanner.seek(here);
}

/// Entities that name no layer are on layer 0.
void DrawingReader::ensureLayerZero() {
    AcDbSymbolTable* const table = DrawingRoots::table(context_.db, AcDbLayerTableRecord::desc());
    if (!table->findRecord(L"0").isNull()) return;
    context_.filer.makeRecord(*table, textTag("0"), 0);
}

void DrawingReader::announceBlocks() {
    for (const SectionPlace& place : index()) {
        if (place.section == Section::kBlocks) blocks_.announceBlocks(place.position);
    }
}

} // namespace headless
