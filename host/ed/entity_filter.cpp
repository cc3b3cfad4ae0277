#include "ed/entity_filter.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string_view>

#include "db/entity.h"
#include "db/layer_table.h"
#include "db/object_data.h"
#include "db/object_groups.h"
#include "db/opaque.h"
#include "db/resbuf.h"
#include "db/residence.h"
#include "ed/wildcard.h"
#include "win/casing.h"

namespace headless {

namespace {

using Relation = GroupTest::Relation;
using Value = DataItem::Value;

constexpr int kApplication = 1001;

bool isName(int code) {
    constexpr int kNames[] = {0, 2, 6, 7, 8, 100, 410, kApplication};
    return std::ranges::find(kNames, code) != std::end(kNames);
}

/// Numbers from different computations of the same figure are equal.
bool isSame(double a, double b) {
    constexpr double kTolerance = 1e-8;
    return std::abs(a - b) <= kTolerance * std::max({1.0, std::abs(a), std::abs(b)});
}

bool relates(Relation relation, double a, double b) {
    switch (relation) {
    case Relation::any:
        return true;
    case Relation::equal:
        return isSame(a, b);
    case Relation::unequal:
        return !isSame(a, b);
    case Relation::less:
        return a < b && !isSame(a, b);
    case Relation::lessOrEqual:
        return a < b || isSame(a, b);
    case Relation::greater:
        return a > b && !isSame(a, b);
    case Relation::greaterOrEqual:
        return a > b || isSame(a, b);
    default:
        return false;
    }
}

bool relates(Relation relation, std::int64_t a, std::int64_t b) {
    switch (relation) {
    case Relation::someBits:
        return (a & b) != 0;
    case Relation::allBits:
        return (a & b) == b;
    default: {
        const auto order = a <=> b;
        return relation == Relation::any || (relation == Relation::equal && order == 0) ||
               (relation == Relation::unequal && order != 0) ||
               (relation == Relation::less && order < 0) ||
               (relation == Relation::lessOrEqual && order <= 0) ||
               (relation == Relation::greater && order > 0) ||
               (relation == Relation::greaterOrEqual && order >= 0);
    }
    }
}

std::optional<std::int64_t> wholeOf(const Value& value) {
    if (const auto* number = std::get_if<std::int16_t>(&value)) return *number;
    if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
    if (const auto* number = std::get_if<std::int64_t>(&value)) return *number;
    return std::nullopt;
}

/// The value that files take for granted; nothing for other codes.
std::optional<Value> usualValue(int code) {
    switch (code) {
    case 6:
        return L"BYLAYER";
    case 38:
    case 39:
    case 50:
        return 0.0;
    case 48:
        return 1.0;
    case 60:
    case 70:
    case 72:
    case 73:
        return std::int16_t{0};
    case 62:
        return std::int16_t{256};
    case 210:
        return AcGePoint3d(0.0, 0.0, 1.0);
    case 370:
        return std::int16_t{-1};
    default:
        return std::nullopt;
    }
}

} // namespace

bool GroupTest::accepts(const Value& value, bool flat) const {
    const Relation relation = relations[0];
    if (const auto* point = std::get_if<AcGePoint3d>(&value)) {
        const auto& other = std::get<AcGePoint3d>(wanted.value);
        return relates(relation, point->x, other.x) && relates(relations[1], point->y, other.y) &&
               (flat || relates(relations[2], point->z, other.z));
    }
    if (const auto* text = std::get_if<std::wstring>(&value)) {
        if (relation == Relation::any) return true;
        const auto& pattern = std::get<std::wstring>(wanted.value);
        const bool matches =
            matchesWildcard(isName(wanted.code) ? upperCased(*text) : *text, pattern);
        return matches == (relation == Relation::equal);
    }
    if (const auto* real = std::get_if<double>(&value))
        return relates(relation, *real, std::get<double>(wanted.value));
    const auto whole = wholeOf(value);
    return whole && relates(relation, *whole, *wholeOf(wanted.value));
}

/// The entity that is looked at. Its groups are made once, and only when something else than what
/// every selection asks for is wanted.
class EntityFilter::Subject {
public:
    explicit Subject(const AcDbEntity& entity) : entity_(entity) {}

