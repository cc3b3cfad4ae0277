// Parts of an entity that are objects of their own: vertices, attributes, the mark at their end.
#pragma once

#include <memory>
#include <vector>

#include "db/object_iterator.h"

namespace headless {

/// An entity's parts in order. They belong to their owner until it enters a database; then each is
/// resident itself and is reached by its id.
class Subentities {
public:
    Subentities() = default;
    ~Subentities();
    Subentities(const Subentities&) = delete;
    Subentities& operator=(const Subentities&) = delete;

    std::size_t size() const { return parts_.size(); }
    AcDbEntity* at(std::size_t index) const { return parts_[index].entity(); }
    AcDbObjectId idAt(std::size_t index) const;
    /// Index of the part, or size() when it is none.
    std::size_t find(const AcDbEntity* part) const;

    /// Adds a part before `index`, taking it over; enters it in the database that `owner` is in.
    Acad::ErrorStatus insert(AcDbEntity& owner, std::size_t index, AcDbEntity* part);
    Acad::ErrorStatus append(AcDbEntity& owner, AcDbEntity* part) {
        return insert(owner, parts_.size(), part);
    }
    /// Enters all parts in the database that the owner has just entered.
    void enterDatabase(AcDbEntity& owner);
    void erase(bool erasing);

    /// An iterator that must not outlive the owner.
    AcDbObjectIterator* newIterator() const;
    /// Opens a part by its id. eInvalidInput when it is none of these.
    Acad::ErrorStatus open(AcDbEntity*& part, AcDbObjectId id, AcDb::OpenMode mode,
                           bool openErased) const;

    /// Calls `look` with each part that is not erased, whether or not it is open.
    template <class Part, class Look>
    void forEach(Look look) const {
        for (const Reference& reference : parts_) {
            const AcDbEntity* const entity = reference.entity();
            if (entity == nullptr || entity->isErased()) continue;
            if (const auto* part = dynamic_cast<const Part*>(entity)) look(*part);
        }
    }

private:
    /// A part by its id when resident, else by the pointer that owns it.
    class Reference {
    public:
        explicit Reference(AcDbEntity* owned) : owned_(owned) {}
        explicit Reference(AcDbObjectId id) : id_(id) {}
        AcDbEntity* entity() const;
        AcDbObjectId id() const { return id_; }
        AcDbEntity* owned() const { return owned_; }

    private:
        AcDbObjectId id_;
        AcDbEntity* owned_ = nullptr;
    };

    std::vector<Reference> parts_;
};

/// An entity whose record in a drawing file is followed by records of its parts.
class SubentityOwner {
public:
    virtual ~SubentityOwner() = default;

    /// Takes over a part read from a file. eIllegalEntityType, leaving it to the caller, for a kind
    /// that the owner has no place for.
    virtual Acad::ErrorStatus adoptSubentity(AcDbEntity* part) = 0;
    virtual const Subentities& subentities() const = 0;
    /// Called when the owner has entered a database, so that its parts follow it.
    virtual void enterSubentities() = 0;
};

} // namespace headless
