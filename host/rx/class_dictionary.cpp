#include "rx/class_dictionary.h"

namespace headless {

ClassDictionary& ClassDictionary::instance() {
    // Never destroyed: descriptions are function-local statics that leave it when the process ends.
    static auto* const dictionary = new ClassDictionary;
    return *dictionary;
}

void ClassDictionary::add(const AcRxClass& description) {
    const std::scoped_lock lock(mutex_);
    auto* const entry = const_cast<AcRxClass*>(&description);
    byName_.emplace(description.name(), entry);
    if (const char* dxfName = description.dxfNameBytes(); dxfName != nullptr) {
        byDxfName_.emplace(dxfName, entry);
        const std::string_view bytes(dxfName);
        wideDxfNames_.emplace(&description, std::wstring(bytes.begin(), bytes.end()));
    }
}

void ClassDictionary::remove(const AcRxClass& description) {
    const std::scoped_lock lock(mutex_);
    std::erase_if(byName_, [&](const auto& entry) { return entry.second == &description; });
    std::erase_if(byDxfName_, [&](const auto& entry) { return entry.second == &description; });
    wideDxfNames_.erase(&description);
}

AcRxClass* ClassDictionary::byName(std::wstring_view name) const {
    const std::scoped_lock lock(mutex_);
    const auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : found->second;
}

AcRxClass* ClassDictionary::byDxfName(std::string_view dxfName) const {
    const std::scoped_lock lock(mutex_);
    const auto found = byDxfName_.find(dxfName);
    return found == byDxfName_.end() ? nullptr : found->second;
}

const ACHAR* ClassDictionary::wideDxfName(const AcRxClass& description) const {
    const std::scoped_lock lock(mutex_);
    const auto found = wideDxfNames_.find(&description);
    return found == wideDxfNames_.end() ? nullptr : found->second.c_str();
}

} // namespace headless

AcRxClass* acrxGetClassByName(const ACHAR* name) {
    return name == nullptr ? nullptr : headless::ClassDictionary::instance().byName(name);
}
