// Groups: entities that belong together, under a name in the dictionary ACAD_GROUP.
#pragma once

#include <memory>
#include <vector>

#include "db/id_array.h"
#include "db/object.h"

class AcDbDictionary;
class AcDbEntity;
class AcDbGroupIterator;
class AcString;

/// An ordered list of entities; one may be in many groups. Each member has the group among its
/// persistent reactors.
///
/// Erased members are passed over and count again once they are brought back; positions count those
/// that are there. Members are taken in only while the group itself is in a database.
class AcDbGroup : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbGroup);

    AcDbGroup() = default;
    explicit AcDbGroup(const ACHAR* description, bool selectable = true);

    /// The group's key in its dictionary; empty outside one. A copy that the caller frees.
    ACHAR* name() const;
    Acad::ErrorStatus getName(AcString& name) const;
    /// eNotInDatabase while the group is in no dictionary, eInvalidKey, eDuplicateKey.
    Acad::ErrorStatus setName(const ACHAR* name);
    const ACHAR* description() const { return look(description_).c_str(); }
    Acad::ErrorStatus setDescription(const ACHAR* description);

    /// True when picking one member selects them all.
    bool isSelectable() const { return look(selectable_); }
    Acad::ErrorStatus setSelectable(bool selectable) { return change(selectable_, selectable); }
    /// True for a group that the user gave no name: its key is of the kind "*A1".
    bool isAnonymous() const { return look(anonymous_); }
    /// Gives the group a free name of that kind. eNotInDatabase as for setName.
    Acad::ErrorStatus setAnonymous();

    Adesk::UInt32 numEntities() const;
    bool has(const AcDbEntity* entity) const;
    /// The members in order; returns how many.
    Adesk::UInt32 allEntityIds(AcDbObjectIdArray& ids) const;
    /// The caller deletes it.
    AcDbGroupIterator* newIterator() const;
    /// eInvalidInput when the object is no member.
    Acad::ErrorStatus getIndex(AcDbObjectId id, Adesk::UInt32& index) const;

    // Refusals: eNotInDatabase, eNullObjectId, eWrongDatabase, eNotAnEntity, and eDuplicateKey for
    // what is a member already. Of an array either all are taken or none.
    Acad::ErrorStatus append(AcDbObjectId id);
    Acad::ErrorStatus append(const AcDbObjectIdArray& ids);
    Acad::ErrorStatus prepend(AcDbObjectId id);
    Acad::ErrorStatus prepend(const AcDbObjectIdArray& ids);
    /// Also eInvalidIndex beyond the number of members.
    Acad::ErrorStatus insertAt(Adesk::UInt32 index, AcDbObjectId id);
    Acad::ErrorStatus insertAt(Adesk::UInt32 index, const AcDbObjectIdArray& ids);

    /// eInvalidInput, removing none, when one is no member.
    Acad::ErrorStatus remove(AcDbObjectId id);
    Acad::ErrorStatus remove(const AcDbObjectIdArray& ids);
    /// eInvalidIndex.
    Acad::ErrorStatus removeAt(Adesk::UInt32 index);
    /// Puts one entity in the place of a member.
    Acad::ErrorStatus replace(AcDbObjectId oldId, AcDbObjectId newId);
    Acad::ErrorStatus reverse();
    Acad::ErrorStatus clear();

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    void forEachReference(const headless::ReferenceVisitor& visit) override;

    /// All members in order, erased and absent ones too.
    const std::vector<AcDbObjectId>& memberIds() const { return members_; }

protected:
    Acad::ErrorStatus subErase(bool erasing) override;

private:
    using Position = std::vector<AcDbObjectId>::iterator;

    AcDbDictionary* dictionary() const;
    /// The place in the list of the member that has `index` present ones before it.
    Position place(Adesk::UInt32 index);
    Acad::ErrorStatus insert(Position at, const AcDbObjectIdArray& ids);
    Acad::ErrorStatus checkNew(const AcDbObjectIdArray& ids) const;
    Acad::ErrorStatus rename(const ACHAR* name, bool anonymous);
    bool contains(AcDbObjectId id) const;

    std::wstring description_;
    std::vector<AcDbObjectId> members_;
    bool selectable_ = true;
    bool anonymous_ = false;
};

/// Walks over the members that were there when it was made, passing over those erased meanwhile.
class AcDbGroupIterator : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbGroupIterator);

    explicit AcDbGroupIterator(AcDbObjectIdArray members) : members_(std::move(members)) {}

    bool done() const { return position_ >= members_.length(); }
    /// False when it has gone beyond the last member.
    bool next();
    /// Null beyond the last member.
    AcDbObjectId objectId() const;
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDb::OpenMode mode) const;

private:
    AcDbObjectIdArray members_;
    int position_ = 0;
};
