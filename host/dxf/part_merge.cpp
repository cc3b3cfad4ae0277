#include "dxf/part_merge.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>

#include "db/dxf_code.h"
#include "db/residence.h"
#include "db/symbol_table.h"

namespace headless {
namespace {

constexpr int kSubclassMarker = 100;
constexpr int kPaperSpace = 67;
constexpr int kTrueColor = 420;
constexpr std::string_view kEntity = "AcDbEntity";

bool isHandleCode(int code) { return code >= 320 && code <= 369; }

bool isAngleCode(int code) { return code >= AcDb::kDxfAngle && code <= AcDb::kDxfAngle + 8; }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool areDigits(const char* at, const char* end) {
    // Eight at a time: digits are the bytes that begin with the half 3 and still do with 6 added.
    constexpr std::uint64_t kHighHalves = 0xF0F0F0F0F0F0F0F0;
    constexpr std::uint64_t kThrees = 0x3030303030303030;
    constexpr std::uint64_t kSixes = 0x0606060606060606;
    constexpr std::ptrdiff_t kWord = sizeof kThrees;
    if (end - at < kWord) return std::all_of(at, end, isDigit);
    const auto isWordOfDigits = [](const char* begin) {
        std::uint64_t word = 0;
        std::memcpy(&word, begin, sizeof word);
        return (word & kHighHalves) == kThrees && ((word + kSixes) & kHighHalves) == kThrees;
    };
    for (; end - at > kWord; at += kWord)
        if (!isWordOfDigits(at)) return false;
    return isWordOfDigits(end - kWord);
}

/// True for a zero as nearly all are written, of all numbers the most frequent.
bool isPlainZero(const DxfTag& group) {
    if (group.kind != DxfTag::Kind::kText) return false;
    const std::string_view text(group.bytes, group.length);
    return text == "0.0" || text == "0";
}

/// The digits before the point of a number written without an exponent, as a number; -1 for other
/// texts and for long ones.
std::int64_t wholePart(const DxfTag& group) {
    constexpr std::ptrdiff_t kMostDigits = 8;
    if (group.kind != DxfTag::Kind::kText) return -1;
    const char* at = group.bytes;
    const char* const end = at + group.length;
    while (at != end && *at == ' ')
        ++at;
    if (at != end && *at == '-') ++at;
    const char* const digits = at;
    std::int64_t whole = 0;
    while (at != end && isDigit(*at) && at - digits < kMostDigits)
        whole = whole * 10 + *at++ - '0';
    if (at == digits || (at != end && *at++ != '.')) return -1;
    return areDigits(at, end) ? whole : -1;
}

/// The same as below where the digits before the point tell it, which needs no exact number.
bool isPlainlyOther(const DxfTag& group, double written) {
    constexpr double kLargest = 1e8;
    const double size = std::abs(written);
    const std::int64_t stated = size < kLargest ? wholePart(group) : -1;
    return stated >= 0 && std::abs(stated - static_cast<std::int64_t>(size)) > 1;
}

/// True when the file states another number than the object writes, with neither rounding nor the
/// sense of a radius or an angle between them.
bool isOtherNumber(int code, double stated, double written) {
    constexpr double kRounding = 1e-9;
    constexpr double kFullTurn = 360.0;
    const double slack = kRounding * std::max({std::abs(stated), std::abs(written), 1.0});
    if (std::abs(stated - written) <= slack || std::abs(stated + written) <= slack) return false;
    return !isAngleCode(code) || std::abs(std::remainder(stated - written, kFullTurn)) > slack;
}

/// An angle of the file as an object writes it again, which may have other last digits.
double writtenAngle(double degrees) { return degreesOf(degrees * std::numbers::pi / 180.0); }

bool contains(std::span<const std::int16_t> codes, int code) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

bool isNormalCode(int code) { return code >= AcDb::kDxfNormalX && code <= 239; }

bool isMarker(const DxfOutTag& tag) {
    return tag.code == kSubclassMarker && tag.kind == DxfOutTag::Kind::kName;
}

} // namespace

PartMerge::PartMerge(GroupWriter& groups, PutRole putRole, PutTag putTag, IsLost isLost)
    : groups_(groups), putRole_(std::move(putRole)), putTag_(std::move(putTag)),
      isLost_(std::move(isLost)) {}

void PartMerge::begin(const RecordGroups& file, const RecordLayout& layout,
                      const TextDecoder& decoder, bool anyLost) {
    file_ = &file;
    layout_ = &layout;
    decoder_ = &decoder;
    anyLost_ = anyLost;
    ofEntity_ = layout.hasSubclasses() && layout.parts()[1].name == kEntity;
}

PartMerge::CodeUse& PartMerge::use(int code) {
    CodeUse& known = uses_[static_cast<std::size_t>(code - kFirstGroupCode)];
    if (known.epoch != epoch_) {
        known = {};
        known.epoch = epoch_;
    }
    return known;
}

bool PartMerge::sameTag(const DxfOutTag& a, const DxfOutTag& b) const {
    if (a.code != b.code || a.kind != b.kind) return false;
    switch (a.kind) {
    case DxfOutTag::Kind::kText:
        return a.text() == b.text();
    case DxfOutTag::Kind::kName:
    case DxfOutTag::Kind::kBytes:
        return a.chunk() == b.chunk();
    case DxfOutTag::Kind::kReal:
        return a.real == b.real;
    case DxfOutTag::Kind::kFlags:
    case DxfOutTag::Kind::kInteger:
        return a.integer == b.integer;
    case DxfOutTag::Kind::kNumber:
        return a.number == b.number;
    case DxfOutTag::Kind::kHandle:
        return a.stub == b.stub;
    case DxfOutTag::Kind::kSymbol:
        return a.stub == b.stub && (renamed_.empty() || !renamed_.contains(a.stub));
    }
    return false;
}

bool PartMerge::same(std::span<const DxfOutTag> a, std::span<const DxfOutTag> b) const {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [this](const DxfOutTag& x, const DxfOutTag& y) { return sameTag(x, y); });
}

