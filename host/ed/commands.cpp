#include "ed/commands.h"

#include <algorithm>
#include <set>

#include "ed/state.h"
#include "win/casing.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcEdCommand, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcEdCommandStack, AcRxObject)

using headless::equalNoCase;

AcEdCommandStack::AcEdCommandStack() = default;
AcEdCommandStack::~AcEdCommandStack() = default;

std::vector<AcEdCommandStack::Group>::iterator AcEdCommandStack::findGroup(std::wstring_view name) {
    return std::ranges::find_if(groups_,
                                [&](const Group& group) { return equalNoCase(group.name, name); });
}

Acad::ErrorStatus AcEdCommandStack::addCommand(const ACHAR* groupName, const ACHAR* globalName,
                                               const ACHAR* localName, Adesk::Int32 flags,
                                               AcRxFunctionPtr function,
                                               AcEdUIContext* /*uiContext*/, int /*fcode*/,
                                               HINSTANCE /*resources*/, AcEdCommand** result) {
    if (groupName == nullptr || globalName == nullptr || function == nullptr) {
        return Acad::eInvalidInput;
    }
    if (*groupName == L'\0' || *globalName == L'\0') return Acad::eInvalidInput;
    const std::wstring local = localName == nullptr ? globalName : localName;

    auto group = findGroup(groupName);
    if (group == groups_.end()) group = groups_.insert(groups_.begin(), Group{groupName, {}});
    const bool taken = std::ranges::any_of(group->commands, [&](const auto& command) {
        return equalNoCase(command->globalName(), globalName) ||
               equalNoCase(command->localName(), local);
    });
    if (taken) return Acad::eDuplicateKey;

    group->commands.push_back(std::make_unique<AcEdCommand>(globalName, local, flags, function));
    if (result != nullptr) *result = group->commands.back().get();
    return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::removeCmd(const ACHAR* groupName, const ACHAR* globalName) {
    if (groupName == nullptr || globalName == nullptr) return Acad::eInvalidInput;
    const auto group = findGroup(groupName);
    if (group == groups_.end()) return Acad::eKeyNotFound;
    const auto removed = std::erase_if(group->commands, [&](const auto& command) {
        return equalNoCase(command->globalName(), globalName);
    });
    return removed == 0 ? Acad::eKeyNotFound : Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::removeGroup(const ACHAR* groupName) {
    if (groupName == nullptr) return Acad::eInvalidInput;
    const auto group = findGroup(groupName);
    if (group == groups_.end()) return Acad::eKeyNotFound;
    groups_.erase(group);
    return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::popGroupToTop(const ACHAR* groupName) {
    if (groupName == nullptr) return Acad::eInvalidInput;
    const auto group = findGroup(groupName);
    if (group == groups_.end()) return Acad::eKeyNotFound;
    std::rotate(groups_.begin(), group, group + 1);
    return Acad::eOk;
}

AcEdCommand* AcEdCommandStack::lookupCmd(const ACHAR* name, bool globalLookup) const {
    if (name == nullptr) return nullptr;
    for (const Group& group : groups_) {
        for (const auto& command : group.commands) {
            const ACHAR* known = globalLookup ? command->globalName() : command->localName();
            if (equalNoCase(known, name)) return command.get();
        }
    }
    return nullptr;
}

std::vector<std::wstring> AcEdCommandStack::globalNames() const {
    std::set<std::wstring> names;
    for (const Group& group : groups_) {
        for (const auto& command : group.commands)
            names.insert(command->globalName());
    }
    return {names.begin(), names.end()};
}

AcEdCommandIterator* AcEdCommandStack::iterator() {
    std::vector<AcEdCommandIterator::Entry> entries;
    for (const Group& group : groups_) {
        for (const auto& command : group.commands) {
            entries.push_back({group.name.c_str(), command.get()});
        }
    }
    return new AcEdCommandIterator(std::move(entries));
}

AcEdCommandStack* headless::registeredCommands() { return &EdState::current().commands; }
