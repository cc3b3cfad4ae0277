// Which entities a selection takes: conditions on their groups.
//
// A condition is a group code with a value. Names (0, 2, 6, 7, 8, 100, 410, 1001) match wildcard
// patterns in any letter case, other texts with regard to case; numbers and points must be equal,
// unless a relation (-4) stands before them: "=", "!=", "/=", "<>", "<", "<=", ">", ">=", "*" (any
// value), for integers "&" (some bits) and "&=" (all bits). A point takes up to three relations,
// parted by commas, for x, y and z. An entity with several groups of a code needs one that fits.
// Values that files leave out count: linetype "BYLAYER", colour 256, thickness 0 and so on.
//
// Conditions follow each other (all must hold) or stand in "<AND" ... "AND>", "<OR" ... "OR>",
// "<XOR" ... "XOR>" (two) and "<NOT" ... "NOT>" (one), which nest. Extended data are asked for by
// application (-3, which may be missing, and 1001). Handles and entity names are not compared.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "db/data_item.h"

class AcDbEntity;

namespace headless {

class ObjectGroups;

/// One condition.
struct GroupTest {
    enum class Relation {
        any,
        equal,
        unequal,
        less,
        lessOrEqual,
        greater,
        greaterOrEqual,
        someBits,
        allBits
    };

    DataItem wanted; // a name's pattern is in capitals
    std::array<Relation, 3> relations{Relation::equal, Relation::equal, Relation::equal};

    /// @param flat  of points: z means nothing.
    bool accepts(const DataItem::Value& value, bool flat = false) const;
};

class EntityFilter {
public:
    /// Nothing for a list that is malformed: an unknown or misplaced operator, one without its
    /// operands, a code that is not compared, a missing text.
    static std::optional<EntityFilter> compile(const resbuf* list);

    /// Whether or not the entity is open.
    bool matches(const AcDbEntity& entity) const;

private:
    friend class FilterParser;
    class Subject;
    enum class Kind { allOf, anyOf, oneOf, noneOf, test };
    struct Node {
        Kind kind = Kind::allOf;
        std::vector<Node> operands;
        GroupTest test;
    };

    static bool holds(const Node& node, Subject& subject);

    Node root_;
};

} // namespace headless
