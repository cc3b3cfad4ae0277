#include "db/subentities.h"

#include <algorithm>

#include "db/object_state.h"
#include "db/sequence_end.h"

namespace headless {

namespace {

/// Stands on a part, or before the first, or behind the last.
class SubentityIterator : public AcDbObjectIterator {
public:
    explicit SubentityIterator(const Subentities& parts) : parts_(parts) { settle(1, true); }

    AcDbEntity* entity() const override {
        return done() || !objectId().isNull() ? nullptr : parts_.at(index());
    }
    AcDbObjectId objectId() const override {
        return done() ? AcDbObjectId() : parts_.idAt(index());
    }
    bool done() const override { return position_ < 0 || index() >= parts_.size(); }
    void start(bool atBeginning, bool skipErased) override {
        position_ = atBeginning ? 0 : static_cast<std::ptrdiff_t>(parts_.size()) - 1;
        settle(atBeginning ? 1 : -1, skipErased);
    }
    void step(bool backward, bool skipErased) override {
        const std::ptrdiff_t direction = backward ? -1 : 1;
        position_ += direction;
        settle(direction, skipErased);
    }
    Acad::ErrorStatus seek(AcDbObjectId id) override {
        return seek(Residence::peek<AcDbEntity>(id));
    }
    Acad::ErrorStatus seek(const AcDbEntity* part) override {
        const std::size_t found = parts_.find(part);
        if (part == nullptr || found == parts_.size()) return Acad::eInvalidInput;
        position_ = static_cast<std::ptrdiff_t>(found);
        return Acad::eOk;
    }

private:
    std::size_t index() const { return static_cast<std::size_t>(position_); }

    /// Passes over deleted parts, and over erased ones when they are not wanted.
    void settle(std::ptrdiff_t direction, bool skipErased) {
        while (!done()) {
            const AcDbEntity* const part = parts_.at(index());
            if (part != nullptr && !(skipErased && part->isErased())) return;
            position_ += direction;
        }
    }

    const Subentities& parts_;
    std::ptrdiff_t position_ = 0;
};

} // namespace

Subentities::~Subentities() { clear(); }

void Subentities::clear() {
    for (const Part& part : parts_)
        delete part.owned;
    parts_.clear();
}

Subentities& Subentities::operator=(const Subentities& other) {
    if (this == &other) return *this;
    clear();
    parts_ = other.parts_;
    end_ = other.end_;
    for (Part& part : parts_) {
        if (part.owned != nullptr) part.owned = cloneOf(*part.owned);
    }
    return *this;
}

void Subentities::replaceByClones() {
    std::vector<Part> clones;
    for (const Part& part : parts_) {
        const AcDbEntity* const entity = part.entity();
        if (entity == nullptr || entity->isErased()) continue;
        clones.push_back({{}, part.owned != nullptr ? part.owned : cloneOf(*entity)});
    }
    parts_ = std::move(clones);
    end_.setNull();
}

AcDbEntity* Subentities::cloneOf(const AcDbEntity& part) {
    return static_cast<AcDbEntity*>(ObjectState::cloneOf(part).release());
}

Acad::ErrorStatus Subentities::insert(AcDbEntity& owner, std::size_t index, AcDbEntity* part) {
    if (part == nullptr) return Acad::eNullObjectPointer;
    if (part->database() != nullptr) return Acad::eAlreadyInDb;
    owner.assertWriteEnabled();
    Part entry{{}, part};
    if (AcDbDatabase* const db = owner.database(); db != nullptr) {
        const Acad::ErrorStatus status = Residence::enter(*db, *part, owner.objectId());
        if (status != Acad::eOk) return status;
        entry = {part->objectId(), nullptr};
    }
    parts_.insert(parts_.begin() + static_cast<std::ptrdiff_t>(index), entry);
    return Acad::eOk;
}

Acad::ErrorStatus Subentities::append(AcDbEntity& owner, AcDbEntity* part, AcDbObjectId& id) {
    if (owner.database() == nullptr) return Acad::eNotInDatabase;
    const Acad::ErrorStatus status = append(owner, part);
    if (status == Acad::eOk) id = part->objectId();
    return status;
}

void Subentities::admit(AcDbEntity& owner, std::unique_ptr<AcDbEntity> part, Adesk::UInt64 handle) {
    const bool isEnd = AcDbSequenceEnd::cast(part.get()) != nullptr;
    const AcDbObjectId id =
        Residence::admit(*owner.database(), std::move(part), owner.objectId(), handle);
    if (isEnd)
        end_ = id;
    else
        parts_.push_back({id, nullptr});
}

void Subentities::enterDatabase(AcDbEntity& owner) {
    for (Part& part : parts_) {
        if (part.owned == nullptr) continue;
        if (Residence::enter(*owner.database(), *part.owned, owner.objectId()) != Acad::eOk)
            continue;
        part.id = part.owned->objectId();
        part.owned->close();
        part.owned = nullptr;
    }
}

void Subentities::erase(bool erasing) {
    for (const Part& part : parts_) {
        AcDbEntity* entity = nullptr;
        if (acdbOpenObject(entity, part.id, AcDb::kForWrite, true, true) != Acad::eOk) continue;
        if (entity->isErased() != erasing) entity->erase(erasing);
        entity->close();
    }
}

void Subentities::reverse() { std::reverse(parts_.begin(), parts_.end()); }

std::size_t Subentities::find(const AcDbEntity* part) const {
    const auto found = std::find_if(parts_.begin(), parts_.end(),
                                    [part](const Part& p) { return p.entity() == part; });
    return static_cast<std::size_t>(found - parts_.begin());
}

bool Subentities::holds(AcDbObjectId id) const {
    return !id.isNull() && std::any_of(parts_.begin(), parts_.end(),
                                       [id](const Part& part) { return part.id == id; });
}

AcDbObjectIterator* Subentities::newIterator() const { return new SubentityIterator(*this); }

Acad::ErrorStatus Subentities::openSequenceEnd(AcDbSequenceEnd*& end, AcDb::OpenMode mode) const {
    return acdbOpenObject(end, end_, mode);
}

} // namespace headless
