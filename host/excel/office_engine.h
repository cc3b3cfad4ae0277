// The engine that leaves the work to an office program.
#pragma once

#include <memory>

#include "excel/engine.h"
#include "excel/office.h"

namespace headless::excel {

/// Reads and writes .xlsx, .xls and .ods and calculates formulas by an office that is started when
/// it is needed first. A workbook goes over as one file, so that cells cost no calls of their own.
/// @param options  visible is the engine's to set.
[[nodiscard]] std::shared_ptr<Engine> officeEngine(const OfficeOptions& options = {});

} // namespace headless::excel
