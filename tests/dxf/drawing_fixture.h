// Reads drawings for the tests and looks into what came of them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "db/database.h"
#include "db/residence.h"
#include "dxf/reader.h"
#include "win/code_page.h"

namespace headless::testing {

/// A drawing read from text, with its report.
struct Drawing {
    std::unique_ptr<AcDbDatabase> db = std::make_unique<AcDbDatabase>(false, true);
    DxfReadReport report;
    DxfReadResult result;

    explicit Drawing(std::string bytes)
        : result(readDxf(*db, DxfInput::fromMemory(std::move(bytes)), "test.dxf", report)) {}
    explicit Drawing(const std::filesystem::path& file) : result(readDxf(*db, file, report)) {}

    std::vector<std::string> findings() const {
        std::vector<std::string> lines;
        for (const DxfFinding& finding : report.findings())
            lines.push_back(report.describe(finding));
        return lines;
    }
};

/// The lines of a file, written with bars for their ends.
inline std::string lines(std::string_view bars, std::string_view lineEnd = "\n") {
    std::string text;
    for (const char letter : bars)
        letter == '|' ? text.append(lineEnd) : text.append(1, letter);
    return text;
}

/// The object behind a handle, whether or not it is open; null when there is none of that class.
template <class T>
T* at(const Drawing& drawing, std::uint64_t handle) {
    return Residence::peek<T>(AcDbObjectId(Residence::find(*drawing.db, handle)));
}

inline std::string nameOf(AcDbObjectId id) {
    const auto* const record = Residence::peek<AcDbSymbolTableRecord>(id);
    return record == nullptr ? std::string() : toUtf8(record->nameOf());
}

/// All records of a table, in order.
template <class Record>
std::vector<Record*> records(AcDbObjectId tableId) {
    std::vector<Record*> all;
    const auto* const table = Residence::peek<AcDbSymbolTable>(tableId);
    if (table == nullptr) return all;
    for (const AcDbObjectId id : table->recordIds()) {
        if (auto* const record = Residence::peek<Record>(id)) all.push_back(record);
    }
    return all;
}

/// All entities of a block, in order.
inline std::vector<AcDbEntity*> entities(AcDbObjectId blockId) {
    std::vector<AcDbEntity*> all;
    const auto* const block = Residence::peek<AcDbBlockTableRecord>(blockId);
    if (block == nullptr) return all;
    for (const AcDbObjectId id : block->entityIds()) {
        if (auto* const entity = Residence::peek<AcDbEntity>(id)) all.push_back(entity);
    }
    return all;
}

/// An object open for reading as long as it lives.
template <class T>
class Opened {
public:
    explicit Opened(AcDbObjectId id) { acdbOpenObject(object_, id, AcDb::kForRead, true); }
    ~Opened() {
        if (object_ != nullptr) object_->close();
    }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;
    explicit operator bool() const { return object_ != nullptr; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }

private:
    T* object_ = nullptr;
};

} // namespace headless::testing
