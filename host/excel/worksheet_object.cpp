// A sheet, and where it stands among the others.
#include <algorithm>

#include "excel/objects.h"
#include "win/code_page.h"

namespace headless::excel {
namespace {

constexpr std::pair<LONG, Visibility> kVisibilities[] = {
    {-1, Visibility::kVisible}, {0, Visibility::kHidden}, {2, Visibility::kVeryHidden}};

class WorksheetObject final : public ExcelObject {
public:
    explicit WorksheetObject(const SheetPlace& place) : place_(place) {}

    const SheetPlace& place() const { return place_; }

    std::wstring name() const {
        place_.check();
        return fromUtf8(place_.sheet->name);
    }
    void setName(const VARIANT& value) {
        place_.check();
        const std::string name = toUtf8(textOf(value));
        const std::string refusal = place_.book->workbook->nameRefusal(*place_.sheet, name);
        if (!refusal.empty()) fail(refusal);
        place_.edit().name = name;
    }
    LONG index() const {
        place_.check();
        return static_cast<LONG>(place_.book->workbook->positionOf(*place_.sheet)) + 1;
    }
    LONG visible() const {
        place_.check();
        for (const auto& [number, visibility] : kVisibilities)
            if (visibility == place_.sheet->visibility) return number;
        return -1;
    }
    void setVisible(const VARIANT& value) {
        place_.check();
        Visibility wanted = Visibility::kVisible;
        for (const auto& [number, visibility] : kVisibilities)
            if (number == integerOf(value)) wanted = visibility;
        if (wanted != Visibility::kVisible) keepOneVisible();
        place_.edit().visibility = wanted;
    }
    void activate() {
        place_.check();
        place_.book->workbook->activeSheet = place_.book->workbook->positionOf(*place_.sheet);
        place_.application->activeBook = place_.book;
    }
    void remove() {
        place_.check();
        keepOneVisible();
        place_.book->noteChange();
        Workbook& workbook = *place_.book->workbook;
        std::erase(workbook.sheets, place_.sheet);
        std::erase_if(workbook.names,
                      [&](const DefinedName& name) { return name.sheet == place_.sheet; });
        workbook.activeSheet = std::min(workbook.activeSheet, workbook.sheets.size() - 1);
    }
    /// A copy before or after a sheet of the same book.
    void copy(const CallArguments& arguments) {
        place_.check();
        Workbook& workbook = *place_.book->workbook;
        auto copied = std::make_shared<Sheet>(*place_.sheet);
        const std::string base = copied->name.substr(0, 25);
        for (int number = 2; workbook.findSheet(copied->name) != nullptr; ++number)
            copied->name = base + " (" + std::to_string(number) + ")";
        const std::size_t at = positionFor(arguments);
        workbook.sheets.insert(workbook.sheets.begin() + static_cast<std::ptrdiff_t>(at), copied);
        workbook.activeSheet = at;
        place_.book->noteChange();
    }
    void move(const CallArguments& arguments) {
        place_.check();
        Workbook& workbook = *place_.book->workbook;
        std::size_t at = positionFor(arguments);
        const std::size_t from = workbook.positionOf(*place_.sheet);
        if (at > from) --at;
        std::erase(workbook.sheets, place_.sheet);
        workbook.sheets.insert(workbook.sheets.begin() + static_cast<std::ptrdiff_t>(at),
                               place_.sheet);
        workbook.activeSheet = at;
        place_.book->noteChange();
    }
    void paste(const CallArguments& arguments) {
        const VARIANT* target = arguments.find(0);
        OwnedVariant range(target != nullptr && target->vt == VT_DISPATCH
                               ? nullptr
                               : selectionOf(place_.application, place_.book));
        IDispatch* destination = range.pdispVal != nullptr ? range.pdispVal : target->pdispVal;
        DISPPARAMS none = {};
        const HRESULT status = destination->Invoke(
            1027, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr);
        if (FAILED(status)) fail("nothing was copied that could be pasted there");
    }
    IDispatch* range(const CallArguments& arguments) const { return namedRange(place_, arguments); }
    IDispatch* cells(const CallArguments& arguments) const { return part(238, arguments); }
    IDispatch* rows(const CallArguments& arguments) const { return part(258, arguments); }
    IDispatch* columns(const CallArguments& arguments) const { return part(241, arguments); }
    IDispatch* usedRange() const {
        place_.check();
        return makeRange(place_, place_.sheet->usedArea().value_or(Area{}));
    }
    IDispatch* pageSetup() const { return makePageSetup(place_); }
    IDispatch* shapes() const { return makeShapes(place_); }
    IDispatch* parent() const { return makeWorkbook(place_.application, place_.book); }
    bool autoFilterMode() const {
        place_.check();
        return place_.sheet->autoFilter.has_value();
    }
    void setAutoFilterMode(const VARIANT& value) {
        place_.check();
        if (booleanOf(value)) failToSet("AutoFilterMode");
        place_.edit().autoFilter.reset();
    }
    double standardWidth() const { return kUsualWidth; }
    double standardHeight() const { return kUsualHeight; }

protected:
    const MemberTable& members() const override {
        using W = WorksheetObject;
        static const MemberTable table{
            {110, L"Name", reads<&W::name>, writes<&W::setName>},
            {486, L"Index", reads<&W::index>},
            {558, L"Visible", reads<&W::visible>, writes<&W::setVisible>},
            {304, L"Activate", nullptr, nullptr, calls<&W::activate>},
            {235, L"Select", nullptr, nullptr, calls<&W::activate>},
            {117, L"Delete", nullptr, nullptr, calls<&W::remove>},
            {551, L"Copy", nullptr, nullptr, calls<&W::copy>},
            {637, L"Move", nullptr, nullptr, calls<&W::move>},
            {211, L"Paste", nullptr, nullptr, calls<&W::paste>},
            {197, L"Range", reads<&W::range>},
            {238, L"Cells", reads<&W::cells>},
            {258, L"Rows", reads<&W::rows>},
            {241, L"Columns", reads<&W::columns>},
            {412, L"UsedRange", reads<&W::usedRange>},
            {998, L"PageSetup", reads<&W::pageSetup>},
            {1377, L"Shapes", reads<&W::shapes>},
            {150, L"Parent", reads<&W::parent>},
            {792, L"AutoFilterMode", reads<&W::autoFilterMode>, writes<&W::setAutoFilterMode>},
            {408, L"StandardWidth", reads<&W::standardWidth>},
            {407, L"StandardHeight", reads<&W::standardHeight>},
        };
        return table;
    }

private:
    /// A member of the range of all cells.
    IDispatch* part(DISPID member, const CallArguments& arguments) const {
        const OwnedVariant all(makeRange(place_, wholeSheet()));
        std::vector<VARIANT> reversed;
        for (std::size_t i = arguments.count(); i-- > 0;) {
            const VARIANT* value = arguments.find(i);
            reversed.push_back(value == nullptr ? OwnedVariant::error(DISP_E_PARAMNOTFOUND)
                                                : *value);
        }
        DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
        OwnedVariant found;
        const HRESULT status =
            all.pdispVal->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                 &parameters, &found, nullptr, nullptr);
        if (FAILED(status)) fail("the range would lie off the sheet");
        return found.release().pdispVal;
    }
    /// Fails when this is the only sheet that users see.
    void keepOneVisible() const {
        const auto seen = [](const auto& sheet) {
            return sheet->visibility == Visibility::kVisible;
        };
        if (seen(place_.sheet) && std::ranges::count_if(place_.book->workbook->sheets, seen) == 1)
            fail("a workbook must keep one visible sheet");
    }
    std::size_t positionFor(const CallArguments& arguments) const {
        return newPosition(*place_.book, arguments, place_.book->workbook->sheets.size());
    }

    SheetPlace place_;
};

} // namespace

std::size_t newPosition(const OpenBook& book, const CallArguments& arguments,
                        std::size_t fallback) {
    for (std::size_t i = 0; i < 2; ++i) {
        const VARIANT* value = arguments.find(i);
        if (value == nullptr) continue;
        const auto* sheet =
            value->vt == VT_DISPATCH ? dynamic_cast<WorksheetObject*>(value->pdispVal) : nullptr;
        if (sheet == nullptr || sheet->place().book.get() != &book) {
            fail("the sheet to stand beside is none of this workbook");
        }
        return book.workbook->positionOf(*sheet->place().sheet) + i;
    }
    return fallback;
}

IDispatch* makeSheet(const SheetPlace& place) { return newServed<WorksheetObject>(place); }

} // namespace headless::excel
