// What a sheet consists of besides its cells: page set-up, pictures, comments.
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include "excel/image_info.h"
#include "excel/objects.h"
#include "win/code_page.h"
#include "win/native_path.h"

namespace headless::excel {
namespace {

constexpr double kPointsOfInch = 72.0;

// --- Page set-up ---

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

// --- Pictures ---

class Shape final : public ExcelObject {
public:
    Shape(const SheetPlace& place, int id) : place_(place), id_(id) {}

    std::wstring name() const { return fromUtf8(picture().name); }
    void setName(const VARIANT& value) { edit().name = toUtf8(textOf(value)); }
    double left() const { return place_.sheet->leftOf(picture().column) + picture().leftInCell; }
    void setLeft(const VARIANT& value) { moveTo(realOf(value), top()); }
    double top() const { return place_.sheet->topOf(picture().row) + picture().topInCell; }
    void setTop(const VARIANT& value) { moveTo(left(), realOf(value)); }
    double width() const { return picture().width; }
    void setWidth(const VARIANT& value) { setSize(&Picture::width, &Picture::height, value); }
    double height() const { return picture().height; }
    void setHeight(const VARIANT& value) { setSize(&Picture::height, &Picture::width, value); }
    bool lockAspectRatio() const { return picture().lockAspectRatio; }
    void setLockAspectRatio(const VARIANT& value) { edit().lockAspectRatio = booleanOf(value); }
    LONG type() const { return 13; }
    void remove() {
        (void)picture();
        std::erase_if(place_.edit().pictures, [&](const Picture& p) { return p.id == id_; });
    }
    void moveTo(double left, double top) {
        if (!(left >= 0.0 && top >= 0.0)) failToSet("Left");
        Picture& moved = edit();
        const Sheet& sheet = *place_.sheet;
        moved.column = 1;
        while (moved.column < kColumns && sheet.columnPoints(moved.column) <= left) {
            left -= sheet.columnPoints(moved.column);
            ++moved.column;
        }
        moved.row = 1;
        while (moved.row < kRows && sheet.rowPoints(moved.row) <= top) {
            top -= sheet.rowPoints(moved.row);
            ++moved.row;
        }
        moved.leftInCell = left;
        moved.topInCell = top;
    }

protected:
    const MemberTable& members() const override {
        using S = Shape;
        static const MemberTable table{
            {110, L"Name", reads<&S::name>, writes<&S::setName>},
            {127, L"Left", reads<&S::left>, writes<&S::setLeft>},
            {126, L"Top", reads<&S::top>, writes<&S::setTop>},
            {122, L"Width", reads<&S::width>, writes<&S::setWidth>},
            {123, L"Height", reads<&S::height>, writes<&S::setHeight>},
            {1700, L"LockAspectRatio", reads<&S::lockAspectRatio>, writes<&S::setLockAspectRatio>},
            {108, L"Type", reads<&S::type>},
            {117, L"Delete", nullptr, nullptr, calls<&S::remove>},
        };
        return table;
    }

private:
    const Picture& picture() const {
        place_.check();
        for (const Picture& picture : place_.sheet->pictures) {
            if (picture.id == id_) return picture;
        }
        fail("the picture was deleted");
    }
    Picture& edit() {
        const Picture& found = picture();
        place_.noteChange();
        return const_cast<Picture&>(found);
    }
    void setSize(double Picture::*side, double Picture::*other, const VARIANT& value) {
        const double length = realOf(value);
        if (!(length > 0.0)) failToSet("Width");
        Picture& picture = edit();
        if (picture.lockAspectRatio) picture.*other *= length / (picture.*side);
        picture.*side = length;
    }

    SheetPlace place_;
    int id_;
};

class Shapes final : public ExcelObject {
public:
    explicit Shapes(const SheetPlace& place) : place_(place) {}