    bool fits(const GroupTest& test) {
        switch (test.wanted.code) {
        case 0: {
            const std::string_view name = dxfName(entity_);
            return test.accepts(std::wstring(name.begin(), name.end()));
        }
        case 8: {
            const auto* layer = Residence::peek<AcDbLayerTableRecord>(entity_.layerId());
            return test.accepts(layer == nullptr ? std::wstring(L"0") : layer->nameOf());
        }
        case kApplication:
            return anyFits(ObjectData::xdata(entity_), test);
        default:
            return fitsGroups(test);
        }
    }

private:
    static bool anyFits(const DataItems& items, const GroupTest& test, bool flat = false) {
        return std::ranges::any_of(items, [&](const DataItem& item) {
            return item.code == test.wanted.code && test.accepts(item.value, flat);
        });
    }

    bool fitsGroups(const GroupTest& test) {
        if (groups_ == nullptr) groups_ = std::make_unique<ObjectGroups>(entity_);
        const int code = test.wanted.code;
        const bool told =
            std::ranges::find(groups_->items(), code, &DataItem::code) != groups_->items().end();
        if (told) return anyFits(groups_->items(), test, groups_->isFlat(code));
        const auto usual = usualValue(code);
        return usual && groups_->models(code) && test.accepts(*usual);
    }

    const AcDbEntity& entity_;
    std::unique_ptr<ObjectGroups> groups_;
};

bool EntityFilter::holds(const Node& node, Subject& subject) {
    const auto holdsFor = [&](const Node& operand) { return holds(operand, subject); };
    switch (node.kind) {
    case Kind::test:
        return subject.fits(node.test);
    case Kind::anyOf:
        return std::ranges::any_of(node.operands, holdsFor);
    case Kind::oneOf:
        return std::ranges::count_if(node.operands, holdsFor) == 1;
    case Kind::noneOf:
        return std::ranges::none_of(node.operands, holdsFor);
    case Kind::allOf:
        break;
    }
    return std::ranges::all_of(node.operands, holdsFor);
}

bool EntityFilter::matches(const AcDbEntity& entity) const {
    Subject subject(entity);
    return holds(root_, subject);
}

/// Reads a list of conditions; members answer false for a malformed one.
class FilterParser {
public:
    using Kind = EntityFilter::Kind;
    using Node = EntityFilter::Node;

    explicit FilterParser(const resbuf* list) : next_(list) {}

    bool parse(Node& root) { return readUntil({}, root, 0); }

private:
    struct Group {
        std::wstring_view begin;
        std::wstring_view end;
        Kind kind;
        std::size_t operands; // 0: at least one
    };
    static constexpr Group kGroups[] = {{L"<AND", L"AND>", Kind::allOf, 0},
                                        {L"<OR", L"OR>", Kind::anyOf, 0},
                                        {L"<XOR", L"XOR>", Kind::oneOf, 2},
                                        {L"<NOT", L"NOT>", Kind::noneOf, 1}};
    static constexpr int kDeepest = 200; // a stack's worth

    /// Reads operands up to the end of the group, or of the list when there is none.
    bool readUntil(std::wstring_view end, Node& node, int depth) {
        if (depth > kDeepest) return false;
        while (next_ != nullptr) {
            const resbuf& item = *next_;
            next_ = next_->rbnext;
            if (isMark(item)) continue;
            if (item.restype != -4) {
                if (!readTest(item, node)) return false;
                continue;
            }
            if (item.resval.rstring == nullptr) return false;
            const std::wstring word = upperCased(item.resval.rstring);
            if (!end.empty() && word == end) return true;
            if (!readOperator(word, node, depth)) return false;
        }
        return end.empty();
    }

