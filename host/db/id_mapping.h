// Which objects were cloned into which.
#pragma once

#include <unordered_map>
#include <vector>

#include "db/dictionary.h"
#include "db/object_id.h"
#include "rx/object.h"

class AcDbDatabase;
class AcDbIdMappingIter;

/// One original and what stands for it.
class AcDbIdPair {
public:
    AcDbIdPair() = default;
    AcDbIdPair(AcDbObjectId key, AcDbObjectId value, bool isCloned, bool isPrimary = false,
               bool isOwnerXlated = true)
        : key_(key), value_(value), cloned_(isCloned), primary_(isPrimary),
          ownerXlated_(isOwnerXlated) {}

    AcDbObjectId key() const { return key_; }
    AcDbObjectId value() const { return value_; }
    /// False when the value was there before.
    bool isCloned() const { return cloned_; }
    /// True for what the caller asked for rather than what came along.
    bool isPrimary() const { return primary_; }
    bool isOwnerXlated() const { return ownerXlated_; }
    void setKey(AcDbObjectId key) { key_ = key; }
    void setValue(AcDbObjectId value) { value_ = value; }
    void setCloned(bool cloned) { cloned_ = cloned; }
    void setPrimary(bool primary) { primary_ = primary; }
    void setOwnerXlated(bool translated) { ownerXlated_ = translated; }

private:
    AcDbObjectId key_;
    AcDbObjectId value_;
    bool cloned_ = false;
    bool primary_ = false;
    bool ownerXlated_ = true;
};

class AcDbIdMapping : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbIdMapping);

    AcDbIdMapping() = default;

    /// Replaces the pair of the same key.
    bool assign(const AcDbIdPair& pair);
    /// Completes a pair of which the key is set; false when there is none.
    bool compute(AcDbIdPair& pair) const;
    /// False when there is none.
    bool del(AcDbObjectId key);

    Acad::ErrorStatus destDb(AcDbDatabase*& db) const;
    Acad::ErrorStatus setDestDb(AcDbDatabase* db);
    Acad::ErrorStatus origDb(AcDbDatabase*& db) const;
    AcDb::DuplicateRecordCloning duplicateRecordCloning() const { return duplicates_; }

    // The host's own.

    /// In the order they were assigned; a deleted one has no key.
    const std::vector<AcDbIdPair>& pairs() const { return pairs_; }
    /// What stands for the object; null when nothing does.
    AcDbObjectId find(AcDbObjectId key) const;
    void begin(AcDbDatabase& from, AcDbDatabase& to, AcDb::DuplicateRecordCloning duplicates);
    /// How many of the pairs had their references translated.
    std::size_t translated() const { return translated_; }
    void setTranslated(std::size_t count) { translated_ = count; }

private:
    std::vector<AcDbIdPair> pairs_;
    std::unordered_map<AcDbObjectId, std::size_t> byKey_;
    std::size_t translated_ = 0;
    AcDbDatabase* from_ = nullptr;
    AcDbDatabase* to_ = nullptr;
    AcDb::DuplicateRecordCloning duplicates_ = AcDb::kDrcNotApplicable;
};

/// Walks over the pairs that a mapping has when the walk starts.
class AcDbIdMappingIter : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbIdMappingIter);

    explicit AcDbIdMappingIter(const AcDbIdMapping& mapping) : mapping_(mapping) { start(); }

    void start();
    /// False beyond the last pair.
    bool getMap(AcDbIdPair& pair) const;
    bool next();
    bool done() const { return position_ >= pairs_.size(); }

private:
    const AcDbIdMapping& mapping_;
    std::vector<AcDbIdPair> pairs_;
    std::size_t position_ = 0;
};
