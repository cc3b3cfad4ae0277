#include "ed/interactive_selection.h"

#include <list>

#include "db/entity.h"
#include "db/layer_table.h"
#include "db/residence.h"
#include "ed/entity_filter.h"
#include "ed/prompt_answers.h"
#include "ed/prompts.h"
#include "ed/selection_modes.h"
#include "ed/state.h"
#include "ed/user_coordinates.h"

namespace headless {
namespace {

using Ids = std::vector<AcDbObjectId>;

/// A chain of points, as the modes by polygon take it.
class PointChain {
public:
    void add(const AcGePoint3d& point) {
        resbuf& link = links_.emplace_back();
        link.restype = RT3DPOINT;
        link.resval.rpoint[0] = point.x;
        link.resval.rpoint[1] = point.y;
        link.resval.rpoint[2] = point.z;
        if (links_.size() > 1) std::prev(links_.end(), 2)->rbnext = &link;
    }
    const resbuf* first() const { return links_.empty() ? nullptr : &links_.front(); }
    const double* last() const { return links_.empty() ? nullptr : links_.back().resval.rpoint; }

private:
    std::list<resbuf> links_;
};

bool isLocked(AcDbObjectId id) {
    const auto* const entity = Residence::peek<AcDbEntity>(id);
    const auto* const layer =
        entity == nullptr ? nullptr : Residence::peek<AcDbLayerTableRecord>(entity->layerId());
    return layer != nullptr && layer->locksEntities();
}

bool holdsShift(const std::optional<KeyModifiers>& clicked) { return clicked && clicked->shift; }

/// True where the view shows the first point left of the second.
bool isLeftOf(const AcDbDatabase& db, const AcGePoint3d& a, const AcGePoint3d& b) {
    const AcGeMatrix3d world = userToWorld(db);
    return placeInView(db, world * a).x < placeInView(db, world * b).x;
}

class SelectionDialogue {
public:
    SelectionDialogue(const AcDbDatabase& db, const EntityFilter& filter,
                      const SelectionDialogueOptions& options)
        : db_(db), filter_(filter), options_(options) {}

    int run();
    const SelectionSet& chosen() const { return set_; }

private:
    /// Nothing to go on asking; else what ends the dialogue.
    using Ending = std::optional<int>;
    struct Found {
        Ids ids;
        SelectedBy gesture;
    };

    Ending take(const InputAnswer& answer);
    Ending takeOption(const std::wstring& name);
    Ending pickAt(const PointAnswer& at);
    Ending pickBox(const wchar_t* mode);
    Ending pickBoxFrom(const PointAnswer& first, const wchar_t* mode);
    Ending pickChain(const wchar_t* mode);
    Ending merge(const Found& found, bool remove);

    Found found(std::wstring_view mode, const void* point1, const void* point2) const;
    static void say(const wchar_t* text) { EdState::current().output.print(text); }

