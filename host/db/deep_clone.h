// Clones of objects together with what they own, within a drawing or into another one.
#pragma once

#include "db/id_mapping.h"

class AcDbObject;
class AcDbSymbolTableRecord;

namespace headless {

/// Clones objects into owners and tells of every clone in a mapping.
///
/// What an object owns comes along: vertices and attributes, its extension dictionary, the entries
/// of a dictionary, the contents of a block. Into another drawing, what its clones need comes along
/// too (layers, linetypes, styles, blocks), unless that drawing has a record of the name.
class DeepCloner {
public:
    explicit DeepCloner(AcDbIdMapping& mapping);

    /// What keeps the object from being cloned; nothing is changed.
    Acad::ErrorStatus checkSource(AcDbObjectId source) const;
    /// The same, and what keeps the owner from listing the clone.
    Acad::ErrorStatus check(AcDbObjectId source, AcDbObjectId owner) const;
    /// Where objects like that stand in the drawing of the clones; null when it has no such place.
    AcDbObjectId placeFor(const AcDbObject& source) const;
    /// Clones an object that check() passed; nothing when it was cloned already. As the owner's
    /// refusal to be opened or to take it.
    Acad::ErrorStatus clone(AcDbObjectId source, AcDbObjectId owner);
    /// Clones an object that checkSource() passed for an owner that refers to it by itself.
    Acad::ErrorStatus cloneOwned(AcDbObjectId source, AcDbObjectId owner);
    /// Makes the clones refer to each other, and brings along what they need.
    void translate();

private:
    /// An owned object that waits for being cloned, so that no depth of nesting needs a stack.
    struct Owned {
        AcDbObjectId source;
        AcDbObjectId owner; // the clone of its owner
        enum class Place { kExtension, kEntry, kBlock } place;
    };

    bool isForeign() const { return from_ != to_; }
    /// Enters a clone in its owner and notes it, or deletes it.
    Acad::ErrorStatus enter(std::unique_ptr<AcDbObject> clone, const AcDbObject& source,
                            AcDbObjectId owner, bool primary);
    /// False, with the clone deleted, when it cannot be.
    bool enterOwned(std::unique_ptr<AcDbObject> clone, const Owned& owned);
    void note(const AcDbObject& source, AcDbObjectId clone, bool primary);
    void queueOwned(const AcDbObject& source, AcDbObjectId clone);
    void cloneQueued();

    void translate(const AcDbIdPair& pair);
    void translateData(const AcDbObject& source, AcDbObject& clone);
    /// Finds or makes what stands for an object of the other drawing.
    void bringAlong(AcDbObjectId id);
    Acad::ErrorStatus bringRecord(const AcDbSymbolTableRecord& record, bool primary);
    void replaceRecord(const AcDbSymbolTableRecord& record, AcDbObjectId existing);
    void bringEntry(const AcDbObject& object);
    AcDbObjectId counterpart(AcDbObjectId dictionary, int depth) const;
    void registerApplication(const std::wstring& name);

    AcDbIdMapping& mapping_;
    AcDbDatabase* from_ = nullptr;
    AcDbDatabase* to_ = nullptr;
    std::vector<Owned> queue_;
};

} // namespace headless
