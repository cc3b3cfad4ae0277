// The pictures of a sheet.
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

} // namespace

IDispatch* makeShapes(const SheetPlace& place) { return newServed<Shapes>(place); }

} // namespace headless::excel