/// True when the group of the file has exactly that value.
bool PartMerge::says(const DxfTag& group, const DxfOutTag& tag) const {
    if (group.code != tag.code) return false;
    switch (tag.kind) {
    case DxfOutTag::Kind::kText:
        return saysText({group.bytes, group.length}, tag.text());
    case DxfOutTag::Kind::kName:
        return group.text() == tag.chunk();
    case DxfOutTag::Kind::kReal:
        return group.real() == tag.real;
    case DxfOutTag::Kind::kFlags:
        return (group.integer() & std::int64_t{tag.mask}) == tag.integer;
    case DxfOutTag::Kind::kInteger:
        return group.integer() == tag.integer;
    case DxfOutTag::Kind::kNumber:
        return group.handle() == tag.number;
    case DxfOutTag::Kind::kHandle:
        return group.handle() == tag.id().handle();
    case DxfOutTag::Kind::kSymbol:
        return renamed_.empty() && namesRecord(group, tag.id());
    case DxfOutTag::Kind::kBytes:
        break;
    }
    return false;
}

bool PartMerge::namesRecord(const DxfTag& group, AcDbObjectId id) const {
    const auto* const record = Residence::peek<AcDbSymbolTableRecord>(id);
    if (record == nullptr) return false;
    return saysText(group.text(), record->nameOf());
}

bool PartMerge::saysText(std::string_view bytes, std::wstring_view text) const {
    // Most are plain letters, which mean themselves in every code page.
    const auto means = [](char byte, wchar_t letter) {
        return static_cast<unsigned char>(byte) < 0x80 && byte != '\\' &&
               static_cast<wchar_t>(byte) == letter;
    };
    if (std::equal(bytes.begin(), bytes.end(), text.begin(), text.end(), means)) return true;
    return decoder_->decode(bytes) == text;
}

bool PartMerge::statesCode(const FilePart& part, int code) const {
    for (std::size_t at = part.begin; at < part.end; ++at)
        if ((*file_)[at].code == code) return true;
    return false;
}

/// True for a value that the file would state if the object had had it. What all entities have is
/// written only where it is not the usual; of other values the file alone does not tell.
bool PartMerge::isNew(const FilePart& part, const DxfOutTag& tag) const {
    return part.name == kEntity && !statesCode(part, tag.code);
}

/// True when no way of reading the group makes the value, no number with decimals, that an entity
/// writes now.
bool PartMerge::surelyChanged(const FilePart& part, std::size_t at, const DxfOutTag& tag) const {
    constexpr int kColor = 62;
    constexpr std::int64_t kMostColor = 256;
    if (part.name != kEntity) return false;
    if (tag.kind == DxfOutTag::Kind::kSymbol) return renamed_.empty();
    const DxfTag& group = (*file_)[at];
    // Next to a colour by its parts the index does not count.
    return tag.code == kColor && group.integer() > 0 && group.integer() <= kMostColor &&
           !statesCode(part, kTrueColor);
}

bool PartMerge::isModelled(std::size_t at, const PartValues& values) const {
    return layout_->role(at) == GroupRole::kOwn && contains(values.codes, (*file_)[at].code);
}

