// Reads drawings from DXF files, ASCII and binary, of all versions from R12 to 2018.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "dxf/input.h"
#include "dxf/read_report.h"

class AcDbDatabase;

namespace headless {

struct DxfReadOptions {
    /// Called now and then with the part of the file that is done, from 0 to 1.
    std::function<void(double)> progress;
};

/// How a reading ended.
struct DxfReadResult {
    /// One line for the user when the file is no drawing that can be read, naming the file and the
    /// place; else empty.
    std::string refusal;

    explicit operator bool() const { return refusal.empty(); }
};

/// Reads a drawing into a database that holds nothing yet. What is damaged is repaired or left out
/// and listed in the report; of a file cut off in the middle all whole records are read. After a
/// refusal the database is fit for nothing but to be deleted.
///
/// The database keeps the bytes of the file: objects read rarely needed parts from it later.
DxfReadResult readDxf(AcDbDatabase& db, const std::filesystem::path& file, DxfReadReport& report,
                      const DxfReadOptions& options = {});

/// As above from bytes in memory; `name` stands for the file in the refusal.
DxfReadResult readDxf(AcDbDatabase& db, std::shared_ptr<const DxfInput> input,
                      const std::string& name, DxfReadReport& report,
                      const DxfReadOptions& options = {});

} // namespace headless