    bool readOperator(const std::wstring& word, Node& node, int depth) {
        const auto group = std::ranges::find(kGroups, word, &Group::begin);
        if (group == std::end(kGroups)) return readRelated(word, node);
        Node operand;
        operand.kind = group->kind;
        if (!readUntil(group->end, operand, depth + 1)) return false;
        const std::size_t count = operand.operands.size();
        if (group->operands == 0 ? count == 0 : count != group->operands) return false;
        node.operands.push_back(std::move(operand));
        return true;
    }

    /// A relation and the condition that it is for.
    bool readRelated(std::wstring_view relations, Node& node) {
        while (next_ != nullptr && isMark(*next_))
            next_ = next_->rbnext;
        if (next_ == nullptr || next_->restype == -4) return false;
        const resbuf& item = *next_;
        next_ = next_->rbnext;
        if (!readTest(item, node)) return false;
        return setRelations(relations, node.operands.back().test);
    }

    static bool setRelations(std::wstring_view text, GroupTest& test) {
        const bool point = std::holds_alternative<AcGePoint3d>(test.wanted.value);
        std::size_t count = 0;
        test.relations.fill(Relation::any);
        for (;;) {
            const std::size_t comma = text.find(L',');
            const auto relation = relationOf(text.substr(0, comma));
            if (!relation || !suits(*relation, test.wanted.value) || count == (point ? 3U : 1U))
                return false;
            test.relations[count++] = *relation;
            if (comma == std::wstring_view::npos) break;
            text.remove_prefix(comma + 1);
        }
        // One relation is for all coordinates.
        if (count == 1) test.relations.fill(test.relations[0]);
        return true;
    }

    static std::optional<Relation> relationOf(std::wstring_view text) {
        struct Named {
            std::wstring_view text;
            Relation relation;
        };
        static constexpr Named kNamed[] = {{L"*", Relation::any},
                                           {L"=", Relation::equal},
                                           {L"!=", Relation::unequal},
                                           {L"/=", Relation::unequal},
                                           {L"<>", Relation::unequal},
                                           {L"<", Relation::less},
                                           {L"<=", Relation::lessOrEqual},
                                           {L">", Relation::greater},
                                           {L">=", Relation::greaterOrEqual},
                                           {L"&", Relation::someBits},
                                           {L"&=", Relation::allBits}};
        const auto named = std::ranges::find(kNamed, text, &Named::text);
        if (named == std::end(kNamed)) return std::nullopt;
        return named->relation;
    }

    static bool suits(Relation relation, const Value& value) {
        const bool bits = relation == Relation::someBits || relation == Relation::allBits;
        if (std::holds_alternative<std::wstring>(value)) return relation <= Relation::unequal;
        return !bits || wholeOf(value).has_value();
    }

    /// Marks of lists, and of the extended data that may follow.
    static bool isMark(const resbuf& item) {
        constexpr short kMarks[] = {RTLB, RTLE, RTDOTE, -3};
        return std::ranges::find(kMarks, item.restype) != std::end(kMarks);
    }

    static bool readTest(const resbuf& item, Node& node) {
        resbuf group = item;
        if (group.restype == RTDXF0) group.restype = 0;
        const int code = group.restype;
        if (code < 0 || (code > kDxfLast && code != kApplication)) return false;
        switch (valueKind(code)) {
        case ValueKind::kNothing:
        case ValueKind::kName:
        case ValueKind::kHandle:
        case ValueKind::kBinary:
            return false;
        default:
            break;
        }
        auto wanted = itemOf(group);
        if (!wanted) return false;
        if (isName(code)) {
            auto& pattern = std::get<std::wstring>(wanted->value);
            pattern = upperCased(pattern);
        }
        Node test;
        test.kind = Kind::test;
        test.test.wanted = std::move(*wanted);
        node.operands.push_back(std::move(test));
        return true;
    }

    static constexpr int kDxfLast = 998; // beyond are comments and extended data

    const resbuf* next_;
};

std::optional<EntityFilter> EntityFilter::compile(const resbuf* list) {
    EntityFilter filter;
    if (!FilterParser(list).parse(filter.root_)) return std::nullopt;
    return filter;
}

} // namespace headless
