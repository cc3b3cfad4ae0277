// Finds a runtime class by its name or by the name its objects have in drawing files.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include "rx/object.h"

namespace headless {

class ClassDictionary {
public:
    static ClassDictionary& instance();

    void add(const AcRxClass& description);
    void remove(const AcRxClass& description);

    /// The class of that name, or null.
    AcRxClass* byName(std::wstring_view name) const;
    /// The class whose objects stand in drawing files under that name (capitals), or null.
    AcRxClass* byDxfName(std::string_view dxfName) const;

    /// The class's name in drawing files as wide text that lives as long as the class.
    const ACHAR* wideDxfName(const AcRxClass& description) const;

private:
    ClassDictionary() = default;

    mutable std::mutex mutex_;
    std::map<std::wstring, AcRxClass*, std::less<>> byName_;
    std::map<std::string, AcRxClass*, std::less<>> byDxfName_;
    std::map<const AcRxClass*, std::wstring> wideDxfNames_;
};

} // namespace headless

/// The class of that name, or null; null for a null name.
AcRxClass* acrxGetClassByName(const ACHAR* name);
