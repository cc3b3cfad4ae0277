#include "db/id_mapping.h"

#include <algorithm>

ACRX_CONS_DEFINE_MEMBERS(AcDbIdMapping, AcRxObject, 0)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbIdMappingIter, AcRxObject)

bool AcDbIdMapping::assign(const AcDbIdPair& pair) {
    if (pair.key().isNull()) return false;
    const auto [known, isNew] = byKey_.try_emplace(pair.key(), pairs_.size());
    if (isNew)
        pairs_.push_back(pair);
    else
        pairs_[known->second] = pair;
    return true;
}

bool AcDbIdMapping::compute(AcDbIdPair& pair) const {
    const auto known = byKey_.find(pair.key());
    if (known == byKey_.end()) return false;
    pair = pairs_[known->second];
    return true;
}

bool AcDbIdMapping::del(AcDbObjectId key) {
    const auto known = byKey_.find(key);
    if (known == byKey_.end()) return false;
    pairs_[known->second] = {};
    byKey_.erase(known);
    return true;
}

AcDbObjectId AcDbIdMapping::find(AcDbObjectId key) const {
    const auto known = byKey_.find(key);
    return known == byKey_.end() ? AcDbObjectId() : pairs_[known->second].value();
}

Acad::ErrorStatus AcDbIdMapping::destDb(AcDbDatabase*& db) const {
    db = to_;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbIdMapping::setDestDb(AcDbDatabase* db) {
    to_ = db;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbIdMapping::origDb(AcDbDatabase*& db) const {
    db = from_;
    return Acad::eOk;
}

void AcDbIdMapping::begin(AcDbDatabase& from, AcDbDatabase& to,
                          AcDb::DuplicateRecordCloning duplicates) {
    from_ = &from;
    to_ = &to;
    duplicates_ = duplicates;
}

void AcDbIdMappingIter::start() {
    pairs_.clear();
    position_ = 0;
    std::copy_if(mapping_.pairs().begin(), mapping_.pairs().end(), std::back_inserter(pairs_),
                 [](const AcDbIdPair& pair) { return !pair.key().isNull(); });
}

bool AcDbIdMappingIter::getMap(AcDbIdPair& pair) const {
    if (done()) return false;
    pair = pairs_[position_];
    return true;
}

bool AcDbIdMappingIter::next() {
    if (!done()) ++position_;
    return !done();
}
