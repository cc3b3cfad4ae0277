// What a workbook file holds and the model does not: whoever saves the workbook is told of it.
#pragma once

#include <set>
#include <string>
#include <vector>

#include <pugixml.hpp>

namespace headless::excel {

class ForeignContents {
public:
    /// @param phrase  such as "charts".
    void add(const std::string& phrase) { phrases_.insert(phrase); }
    /// Notes what the elements of a sheet, or of the workbook itself, tell that is not carried.
    void noteElements(const pugi::xml_node& parent);
    /// Notes settings of the workbook itself.
    void noteWorkbook(const pugi::xml_node& root);
    /// Notes what the parts are for that nobody read.
    void noteParts(const std::vector<std::string>& names);
    /// Each phrase once.
    [[nodiscard]] std::vector<std::string> phrases() const {
        return {phrases_.begin(), phrases_.end()};
    }

private:
    std::set<std::string> phrases_;
};

} // namespace headless::excel
