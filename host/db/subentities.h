// Parts of an entity that are objects of their own: vertices, attributes, the mark at their end.
#pragma once

#include <memory>
#include <vector>

#include "db/object_data.h"
#include "db/object_iterator.h"
#include "db/open.h"
#include "db/residence.h"

class AcDbSequenceEnd;

namespace headless {

/// An entity's parts in order. They belong to their owner until it enters a database; then each is
/// resident itself and is reached by its id.
class Subentities {
public:
    Subentities() = default;
    ~Subentities();
    Subentities(const Subentities&) = delete;
    /// Lists the same resident parts; parts that are not resident are cloned.
    Subentities& operator=(const Subentities& other);
    /// Puts a new part for each in its place that is not erased, as a clone of their owner needs
    /// it.
    void replaceByClones();

    /// Adds a new part before `index`, taking it over. When `owner` is resident the part becomes so
    /// and stays open for writing, else it stays reachable by its pointer.
    Acad::ErrorStatus insert(AcDbEntity& owner, std::size_t index, AcDbEntity* part);
    Acad::ErrorStatus append(AcDbEntity& owner, AcDbEntity* part) {
        return insert(owner, parts_.size(), part);
    }
    /// As append for resident owners only, with the new part's id; eNotInDatabase otherwise.
    Acad::ErrorStatus append(AcDbEntity& owner, AcDbEntity* part, AcDbObjectId& id);
    /// Adds a part read from a file to its resident owner; it becomes resident, closed and
    /// unchanged. A sequence end stands beside the parts.
    void admit(AcDbEntity& owner, std::unique_ptr<AcDbEntity> part, Adesk::UInt64 handle);
    /// Makes all parts resident in the database that the owner has just entered.
    void enterDatabase(AcDbEntity& owner);
    void erase(bool erasing);
    void reverse();

    /// Index of the part, or size() when it is none.
    std::size_t find(const AcDbEntity* part) const;
    std::size_t size() const { return parts_.size(); }
    AcDbObjectId idAt(std::size_t index) const { return parts_[index].id; }
    AcDbEntity* at(std::size_t index) const { return parts_[index].entity(); }

    /// An iterator that must not outlive the owner.
    AcDbObjectIterator* newIterator() const;

    /// Opens a part by its id. eInvalidInput, with a null part, when it is none of these.
    template <class T>
    Acad::ErrorStatus open(T*& part, AcDbObjectId id, AcDb::OpenMode mode, bool openErased) const {
        part = nullptr;
        if (!holds(id)) return Acad::eInvalidInput;
        return acdbOpenObject(part, id, mode, openErased);
    }
    /// The mark behind the parts; null when the owner's record had none.
    AcDbObjectId endId() const { return end_; }
    Acad::ErrorStatus openSequenceEnd(AcDbSequenceEnd*& end, AcDb::OpenMode mode) const;

    /// Calls `look` with each part of the kind that is not erased, whether or not it is open.
    template <class T, class Look>
    void forEach(Look look) const {
        for (const Part& part : parts_) {
            AcDbEntity* const entity = part.entity();
            if (entity == nullptr || entity->isErased()) continue;
            if (T* const typed = T::cast(entity)) look(*typed);
        }
    }

    /// Calls `apply`, which changes the part, with each part of the kind, erased ones too.
    template <class T, class Apply>
    void change(Apply apply) {
        for (const Part& part : parts_) {
            T* const typed = T::cast(part.entity());
            if (typed == nullptr) continue;
            ObjectData::markChanged(*typed);
            apply(*typed);
        }
    }

private:
    /// By its id once resident, until then by the pointer that owns it.
    struct Part {
        AcDbObjectId id;
        AcDbEntity* owned = nullptr;
        AcDbEntity* entity() const {
            return owned != nullptr ? owned : Residence::peek<AcDbEntity>(id);
        }
    };

    bool holds(AcDbObjectId id) const;
    void clear();
    static AcDbEntity* cloneOf(const AcDbEntity& part);

    std::vector<Part> parts_;
    AcDbObjectId end_;
};

/// An entity whose record in a drawing file is followed by records of its parts.
class SubentityOwner {
public:
    virtual ~SubentityOwner() = default;

    /// True when parts of this kind may follow the owner's record: its vertices, its attributes,
    /// and the mark at their end.
    virtual bool takesSubentity(const AcDbEntity& part) const = 0;
    virtual Subentities& subentities() = 0;
};

} // namespace headless