/// What the file alone tells of a group and the value that the object writes for it.
PartMerge::Said PartMerge::compare(const FilePart& part, std::size_t at,
                                   const DxfOutTag& tag) const {
    const DxfTag& group = (*file_)[at];
    if (tag.kind != DxfOutTag::Kind::kReal) {
        if (says(group, tag)) return Said::kSame;
        return surelyChanged(part, at, tag) ? Said::kOther : Said::kUnclear;
    }
    // A number of few digits is read as soon as they are looked at.
    constexpr std::uint32_t kFewDigits = 6;
    const bool maybeOther = ofEntity_ && !isNormalCode(tag.code);
    if (maybeOther && group.length > kFewDigits && !isAngleCode(tag.code) &&
        isPlainlyOther(group, tag.real))
        return Said::kOther;
    if (tag.real == 0.0 && isPlainZero(group)) return Said::kSame;
    const double stated = group.real();
    if (stated == tag.real || (isAngleCode(tag.code) && writtenAngle(stated) == tag.real))
        return Said::kSame;
    return maybeOther && isOtherNumber(tag.code, stated, tag.real) ? Said::kOther : Said::kUnclear;
}

bool PartMerge::putInStep(const FilePart& part, const PartValues& values) {
    if (values.whole || namesLost(part, values)) return false;
    std::size_t at = part.begin;
    std::size_t kept = at; // Groups from here on are still to be put.
    for (const DxfOutTag& tag : values.now) {
        const auto isNext = [&] {
            return (*file_)[at].code == tag.code && layout_->role(at) == GroupRole::kOwn;
        };
        while (at < part.end && !isNext() && !isModelled(at, values))
            ++at;
        const bool stated = at < part.end && isNext();
        const Said said = stated ? compare(part, at, tag) : Said::kOther;
        if (said == Said::kUnclear || (!stated && !isNew(part, tag))) return false;
        if (said == Said::kOther) {
            if (kept != at) keep(kept, at);
            putTag_(tag);
            kept = at + (stated ? 1 : 0);
        }
        at += stated ? 1 : 0;
    }
    // What the file states beyond that may have been dropped.
    for (; at < part.end; ++at)
        if (isModelled(at, values)) return false;
    keep(kept, part.end);
    return true;
}

bool PartMerge::sameAsFile(const FilePart& part, const PartValues& values) const {
    std::size_t at = part.begin;
    for (std::size_t i = 0; i < values.now.size(); ++i) {
        const DxfOutTag& tag = values.now[i];
        while (at < part.end && layout_->role(at) == GroupRole::kKept)
            ++at;
        if (at < part.end && says((*file_)[at], tag)) {
            ++at;
            continue;
        }
        // What the object wrote before went without saying.
        if (i >= values.before.size() || !sameTag(values.before[i], tag)) return false;
    }
    return at == part.end;
}

/// True when the part names objects that are gone by now.
bool PartMerge::namesLost(const FilePart& part, const PartValues& values) const {
    if (!anyLost_) return false;
    for (std::size_t at = part.begin; at < part.end; ++at) {
        const DxfTag& group = (*file_)[at];
        if (!isHandleCode(group.code) || layout_->role(at) != GroupRole::kOwn) continue;
        if (contains(values.codes, group.code) && isLost_(group.handle())) return true;
    }
    return false;
}

void PartMerge::keep(std::size_t begin, std::size_t end) {
    while (begin < std::min(end, layout_->plainFrom())) {
        const GroupRole role = layout_->role(begin);
        if (role == GroupRole::kOwn || role == GroupRole::kKept)
            groups_.buffer() += file_->bytes(begin, begin + 1);
        else if (role != GroupRole::kDropped)
            putRole_(role);
        ++begin;
    }
    if (begin < end) groups_.buffer() += file_->bytes(begin, end);
}

void PartMerge::merge(const FilePart& part, const PartValues& values) {
    if (values.whole) {
        mergeWhole(part, values);
        return;
    }
    const bool lost = namesLost(part, values);
    if (!values.newPlace && !lost && same(values.now, values.before))
        keep(part.begin, part.end);
    else
        mergeGroups(part, values, lost);
}

void PartMerge::mergeWhole(const FilePart& part, const PartValues& values) {
    const auto likeBefore = values.now.first(std::min(values.now.size(), values.before.size()));
    const bool unchanged = same(values.asRead ? likeBefore : values.now, values.before);
    if (unchanged || sameAsFile(part, values)) {
        keep(part.begin, part.end);
        return;
    }
    for (const DxfOutTag& tag : values.now) {
        if (isMarker(tag))
            keep(part.begin, part.begin + 1);
        else
            putTag_(tag);
    }
}

