// What stands where in a record of a file: its head, its subclasses, what lies behind them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "dxf/record_groups.h"

namespace headless {

/// What a group is to whoever brings the record up to date.
enum class GroupRole : std::uint8_t {
    kOwn,        // of the object itself, unless its class does not model it
    kKept,       // a comment, or of a group in braces
    kDropped,    // to be left out
    kHandle,     // the object's
    kOwner,      // its owner's handle
    kReactors,   // the beginning of the list of reactors; the rest of it is dropped
    kDictionary, // of the list with the extension dictionary; likewise
};

/// The groups from `begin` to before `end`. The first is the subclass marker, but for the head.
struct FilePart {
    std::string_view name;
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Describes one record after the other, reusing its memory.
class RecordLayout {
public:
    void describe(const RecordGroups& groups);

    /// The head first: everything when the record has no markers.
    std::span<const FilePart> parts() const { return parts_; }
    bool hasSubclasses() const { return parts_.size() > 1; }
    /// Where the embedded object begins, or the extended data where there is none.
    std::size_t tail() const { return tail_; }
    /// Where the extended data begins; the number of groups where there is none.
    std::size_t xdata() const { return xdata_; }

    GroupRole role(std::size_t index) const { return roles_[index]; }
    void drop(std::size_t index);
    /// No group from here on has another role than kOwn or kKept.
    std::size_t plainFrom() const { return plainFrom_; }

    /// False when a list in braces goes on to the end of the groups, and maybe beyond.
    bool closesBraces() const { return closesBraces_; }

    /// Indices; the number of groups for what the record does not have.
    std::size_t handle() const { return handle_; }
    std::size_t owner() const { return owner_; }
    std::size_t reactors() const { return reactors_; }
    std::size_t dictionary() const { return dictionary_; }

private:
    void setRole(std::size_t index, GroupRole role);
    std::size_t describeBraces(const RecordGroups& groups, std::size_t open);
    void describeHead(const RecordGroups& groups, std::size_t index);

    std::vector<FilePart> parts_;
    std::vector<GroupRole> roles_;
    std::size_t tail_ = 0;
    std::size_t xdata_ = 0;
    std::size_t plainFrom_ = 0;
    bool closesBraces_ = true;
    std::size_t handle_ = 0;
    std::size_t owner_ = 0;
    std::size_t reactors_ = 0;
    std::size_t dictionary_ = 0;
};

} // namespace headless
