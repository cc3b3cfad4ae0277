#include "dxf/file_map.h"

#include <algorithm>
#include <array>

namespace headless {
namespace {

constexpr std::array<std::string_view, 6> kOrder = {"HEADER", "CLASSES",  "TABLES",
                                                    "BLOCKS", "ENTITIES", "OBJECTS"};

std::size_t rankOf(std::string_view section) {
    return static_cast<std::size_t>(std::find(kOrder.begin(), kOrder.end(), section) -
                                    kOrder.begin());
}

std::string nameOf(const RecordGroups& groups) {
    for (const DxfTag& tag : groups.record().tags) {
        if (tag.code == 2) return std::string(tag.text());
    }
    return {};
}

const FileStretch* lastNamed(const std::vector<FileStretch>& stretches, std::string_view name) {
    const auto found = std::find_if(stretches.rbegin(), stretches.rend(),
                                    [name](const FileStretch& s) { return s.name == name; });
    return found == stretches.rend() ? nullptr : &*found;
}

} // namespace

FileMap::FileMap(const DxfSource& source, RecordGroups& groups) : end_(source.end) {
    // What the file's end cut through stays at its end.
    if (!source.pieces.empty()) {
        const DxfPiece& last = source.pieces.back();
        if (last.kind == DxfPiece::Kind::kUnread && last.span.offset + last.span.length == end_)
            end_ = last.span.offset;
    }
    for (const DxfPiece& piece : source.pieces) {
        switch (piece.kind) {
        case DxfPiece::Kind::kSection:
            closeSection(piece.span.offset);
            addSection(piece, groups);
            break;
        case DxfPiece::Kind::kSectionEnd:
            closeSection(piece.span.offset);
            break;
        case DxfPiece::Kind::kTable:
            closeTable(piece.span.offset);
            addTable(piece, groups);
            break;
        case DxfPiece::Kind::kTableEnd:
            closeTable(piece.span.offset);
            break;
        case DxfPiece::Kind::kBlock:
        case DxfPiece::Kind::kBlockEnd:
        case DxfPiece::Kind::kUnread:
        case DxfPiece::Kind::kLoose:
            break;
        }
    }
    closeSection(end_);
}

void FileMap::addSection(const DxfPiece& piece, RecordGroups& groups) {
    groups.read(piece.span);
    sections_.push_back({nameOf(groups), piece.span, piece.span.offset + piece.span.length, end_});
    sectionOpen_ = true;
}

void FileMap::addTable(const DxfPiece& piece, RecordGroups& groups) {
    groups.read(piece.span);
    tables_.push_back({nameOf(groups), piece.span, piece.span.offset + piece.span.length, end_});
    tableOpen_ = true;
}

void FileMap::closeTable(std::uint64_t end) {
    if (tableOpen_) tables_.back().end = end;
    tableOpen_ = false;
}

void FileMap::closeSection(std::uint64_t end) {
    closeTable(end);
    if (sectionOpen_) sections_.back().end = end;
    sectionOpen_ = false;
}

const FileStretch* FileMap::section(std::string_view name) const {
    return lastNamed(sections_, name);
}

const FileStretch* FileMap::table(std::string_view name) const { return lastNamed(tables_, name); }

std::uint64_t FileMap::placeFor(std::string_view section) const {
    const auto later = std::find_if(sections_.begin(), sections_.end(), [&](const FileStretch& s) {
        const std::size_t rank = rankOf(s.name);
        return rank > rankOf(section) && rank < kOrder.size();
    });
    return later == sections_.end() ? end_ : later->head.offset;
}

} // namespace headless
