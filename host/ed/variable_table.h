// The table of all system variables.
#pragma once

#include <limits>
#include <span>
#include <string_view>

#include "ed/system_variables.h"

class AcDbDatabase;

namespace headless {

/// Reads a drawing's variable.
using VariableReader = VariableValue (*)(AcDbDatabase& database);
/// Writes a drawing's variable; the value has the variable's type and lies in its range.
using VariableWriter = SetOutcome (*)(AcDbDatabase& database, const VariableValue& value);

struct VariableSpec {
    const wchar_t* name;   // in capitals
    VariableValue initial; // of a session's variable; tells the type of any
    bool readOnly = false;
    double low = std::numeric_limits<double>::lowest(); // of a number
    double high = std::numeric_limits<double>::max();
    VariableReader read = nullptr;  // null: kept by the session
    VariableWriter write = nullptr; // null: kept by the session, or read-only
};

/// The variables that the session keeps.
std::span<const VariableSpec> sessionVariables();
/// The variables that belong to the drawing.
std::span<const VariableSpec> drawingVariables();
/// Those of the drawing that tell how it is seen.
std::span<const VariableSpec> viewVariables();

/// The variable of that name in any case, or null.
const VariableSpec* findVariable(std::wstring_view name);

} // namespace headless
