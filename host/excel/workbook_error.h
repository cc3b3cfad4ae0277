// Why a workbook could not be read or written, in one line for people.
#pragma once

#include <stdexcept>

namespace headless::excel {

class WorkbookError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace headless::excel
