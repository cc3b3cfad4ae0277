// Brings one part of a record up to date: what the object writes now, with everything that the
// record says beyond it.
//
// Three lists of groups meet: those of the file, those that the object wrote when it had just been
// read from them, and those that it writes now. A value that did not change keeps its bytes, and a
// group that the class does not model stays behind the group it followed.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <unordered_set>
#include <vector>

#include "db/dxf_output.h"
#include "dxf/group_codes.h"
#include "dxf/group_writer.h"
#include "dxf/record_groups.h"
#include "dxf/record_layout.h"
#include "dxf/text_decoder.h"

namespace headless {

/// What the object writes of a part, now and before it was changed.
struct PartValues {
    std::span<const DxfOutTag> now;
    std::span<const DxfOutTag> before;
    std::span<const std::int16_t> codes; // that the class models; empty stands for all if `whole`
    bool whole = false;
    bool asRead = false;   // what `now` has beyond `before` is what the file has
    bool newPlace = false; // The object moved to another space: what says so is written anew.
    bool inPaper = false;
};

class PartMerge {
public:
    /// Puts groups of the head, whose values are not the object's own.
    using PutRole = std::function<void(GroupRole)>;
    using PutTag = std::function<void(const DxfOutTag&)>;
    using IsLost = std::function<bool(std::uint64_t)>;

    /// @param putTag  writes a group that the object writes now.
    /// @param isLost  tells of a handle whether its object is gone since the file was read.
    PartMerge(GroupWriter& groups, PutRole putRole, PutTag putTag, IsLost isLost);

    void setRenamed(std::unordered_set<AcDbStub*> records) { renamed_ = std::move(records); }
    const std::unordered_set<AcDbStub*>& renamed() const { return renamed_; }

    /// The record that parts are merged with from now on.
    /// @param anyLost  false when no object is gone since the file was read.
    void begin(const RecordGroups& file, const RecordLayout& layout, const TextDecoder& decoder,
               bool anyLost);

    /// Puts the part where the file alone tells what changed, its groups being in step with those
    /// of `now`. False when only the object as it was can tell; what was put by then is void.
    bool putInStep(const FilePart& part, const PartValues& values);

    void merge(const FilePart& part, const PartValues& values);
    /// Puts groups of the file as they are, but for those of another role.
    void keep(std::size_t begin, std::size_t end);

    /// True when both write the same, and no name among it has changed since.
    bool same(std::span<const DxfOutTag> a, std::span<const DxfOutTag> b) const;

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// What is known of a group code within the part at hand.
    struct CodeUse {
        std::uint32_t epoch = 0; // of the part that the rest is about
        bool modelled = false;
        std::uint32_t inFile = 0;
        std::uint32_t before = 0;
        std::size_t nextInFile = kNone; // index of the next group of that code
        std::size_t lastInFile = kNone;
        std::size_t nextBefore = kNone;
        std::size_t lastBefore = kNone;
    };
    /// Groups that are not modelled and follow one that is.
    struct Trail {
        std::size_t anchor; // kNone: they begin the part
        std::size_t begin;
        std::size_t end;
        bool first; // the anchor is the first group of its code
    };

    CodeUse& use(int code);
    bool sameTag(const DxfOutTag& a, const DxfOutTag& b) const;
    bool sameAsFile(const FilePart& part, const PartValues& values) const;
    bool namesRecord(const DxfTag& group, AcDbObjectId id) const;
    bool says(const DxfTag& group, const DxfOutTag& tag) const;
    bool saysText(std::string_view bytes, std::wstring_view text) const;
    bool isModelled(std::size_t at, const PartValues& values) const;
    bool statesCode(const FilePart& part, int code) const;
    bool isNew(const FilePart& part, const DxfOutTag& tag) const;
    enum class Said : std::uint8_t { kSame, kOther, kUnclear };
    Said compare(const FilePart& part, std::size_t at, const DxfOutTag& tag) const;
    bool surelyChanged(const FilePart& part, std::size_t at, const DxfOutTag& tag) const;
    bool namesLost(const FilePart& part, const PartValues& values) const;
    void mergeWhole(const FilePart& part, const PartValues& values);
    void mergeGroups(const FilePart& part, const PartValues& values, bool namesLost);
    void learn(const FilePart& part, const PartValues& values);
    void chooseModelled(const PartValues& values, bool namesLost);
    void findTrails(const FilePart& part);
    void putTrails(std::size_t anchor);
    void putLostTrails();
    void putValue(const DxfOutTag& tag, const PartValues& values);
    void putFlags(const DxfOutTag& tag, std::size_t inFile);

    GroupWriter& groups_;
    PutRole putRole_;
    PutTag putTag_;
    IsLost isLost_;
    std::unordered_set<AcDbStub*> renamed_;
    const RecordGroups* file_ = nullptr;
    const RecordLayout* layout_ = nullptr;
    const TextDecoder* decoder_ = nullptr;
    bool anyLost_ = false;
    bool ofEntity_ = false; // the record

    std::array<CodeUse, kLastGroupCode - kFirstGroupCode + 1> uses_;
    std::uint32_t epoch_ = 0;
    std::vector<std::size_t> sameInFile_; // for each group of the part, the next one of its code
    std::vector<std::size_t> sameBefore_;
    std::size_t partBegin_ = 0;
    std::vector<Trail> trails_;
};

} // namespace headless
