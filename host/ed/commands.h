// The commands that applications register, in groups.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ed/app_messages.h"
#include "rx/object.h"
#include "win/types.h"

class AcEdUIContext;
class AcEdCommandIterator;

inline constexpr Adesk::Int32 ACRX_CMD_MODAL = 0x00000000;
inline constexpr Adesk::Int32 ACRX_CMD_TRANSPARENT = 0x00000001;
inline constexpr Adesk::Int32 ACRX_CMD_USEPICKSET = 0x00000002;
inline constexpr Adesk::Int32 ACRX_CMD_REDRAW = 0x00000004;
inline constexpr Adesk::Int32 ACRX_CMD_NOPERSPECTIVE = 0x00000008;
inline constexpr Adesk::Int32 ACRX_CMD_NOMULTIPLE = 0x00000010;
inline constexpr Adesk::Int32 ACRX_CMD_NOTILEMODE = 0x00000020;
inline constexpr Adesk::Int32 ACRX_CMD_NOPAPERSPACE = 0x00000040;
inline constexpr Adesk::Int32 ACRX_CMD_NOOEM = 0x00000100;
inline constexpr Adesk::Int32 ACRX_CMD_UNDEFINED = 0x00000200;
inline constexpr Adesk::Int32 ACRX_CMD_INPROGRESS = 0x00000400;
inline constexpr Adesk::Int32 ACRX_CMD_DEFUN = 0x00000800;
inline constexpr Adesk::Int32 ACRX_CMD_NONEWSTACK = 0x00010000;
inline constexpr Adesk::Int32 ACRX_CMD_NOINTERNALLOCK = 0x00020000;
inline constexpr Adesk::Int32 ACRX_CMD_DOCREADLOCK = 0x00080000;
inline constexpr Adesk::Int32 ACRX_CMD_DOCEXCLUSIVELOCK = 0x00100000;
inline constexpr Adesk::Int32 ACRX_CMD_SESSION = 0x00200000;
inline constexpr Adesk::Int32 ACRX_CMD_INTERRUPTIBLE = 0x00400000;
inline constexpr Adesk::Int32 ACRX_CMD_NOHISTORY = 0x00800000;
inline constexpr Adesk::Int32 ACRX_CMD_NO_UNDO_MARKER = 0x01000000;
inline constexpr Adesk::Int32 ACRX_CMD_NOBEDIT = 0x02000000;
inline constexpr Adesk::Int32 ACRX_CMD_NOACTIONRECORDING = 0x04000000;

class AcEdCommand : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcEdCommand);

    AcEdCommand(std::wstring globalName, std::wstring localName, Adesk::Int32 flags,
                AcRxFunctionPtr function)
        : globalName_(std::move(globalName)), localName_(std::move(localName)), flags_(flags),
          function_(function) {}

    const ACHAR* globalName() const { return globalName_.c_str(); }
    const ACHAR* localName() const { return localName_.c_str(); }
    Adesk::Int32 commandFlags() const { return flags_; }
    AcRxFunctionPtr functionAddr() const { return function_; }

private:
    std::wstring globalName_;
    std::wstring localName_;
    Adesk::Int32 flags_;
    AcRxFunctionPtr function_;
};

/// All registered commands; the group registered last is searched first. Names match in any case.
class AcEdCommandStack : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcEdCommandStack);

    AcEdCommandStack();
    ~AcEdCommandStack() override;
    AcEdCommandStack(const AcEdCommandStack&) = delete;
    AcEdCommandStack& operator=(const AcEdCommandStack&) = delete;

    /// eDuplicateKey when the group has a command of that global or local name; eInvalidInput
    /// without a group, a global name or a function. The local name is the global one when null.
    Acad::ErrorStatus addCommand(const ACHAR* groupName, const ACHAR* globalName,
                                 const ACHAR* localName, Adesk::Int32 flags,
                                 AcRxFunctionPtr function, AcEdUIContext* uiContext = nullptr,
                                 int fcode = -1, HINSTANCE resources = nullptr,
                                 AcEdCommand** result = nullptr);
    /// eKeyNotFound when there is none.
    Acad::ErrorStatus removeCmd(const ACHAR* groupName, const ACHAR* globalName);
    Acad::ErrorStatus removeGroup(const ACHAR* groupName);
    /// The group is searched before all others from now on.
    Acad::ErrorStatus popGroupToTop(const ACHAR* groupName);

    /// The command of that name, or null.
    /// @param globalLookup  compares global names, else local ones.
    AcEdCommand* lookupCmd(const ACHAR* name, bool globalLookup) const;

    /// The global names of all commands, in alphabetical order.
    std::vector<std::wstring> globalNames() const;

    /// All commands; the caller deletes it. It is to be used before the stack changes.
    AcEdCommandIterator* iterator();

private:
    struct Group {
        std::wstring name;
        std::vector<std::unique_ptr<AcEdCommand>> commands;
    };
    std::vector<Group>::iterator findGroup(std::wstring_view name);

    std::vector<Group> groups_; // the first is searched first
};

class AcEdCommandIterator {
public:
    struct Entry {
        const ACHAR* group;
        AcEdCommand* command;
    };
    explicit AcEdCommandIterator(std::vector<Entry> entries) : entries_(std::move(entries)) {}

    bool done() const { return at_ >= entries_.size(); }
    bool next() {
        if (!done()) ++at_;
        return !done();
    }
    const AcEdCommand* command() const { return done() ? nullptr : entries_[at_].command; }
    const ACHAR* commandGroup() const { return done() ? nullptr : entries_[at_].group; }

private:
    std::vector<Entry> entries_;
    std::size_t at_ = 0;
};

namespace headless {
/// The current session's commands.
AcEdCommandStack* registeredCommands();
} // namespace headless

#define acedRegCmds headless::registeredCommands()