    LONG count() const {
        place_.check();
        return static_cast<LONG>(place_.sheet->pictures.size());
    }
    IDispatch* item(const CallArguments& arguments) const {
        place_.check();
        const VARIANT* wanted = arguments.find(0);
        const bool byName = wanted != nullptr && wanted->vt == VT_BSTR;
        const std::string name = byName ? toUtf8(textOf(*wanted)) : std::string();
        const LONG index = byName ? 0 : arguments.integer(0, 0);
        LONG number = 0;
        for (const Picture& picture : place_.sheet->pictures) {
            if (byName ? picture.name == name : ++number == index) {
                return newServed<Shape>(place_, picture.id);
            }
        }
        fail("there is no such shape");
    }
    /// @param arguments  file, link, save with document, left, top, width, height; a width or
    ///                   height of -1 is the picture's own.
    IDispatch* addPicture(const CallArguments& arguments) {
        place_.check();
        const std::string path = nativePath(arguments.text(0));
        Picture picture;
        std::ifstream file(path, std::ios::binary);
        if (!file) fail(path + " cannot be inserted: " + std::strerror(errno));
        picture.bytes.assign(std::istreambuf_iterator<char>(file), {});
        const auto info = imageInfo(picture.bytes);
        if (!info) fail(path + " cannot be inserted: it is no PNG, JPEG, GIF or BMP picture");
        const double width = arguments.real(5, -1.0);
        const double height = arguments.real(6, -1.0);
        picture.width = width > 0.0 ? width : info->widthPoints();
        picture.height = height > 0.0 ? height : info->heightPoints();
        fitColumns(*place_.sheet, place_.formats());
        Sheet& sheet = place_.edit();
        picture.id = sheet.nextPictureId++;
        picture.name = "Picture " + std::to_string(picture.id);
        const int id = picture.id;
        sheet.pictures.push_back(std::move(picture));
        auto* shape = newServed<Shape>(place_, id);
        OwnedVariant owner(static_cast<IDispatch*>(shape));
        shape->moveTo(std::max(arguments.real(3, 0.0), 0.0), std::max(arguments.real(4, 0.0), 0.0));
        return owner.release().pdispVal;
    }

protected:
    const MemberTable& members() const override {
        using S = Shapes;
        static const MemberTable table{
            {118, L"Count", reads<&S::count>},
            {170, L"Item", reads<&S::item>, nullptr, calls<&S::item>},
            {0, L"_Default", reads<&S::item>, nullptr, calls<&S::item>},
            {1723, L"AddPicture", nullptr, nullptr, calls<&S::addPicture>},
        };
        return table;
    }

private:
    SheetPlace place_;
};

// --- Comments ---

class CommentObject final : public ExcelObject {
public:
    CommentObject(const SheetPlace& place, int row, int column)
        : place_(place), cell_(row, column) {}

    std::wstring author() const { return fromUtf8(comment().author); }
    bool visible() const { return comment().visible; }
    void setVisible(const VARIANT& value) { edit().visible = booleanOf(value); }
    /// Reads the text, or replaces it when one is given.
    std::wstring text(const CallArguments& arguments) {
        if (arguments.has(0)) edit().text = toUtf8(arguments.text(0));
        return fromUtf8(comment().text);
    }
    void remove() {
        (void)comment();
        place_.edit().comments.erase(cell_);
    }

protected:
    const MemberTable& members() const override {
        using C = CommentObject;
        static const MemberTable table{
            {138, L"Text", nullptr, nullptr, calls<&C::text>},
            {1006, L"Author", reads<&C::author>},
            {558, L"Visible", reads<&C::visible>, writes<&C::setVisible>},
            {117, L"Delete", nullptr, nullptr, calls<&C::remove>},
        };
        return table;
    }

private:
    const Comment& comment() const {
        place_.check();
        const auto found = place_.sheet->comments.find(cell_);
        if (found == place_.sheet->comments.end()) fail("the comment was deleted");
        return found->second;
    }
    Comment& edit() {
        (void)comment();
        return place_.edit().comments.at(cell_);
    }

    SheetPlace place_;
    std::pair<int, int> cell_;
};

} // namespace

IDispatch* makePageSetup(const SheetPlace& place) { return newServed<PageSetupObject>(place); }

IDispatch* makeShapes(const SheetPlace& place) { return newServed<Shapes>(place); }

IDispatch* makeComment(const SheetPlace& place, int row, int column) {
    return newServed<CommentObject>(place, row, column);
}

} // namespace headless::excel
