// Writes objects' records: new ones as the objects tell of themselves, changed ones with what their
// records held beyond that.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "db/dxf_output.h"
#include "db/object.h"
#include "dxf/group_writer.h"
#include "dxf/part_merge.h"
#include "dxf/record_groups.h"
#include "dxf/record_layout.h"
#include "dxf/scratch_filer.h"
#include "dxf/xdata_merge.h"

class AcDbBlockTableRecord;
class AcDbEntity;

namespace headless {

/// What the writer of records asks about the drawing around them.
class RecordSurroundings {
public:
    virtual ~RecordSurroundings() = default;
    /// True when the file will have a record of that object, so that others may name it by handle.
    virtual bool isInFile(AcDbObjectId id) const = 0;
    /// True for the handle of an object that is gone since the file was read.
    virtual bool isLost(std::uint64_t handle) const = 0;
    /// False when that is so of no handle.
    virtual bool anyLost() const = 0;
    /// Called for each object that a record names newly.
    virtual void mentioned(AcDbObjectId id) = 0;
};

/// Where in the file a block's begin or end stands, or what it gets there.
struct BlockEdge {
    SourceSpan source;        // empty: it was in no file yet
    std::uint64_t handle = 0; // for one that states none
};

class RecordWriter {
public:
    /// Records are appended to `to`. Everything passed must outlive the writer.
    /// @param source  of the records that changed ones are merged with; null to write all as new.
    RecordWriter(AcDbDatabase& db, const DxfSource* source, const DrawingForm& form,
                 RecordSurroundings& surroundings, std::string& to);

    /// Writes the object's record, brought up to date if it was read from one.
    void write(const AcDbObject& object);
    /// Writes the beginning of the record that an entity was read from, up to the end of the
    /// subclass that tells layer, colour and the like, when nothing else of the entity changed.
    /// @return  the bytes of the file's record that it stands for; 0 when only the whole record can
    ///          be written, and nothing was.
    std::uint32_t writeLooks(const AcDbEntity& entity);
    /// @param otherAttributes  that the block got or lost attribute definitions since it was read;
    ///                         else its begin goes on saying of these what it says.
    void writeBlockBegin(const AcDbBlockTableRecord& block, const BlockEdge& edge,
                         bool otherAttributes = false);
    void writeBlockEnd(const AcDbBlockTableRecord& block, const BlockEdge& edge);
    /// Writes the mark behind the parts of an entity that has no object for it.
    void writeSequenceEnd(const AcDbEntity& owner, std::uint64_t handle);

    /// Called where a record that is written as new may have more before its extended data.
    using PutMore = std::function<void(const AcDbObject&, const DxfOutput& written)>;
    void setPutMore(PutMore putMore) { putMore_ = std::move(putMore); }

    /// True when the object's record names one of the renamed records.
    bool namesRenamed(const AcDbObject& object);
    /// Records that got another name: who names them is written anew although unchanged.
    /// @param layers  new names of layers by their old ones in capitals, for extended data.
    void setRenamed(std::unordered_set<AcDbStub*> records,
                    std::map<std::wstring, std::wstring> layers) {
        merge_.setRenamed(std::move(records));
        xdata_.setRenamedLayers(std::move(layers));
    }

    GroupWriter& groups() { return groups_; }

private:
    /// What the head of a record tells besides the values of the object itself.
    struct Identity {
        std::string_view name;
        std::uint64_t handle = 0; // 0: the record states none
        AcDbObjectId owner;       // null when the record is not to name it
        AcDbObjectId dictionary;
        const AcDbObject* reactorsOf = nullptr; // null keeps those of the file
        bool keepsOwner = false;                // as the file states it, if it does
        bool keepsDictionary = false;           // likewise
        bool inPaper = false;
        bool asRead = false; // Values that it only has in the file are those of the record.
        bool cloned = false; // The file's record is another object's.
    };

    Identity identityOf(const AcDbObject& object);
    Identity identityOf(const AcDbBlockTableRecord& block, const BlockEdge& edge);
    bool inPaper(AcDbObjectId owner);

    void putNew(const DxfOutput& now);
    void writeUnmerged(const AcDbObject& object, const DxfOutput& now, const DataItems* items);
    void putTail(const DataItems* items, const DxfOutput& now, const DxfOutput* before);
    const FilePart* filePartLike(std::string_view name, std::size_t earlier) const;
    void beginMerge();
    /// Puts all but the tail where the file itself tells what changed; else nothing.
    bool putInStep(const DxfOutput& now);
    void putMerged(const DxfOutput& now, const DxfOutput& before);
    bool keepsHead() const;
    void putHead();
    void putParts(const DxfOutput& now, const DxfOutput& before);
    void putFlattened(const DxfOutput& now, const DxfOutput& before);
    void putNewPart(const DxfOutPart& part, std::span<const DxfOutTag> tags);
    void dropPromise(const DxfOutput& now);
    void takePlace(const FilePart& part, PartValues& values);

    void putRole(GroupRole role);
    bool statesReactors() const;
    void putBraces(std::size_t open);
    void putMissing();
    void putHandle();
    void putOwner();
    void putReactors();
    void putDictionary();
    void putTag(const DxfOutTag& tag);
    void mentionApplication(std::wstring_view name);

    const DxfSource* source_;
    RecordSurroundings& surroundings_;
    GroupWriter groups_;
    DxfOutFiler now_;
    DxfOutFiler before_;
    std::optional<RecordGroups> file_;
    ScratchFiler scratch_;
    RecordLayout layout_;
    PartMerge merge_;
    XdataMerge xdata_;
    PutMore putMore_;
    Identity identity_;    // of the record at hand
    bool merging_ = false; // it with one of the file
    // The last owner that was asked about.
    AcDbObjectId lastOwner_;
    bool lastInPaper_ = false;
};

} // namespace headless
