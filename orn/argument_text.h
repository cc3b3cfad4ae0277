// Arguments as the library takes texts.
#pragma once

#include <string>
#include <vector>

#include <afx.h>

namespace orn {

CString wide(const std::string& utf8);

/// The names of a list with commas between them.
std::vector<CString> namesIn(const std::string& list);

} // namespace orn
