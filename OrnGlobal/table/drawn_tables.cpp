#include "table/drawn_tables.h"

#include <algorithm>

#include "OrnCore/box_tree.h"
#include "table/connected_rulings.h"
#include "table/drawn_parts.h"
#include "table/snapped_rulings.h"

namespace table {
namespace {

using orncore::Box;

/// The lines of one table and its place.
struct Ruled {
    std::vector<Ruling> lines;
    Box box;
    std::vector<CellText> texts = {};
};

Box around(const std::vector<Ruling>& lines) {
    const AcGePoint3d& first = lines.front().start;
    Box box{first.x, first.y, first.x, first.y};
    for (const Ruling& line : lines) {
        for (const AcGePoint3d& p : {line.start, line.end}) {
            box = {std::min(box.minX, p.x), std::min(box.minY, p.y), std::max(box.maxX, p.x),
                   std::max(box.maxY, p.y)};
        }
    }
    return box;
}

/// What may be a table, in reading order.
std::vector<Ruled> ruledAreas(const std::vector<Ruling>& lines) {
    constexpr std::size_t kFewest = 5; // lines around two cells
    std::vector<Ruled> areas;
    for (std::vector<Ruling>& group : connected(joinedPieces(lines))) {
        if (group.size() < kFewest) continue;
        const Box box = around(group);
        areas.push_back({std::move(group), box});
    }
    std::ranges::stable_sort(areas, [](const Ruled& a, const Ruled& b) {
        return a.box.maxY != b.box.maxY ? a.box.maxY > b.box.maxY : a.box.minX < b.box.minX;
    });
    return areas;
}

/// Gives every area the texts that stand in its box.
void shareOut(const std::vector<CellText>& texts, std::vector<Ruled>& areas) {
    std::vector<Box> boxes;
    for (const Ruled& area : areas)
        boxes.push_back(orncore::widened(area.box, 1e-6));
    const orncore::BoxTree tree(boxes);
    std::vector<std::size_t> around;
    for (const CellText& text : texts) {
        const AcGePoint3d& p = text.middle;
        tree.find({p.x, p.y, p.x, p.y}, around);
        for (const std::size_t area : around)
            areas[area].texts.push_back(text);
    }
}

/// What readers of the smallest text do not see: gaps where lines should meet, two lines drawn for
/// one.
double unseenGap(const std::vector<CellText>& texts) {
    constexpr double kOfHeight = 0.04;
    if (texts.empty()) return 0.0;
    return kOfHeight * std::ranges::min(texts, {}, &CellText::height).height;
}

bool hasText(const TableModel& model) {
    for (INT_PTR i = 0; i < model.texts.GetSize(); ++i)
        if (!model.texts[i].IsEmpty()) return true;
    return false;
}

/// Cells of a table lie side by side; lines that cross at random close cells over one another.
/// Rooms lie side by side, too, but each spans many of the rows and columns that all walls make.
bool isTiled(const TableModel& model) {
    long long covered = model.cellsFound;
    for (INT_PTR i = 0; i < model.mergeRows.GetSize(); ++i) {
        const long long columns = model.mergeMoreColumns[i] + 1;
        covered += columns * (model.mergeMoreRows[i] + 1) - 1;
    }
    const long long cells = model.texts.GetSize();
    return model.cellsFound >= 2 && 10LL * model.cellsFound >= cells && covered <= cells &&
           2 * covered >= cells;
}

std::unique_ptr<CGridToCadTable> tableIn(const Ruled& area, BlankForms blank) {
    AcGePoint3dArray starts;
    AcGePoint3dArray ends;
    for (const Ruling& line : area.lines) {
        starts.append(line.start);
        ends.append(line.end);
    }
    auto table = std::make_unique<CGridToCadTable>();
    if (table->AnalyseLines(starts, ends, area.texts) == 0) return nullptr;
    const bool saysSomething = blank == BlankForms::kTables || hasText(table->GetModel());
    if (!saysSomething || !isTiled(table->GetModel())) return nullptr;
    table->FillGrid();
    return table;
}

} // namespace

DrawnTables tablesAmong(const AcArray<AcDbObjectId>& ids, BlankForms blank) {
    DrawnParts drawn = drawnParts(ids);
    const double reach = unseenGap(drawn.texts);
    std::vector<Ruled> areas = ruledAreas(snapped(std::move(drawn.lines), reach));
    shareOut(drawn.texts, areas);
    DrawnTables tables;
    for (const Ruled& area : areas) {
        if (area.texts.empty() && blank == BlankForms::kNone) continue;
        if (auto table = tableIn(area, blank)) tables.push_back(std::move(table));
    }
    return tables;
}

} // namespace table
