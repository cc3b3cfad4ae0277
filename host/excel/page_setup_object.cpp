// How a sheet comes on paper.
#include "excel/objects.h"
#include "win/code_page.h"

namespace headless::excel {
namespace {

constexpr double kPointsOfInch = 72.0;

class PageSetupObject final : public ExcelObject {
public:
    explicit PageSetupObject(const SheetPlace& place) : place_(place) {}

    template <double PageSetup::*Member>
    double inches() const {
        return page().*Member * kPointsOfInch;
    }
    template <double PageSetup::*Member>
    void setInches(const VARIANT& value) {
        const double points = realOf(value);
        if (!(points >= 0.0)) failToSet("Margin");
        edit().*Member = points / kPointsOfInch;
    }
    template <bool PageSetup::*Member>
    bool flag() const {
        return page().*Member;
    }
    template <bool PageSetup::*Member>
    void setFlag(const VARIANT& value) {
        edit().*Member = booleanOf(value);
    }
    /// One of the three parts of a header or footer.
    template <std::string PageSetup::*Member, char Part>
    std::wstring part() const {
        return fromUtf8(parts(page().*Member)[indexOf(Part)]);
    }
    template <std::string PageSetup::*Member, char Part>
    void setPart(const VARIANT& value) {
        auto all = parts(page().*Member);
        all[indexOf(Part)] = toUtf8(textOf(value));
        std::string& text = edit().*Member;
        text.clear();
        for (const char part : {'L', 'C', 'R'}) {
            const std::string& piece = all[indexOf(part)];
            if (!piece.empty()) text += std::string("&") + part + piece;
        }
    }
    LONG orientation() const { return page().landscape ? 2 : 1; }
    void setOrientation(const VARIANT& value) {
        const LONG orientation = integerOf(value);
        if (orientation != 1 && orientation != 2) failToSet("Orientation");
        edit().landscape = orientation == 2;
    }
    LONG paperSize() const { return page().paper; }
    void setPaperSize(const VARIANT& value) {
        const LONG paper = integerOf(value);
        if (paper < 1 || paper > 118) failToSet("PaperSize");
        edit().paper = paper;
    }
    OwnedVariant zoom() const {
        return page().fitToPages ? OwnedVariant(false) : OwnedVariant(LONG{page().scale});
    }
    void setZoom(const VARIANT& value) {
        // False hands over to fitting.
        if (value.vt == VT_BOOL) {
            edit().fitToPages = !booleanOf(value);
            return;
        }
        const LONG scale = integerOf(value);
        if (scale < 10 || scale > 400) failToSet("Zoom");
        edit().scale = scale;
        edit().fitToPages = false;
    }
    template <int PageSetup::*Member>
    OwnedVariant pages() const {
        return page().*Member == 0 ? OwnedVariant(false) : OwnedVariant(LONG{page().*Member});
    }
    template <int PageSetup::*Member>
    void setPages(const VARIANT& value) {
        const LONG pages = value.vt == VT_BOOL ? 0 : integerOf(value);
        if (pages < 0 || pages > 32767) failToSet("FitToPages");
        edit().*Member = pages;
    }
    template <std::optional<Area> PageSetup::*Member>
    std::wstring area() const {
        const auto& area = page().*Member;
        return area ? fromUtf8(areaText(*area, true)) : std::wstring();
    }
    template <std::optional<Area> PageSetup::*Member>
    void setArea(const VARIANT& value) {
        const std::string text = toUtf8(textOf(value));
        auto& area = edit().*Member;
        if (text.empty()) {
            area.reset();
        } else {
            area = areaOfText(place_, text);
        }
    }

protected:
    const MemberTable& members() const override {
        using P = PageSetupObject;
        using S = PageSetup;
        static const MemberTable table{
            {134, L"Orientation", reads<&P::orientation>, writes<&P::setOrientation>},
            {1007, L"PaperSize", reads<&P::paperSize>, writes<&P::setPaperSize>},
            {663, L"Zoom", reads<&P::zoom>, writes<&P::setZoom>},
            {1014, L"FitToPagesWide", reads<&P::pages<&S::fitWide>>,
             writes<&P::setPages<&S::fitWide>>},
            {1013, L"FitToPagesTall", reads<&P::pages<&S::fitTall>>,
             writes<&P::setPages<&S::fitTall>>},
            {999, L"LeftMargin", reads<&P::inches<&S::leftMargin>>,
             writes<&P::setInches<&S::leftMargin>>},
            {1000, L"RightMargin", reads<&P::inches<&S::rightMargin>>,
             writes<&P::setInches<&S::rightMargin>>},
            {1001, L"TopMargin", reads<&P::inches<&S::topMargin>>,
             writes<&P::setInches<&S::topMargin>>},
            {1002, L"BottomMargin", reads<&P::inches<&S::bottomMargin>>,
             writes<&P::setInches<&S::bottomMargin>>},
            {1012, L"HeaderMargin", reads<&P::inches<&S::headerMargin>>,
             writes<&P::setInches<&S::headerMargin>>},
            {1011, L"FooterMargin", reads<&P::inches<&S::footerMargin>>,
             writes<&P::setInches<&S::footerMargin>>},
            {1019, L"LeftHeader", reads<&P::part<&S::header, 'L'>>,
             writes<&P::setPart<&S::header, 'L'>>},
            {1010, L"CenterHeader", reads<&P::part<&S::header, 'C'>>,
             writes<&P::setPart<&S::header, 'C'>>},
            {1026, L"RightHeader", reads<&P::part<&S::header, 'R'>>,
             writes<&P::setPart<&S::header, 'R'>>},
            {1018, L"LeftFooter", reads<&P::part<&S::footer, 'L'>>,
             writes<&P::setPart<&S::footer, 'L'>>},
            {1009, L"CenterFooter", reads<&P::part<&S::footer, 'C'>>,
             writes<&P::setPart<&S::footer, 'C'>>},
            {1025, L"RightFooter", reads<&P::part<&S::footer, 'R'>>,
             writes<&P::setPart<&S::footer, 'R'>>},
            {1005, L"CenterHorizontally", reads<&P::flag<&S::centerHorizontally>>,
             writes<&P::setFlag<&S::centerHorizontally>>},
            {1006, L"CenterVertically", reads<&P::flag<&S::centerVertically>>,
             writes<&P::setFlag<&S::centerVertically>>},
            {1004, L"PrintGridlines", reads<&P::flag<&S::printGridlines>>,
             writes<&P::setFlag<&S::printGridlines>>},
            {1003, L"PrintHeadings", reads<&P::flag<&S::printHeadings>>,
             writes<&P::setFlag<&S::printHeadings>>},
            {1020, L"PrintArea", reads<&P::area<&S::printArea>>,
             writes<&P::setArea<&S::printArea>>},
            {1023, L"PrintTitleRows", reads<&P::area<&S::titleRows>>,
             writes<&P::setArea<&S::titleRows>>},
            {1022, L"PrintTitleColumns", reads<&P::area<&S::titleColumns>>,
             writes<&P::setArea<&S::titleColumns>>},
        };
        return table;
    }

private:
    static std::size_t indexOf(char part) { return part == 'L' ? 0 : part == 'C' ? 1 : 2; }

    /// The left, centre and right part of a text such as "&LLeft&CMiddle".
    static std::array<std::string, 3> parts(const std::string& text) {
        std::array<std::string, 3> found;
        std::size_t current = indexOf('C');
        for (std::size_t i = 0; i < text.size(); ++i) {
            const char next = i + 1 < text.size() ? text[i + 1] : '\0';
            if (text[i] == '&' && (next == 'L' || next == 'C' || next == 'R')) {
                current = indexOf(next);
                ++i;
            } else {
                found[current] += text[i];
            }
        }
        return found;
    }

    const PageSetup& page() const {
        place_.check();
        return place_.sheet->page;
    }
    PageSetup& edit() {
        place_.check();
        return place_.edit().page;
    }

    SheetPlace place_;
};

} // namespace

IDispatch* makePageSetup(const SheetPlace& place) { return newServed<PageSetupObject>(place); }

} // namespace headless::excel
