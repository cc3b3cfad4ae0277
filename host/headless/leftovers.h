// What a session still holds and should not.
#pragma once

#include <string>
#include <vector>

namespace headless {

class DbState;
class EdState;

/// One line for each kind of thing left behind; empty when all was given back. Drawings of open
/// documents are no leftovers, what is open in them is.
std::vector<std::string> findLeftovers(const EdState& ed, DbState& db);

/// Takes the counts of what is alive in the process, so that only what is made later counts.
class ProcessBaseline {
public:
    ProcessBaseline();
    /// Automation strings allocated since and not freed.
    std::size_t newStrings() const;
    /// References to automation objects taken since and not released.
    std::size_t newAutomationReferences() const;
    /// Automation arrays made since and not destroyed.
    std::size_t newArrays() const;

private:
    std::size_t strings_;
    std::size_t automationReferences_;
    std::size_t arrays_;
};

} // namespace headless