void PartMerge::learn(const FilePart& part, const PartValues& values) {
    ++epoch_;
    partBegin_ = part.begin;
    sameInFile_.assign(part.end - part.begin, kNone);
    for (std::size_t at = part.begin; at < part.end; ++at) {
        if (layout_->role(at) != GroupRole::kOwn) continue;
        CodeUse& known = use((*file_)[at].code);
        if (known.inFile++ == 0)
            known.nextInFile = at;
        else
            sameInFile_[known.lastInFile - partBegin_] = at;
        known.lastInFile = at;
    }
    sameBefore_.assign(values.before.size(), kNone);
    for (std::size_t at = 0; at < values.before.size(); ++at) {
        CodeUse& known = use(values.before[at].code);
        if (known.before++ == 0)
            known.nextBefore = at;
        else
            sameBefore_[known.lastBefore] = at;
        known.lastBefore = at;
    }
}

/// A value that went without saying and still does may be stated all the same: such groups stay.
/// Of a list that lost an object all groups are its own.
void PartMerge::chooseModelled(const PartValues& values, bool namesLost) {
    for (const std::int16_t code : values.codes)
        use(code).modelled = namesLost || use(code).before > 0;
    for (const DxfOutTag& tag : values.now)
        if (contains(values.codes, tag.code)) use(tag.code).modelled = true;
}

void PartMerge::findTrails(const FilePart& part) {
    trails_.clear();
    std::size_t anchor = kNone;
    bool first = true;
    for (std::size_t at = part.begin; at < part.end; ++at) {
        const CodeUse& known = use((*file_)[at].code);
        if (layout_->role(at) == GroupRole::kOwn && known.modelled) {
            // Where groups are left out at will, their number says nothing of whose they are.
            if (known.inFile != known.before) continue;
            anchor = at;
            first = known.nextInFile == at;
        } else if (!trails_.empty() && trails_.back().anchor == anchor &&
                   trails_.back().end == at) {
            trails_.back().end = at + 1;
        } else {
            trails_.push_back({anchor, at, at + 1, first});
        }
    }
}

void PartMerge::putTrails(std::size_t anchor) {
    // They are in the order of their anchors, none (one below 0) first.
    auto trail = std::lower_bound(
        trails_.begin(), trails_.end(), anchor + 1,
        [](const Trail& known, std::size_t wanted) { return known.anchor + 1 < wanted; });
    for (; trail != trails_.end() && trail->anchor == anchor; ++trail) {
        keep(trail->begin, trail->end);
        trail->begin = trail->end;
    }
}

/// What followed groups that are gone: of a list that got shorter it goes along.
void PartMerge::putLostTrails() {
    for (const Trail& trail : trails_) {
        if (trail.first) keep(trail.begin, trail.end);
    }
}

void PartMerge::putFlags(const DxfOutTag& tag, std::size_t inFile) {
    const std::int64_t other = inFile == kNone ? 0 : (*file_)[inFile].integer();
    groups_.integer(tag.code, (other & ~std::int64_t{tag.mask}) | tag.integer);
}

void PartMerge::putValue(const DxfOutTag& tag, const PartValues& values) {
    CodeUse& known = use(tag.code);
    if (!known.modelled) {
        if (known.inFile == 0) putTag_(tag);
        return;
    }
    const std::size_t inFile = known.nextInFile;
    const std::size_t before = known.nextBefore;
    if (inFile != kNone) known.nextInFile = sameInFile_[inFile - partBegin_];
    if (before != kNone) known.nextBefore = sameBefore_[before];

    const bool unchanged = before != kNone && sameTag(values.before[before], tag);
    const bool paired = inFile != kNone && known.inFile == known.before;
    if (unchanged && known.inFile == 0) return; // Its usual value went without saying, and does.
    const bool stated = inFile != kNone && says((*file_)[inFile], tag);
    if ((unchanged && paired) || stated)
        groups_.buffer() += file_->bytes(inFile, inFile + 1);
    else if (tag.kind == DxfOutTag::Kind::kFlags)
        putFlags(tag, inFile);
    else
        putTag_(tag);
    if (paired && !trails_.empty()) putTrails(inFile);
}

void PartMerge::mergeGroups(const FilePart& part, const PartValues& values, bool namesLost) {
    learn(part, values);
    chooseModelled(values, namesLost);
    findTrails(part);
    putTrails(kNone);
    if (values.newPlace && values.inPaper) groups_.integer(kPaperSpace, 1);
    for (const DxfOutTag& tag : values.now) {
        if (!isMarker(tag)) putValue(tag, values);
    }
    putLostTrails();
}

} // namespace headless