    const AcDbDatabase& db_;
    const EntityFilter& filter_;
    const SelectionDialogueOptions& options_;
    bool removing_ = false;
    SelectionSet set_;
    std::vector<SelectionSet> former_; // What Undo goes back to, the last one last.
};

int SelectionDialogue::run() {
    const PromptRules rules{0, Keywords(L"Window Last Crossing ALL Fence WPolygon CPolygon Add "
                                        L"Remove Previous Undo")};
    const OfferedKeywords offered(rules.keywords);
    for (;;) {
        const std::wstring& prompt = removing_ ? options_.removePrompt : options_.addPrompt;
        const InputAnswer answer = ask(prompt.c_str(), true);
        if (const auto cancelled = cancellation(answer)) return *cancelled;
        if (answer.isEnter()) break;
        const Ending ending =
            keywordOf(answer, rules) ? takeOption(*EdState::current().pickedText) : take(answer);
        if (ending) return *ending;
        if (options_.single) break;
    }
    return set_.ids().empty() ? RTERROR : RTNORM;
}

SelectionDialogue::Ending SelectionDialogue::take(const InputAnswer& answer) {
    if (const auto point = pointOf(answer, nullptr))
        return pickAt({RTNORM, *point, answer.clicked});
    say(L"\nA point or one of [Window/Last/Crossing/ALL/Fence/WPolygon/CPolygon/Add/Remove/"
        L"Previous/Undo] is needed.");
    return std::nullopt;
}

SelectionDialogue::Ending SelectionDialogue::takeOption(const std::wstring& name) {
    if (name == L"Window") return pickBox(L"W");
    if (name == L"Crossing") return pickBox(L"C");
    if (name == L"WPolygon") return pickChain(L"WP");
    if (name == L"CPolygon") return pickChain(L"CP");
    if (name == L"Fence") return pickChain(L"F");
    if (name == L"Last") return merge(found(L"L", nullptr, nullptr), removing_);
    if (name == L"Previous") return merge(found(L"P", nullptr, nullptr), removing_);
    if (name == L"ALL") return merge({selectableInSpace(db_, filter_), {}}, removing_);
    if (name == L"Add" || name == L"Remove") {
        removing_ = name == L"Remove";
    } else if (former_.empty()) {
        say(L"\nThere is nothing to undo.");
    } else {
        set_ = std::move(former_.back());
        former_.pop_back();
    }
    return std::nullopt;
}

SelectionDialogue::Ending SelectionDialogue::pickAt(const PointAnswer& at) {
    const ads_point point = {at.point.x, at.point.y, at.point.z};
    const bool remove = removing_ || holdsShift(at.clicked);
    const Found there = found(L"", point, nullptr);
    return there.ids.empty() ? pickBoxFrom(at, L"") : merge(there, remove);
}

SelectionDialogue::Ending SelectionDialogue::pickBox(const wchar_t* mode) {
    const PointAnswer first = askPoint(L"\nSpecify first corner: ", {RSG_NONULL, {}}, nullptr);
    if (first.result != RTNORM) return first.result;
    return pickBoxFrom(first, mode);
}

/// @param mode  "W" or "C"; empty: by the direction of the box.
SelectionDialogue::Ending SelectionDialogue::pickBoxFrom(const PointAnswer& first,
                                                         const wchar_t* mode) {
    const ads_point from = {first.point.x, first.point.y, first.point.z};
    const PointAnswer second = askPoint(L"\nSpecify opposite corner: ", {RSG_NONULL, {}}, from);
    if (second.result != RTNORM) return second.result;
    const ads_point to = {second.point.x, second.point.y, second.point.z};
    const std::wstring_view byDirection = isLeftOf(db_, first.point, second.point) ? L"W" : L"C";
    const bool remove = removing_ || holdsShift(first.clicked) || holdsShift(second.clicked);
    return merge(found(*mode == L'\0' ? byDirection : mode, from, to), remove);
}

SelectionDialogue::Ending SelectionDialogue::pickChain(const wchar_t* mode) {
    PointChain chain;
    for (const ACHAR* prompt = L"\nSpecify first point: ";; prompt = L"\nSpecify next point: ") {
        const PointAnswer next = askPoint(prompt, {}, chain.last());
        if (next.result == RTNONE) break;
        if (next.result != RTNORM) return next.result;
        chain.add(next.point);
    }
    return merge(found(mode, chain.first(), nullptr), removing_);
}

SelectionDialogue::Ending SelectionDialogue::merge(const Found& found, bool remove) {
    former_.push_back(set_);
    const std::size_t before = set_.ids().size();
    for (const AcDbObjectId id : found.ids) {
        if (remove) {
            set_.remove(id);
        } else {
            set_.add(id, found.gesture);
        }
    }
    const std::size_t now = set_.ids().size();
    std::wstring text = L"\n" + std::to_wstring(found.ids.size()) + L" found";
    if (remove) text += L", " + std::to_wstring(before - now) + L" removed";
    if (!remove && now - before < found.ids.size())
        text += L" (" + std::to_wstring(found.ids.size() - (now - before)) + L" duplicate)";
    if (before > 0) text += L", " + std::to_wstring(now) + L" total";
    EdState::current().output.print(text);
    return std::nullopt;
}

SelectionDialogue::Found SelectionDialogue::found(std::wstring_view mode, const void* point1,
                                                  const void* point2) const {
    Ids ids = selectByMode(db_, mode, point1, point2, filter_).value_or(Ids());
    if (options_.refuseLocked) std::erase_if(ids, isLocked);
    return {std::move(ids), gestureOfMode(db_, mode, point1, point2)};
}

} // namespace

int chooseEntities(const AcDbDatabase& db, const EntityFilter& filter,
                   const SelectionDialogueOptions& options, SelectionSet& chosen) {
    SelectionDialogue dialogue(db, filter, options);
    const int result = dialogue.run();
    if (result == RTNORM) chosen = dialogue.chosen();
    return result;
}

} // namespace headless
