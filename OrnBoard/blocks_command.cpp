#include "blocks_command.h"

#include <adslib.h>
#include <dbapserv.h>

#include "OrnCore/zel_dwg.h"
#include "asked.h"
#include "blocks.h"
#include "text/string_list.h"

namespace board {
namespace {

AcDbDatabase* drawing() { return acdbHostApplicationServices()->workingDatabase(); }

/// In world coordinates, as blocks are made and inserted. Nothing when the user cancelled.
std::optional<AcGePoint3d> askedPlace(const wchar_t* prompt) {
    const auto point = askedPoint(prompt);
    return point ? std::optional(CZelDwg::TransUcs2Wcs(*point)) : std::nullopt;
}

void make() {
    const auto name = askedText(L"\nName of the new block: ");
    const auto layers = name ? askedText(L"\nLayers, joined by commas: ") : std::nullopt;
    const auto base = layers ? askedPlace(L"\nBase point: ") : std::nullopt;
    if (!base) return;
    const BlockMade made =
        makeBlock(drawing(), {.name = *name,
                              .layers = kelmor::splitLongString(*layers, L",", 0, 0),
                              .base = *base,
                              .replace = true});
    if (made.problem.IsEmpty())
        acutPrintf(L"\n%d entities are now the block %s.", made.entities, name->GetString());
    else
        acutPrintf(L"\n%s", made.problem.GetString());
}

void insert() {
    const auto name = askedText(L"\nName of the block: ");
    const auto position = name ? askedPlace(L"\nPosition: ") : std::nullopt;
    const auto layer = position ? askedText(L"\nLayer <0>: ") : std::nullopt;
    if (!layer) return;
    const BlockInserted inserted = insertBlock(
        drawing(),
        {.name = *name, .position = *position, .layer = layer->IsEmpty() ? CString(L"0") : *layer});
    acutPrintf(L"\n%s", inserted.problem.IsEmpty() ? L"Inserted." : inserted.problem.GetString());
}

} // namespace

void blocksCommand() {
    const auto wish = askedKeyword(L"\nBlock [Make/Insert] <Make>: ", L"Make Insert");
    if (!wish) return;
    if (*wish == L"Insert") return insert();
    make();
}

} // namespace board
