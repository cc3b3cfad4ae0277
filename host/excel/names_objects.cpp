// The names that a workbook defines.
#include <algorithm>

#include "excel/book_part.h"
#include "win/casing.h"
#include "win/code_page.h"

namespace headless::excel {
namespace {

class NameObject final : public BookPart {
public:
    NameObject(const StatePointer& state, const BookPointer& book, const DefinedName& name)
        : BookPart(state, book), name_(name.name), sheet_(name.sheet) {}

    std::wstring name() const { return fromUtf8(defined().name); }
    std::wstring refersTo() const { return fromUtf8("=" + defined().refersTo); }
    void setRefersTo(const VARIANT& value) {
        const std::string text = toUtf8(textOf(value));
        defined().refersTo = text.starts_with('=') ? text.substr(1) : text;
        book_->noteChange();
    }
    IDispatch* range() const {
        const std::string target = defined().refersTo;
        const std::size_t mark = target.rfind('!');
        std::string sheetName = mark == std::string::npos ? "" : target.substr(0, mark);
        if (sheetName.starts_with('\'')) sheetName = sheetName.substr(1, sheetName.size() - 2);
        auto sheet = workbook().findSheet(sheetName);
        if (sheet == nullptr) sheet = book_->activeSheet();
        const SheetPlace place{state_, book_, sheet};
        return makeRange(place, areaOfText(place, target));
    }
    void remove() {
        (void)defined();
        std::erase_if(workbook().names, [&](const DefinedName& name) { return isThis(name); });
        book_->noteChange();
    }

protected:
    const MemberTable& members() const override {
        using N = NameObject;
        static const MemberTable table{
            {110, L"Name", reads<&N::name>},
            {938, L"RefersTo", reads<&N::refersTo>, writes<&N::setRefersTo>},
            {6, L"Value", reads<&N::refersTo>, writes<&N::setRefersTo>},
            {1160, L"RefersToRange", reads<&N::range>},
            {117, L"Delete", nullptr, nullptr, calls<&N::remove>},
        };
        return table;
    }

private:
    bool isThis(const DefinedName& name) const {
        return name.name == name_ && name.sheet == sheet_;
    }
    DefinedName& defined() const {
        auto& names = workbook().names;
        const auto found =
            std::ranges::find_if(names, [&](const DefinedName& name) { return isThis(name); });
        if (found == names.end()) fail("the name was deleted");
        return *found;
    }

    std::string name_;
    std::shared_ptr<Sheet> sheet_;
};

class Names final : public BookPart {
public:
    using BookPart::BookPart;

    LONG count() const { return static_cast<LONG>(workbook().names.size()); }
    IDispatch* item(const CallArguments& arguments) const {
        const VARIANT* wanted = arguments.find(0);
        const bool byName = wanted != nullptr && wanted->vt == VT_BSTR;
        const LONG index = byName ? 0 : arguments.integer(0, 0);
        LONG number = 0;
        for (const DefinedName& name : workbook().names) {
            const bool hit =
                byName ? equalNoCase(fromUtf8(name.name), textOf(*wanted)) : ++number == index;
            if (hit) return newServed<NameObject>(state_, book_, name);
        }
        fail("there is no such name");
    }
    /// @param arguments  name, what it refers to.
    IDispatch* add(const CallArguments& arguments) const {
        const std::string name = toUtf8(arguments.text(0));
        std::string target = toUtf8(arguments.text(1));
        if (target.starts_with('=')) target.erase(0, 1);
        const bool valid = !name.empty() &&
                           name.find_first_of(" !\"'+-*/()[]{}:,;") == std::string::npos &&
                           !parseArea(name) && !(name.front() >= '0' && name.front() <= '9');
        if (!valid || target.empty()) fail("\"" + name + "\" is no valid name");
        std::erase_if(workbook().names, [&](const DefinedName& other) {
            return other.sheet == nullptr && equalNoCase(fromUtf8(other.name), fromUtf8(name));
        });
        workbook().names.push_back({name, target, nullptr});
        book_->noteChange();
        return newServed<NameObject>(state_, book_, workbook().names.back());
    }

protected:
    const MemberTable& members() const override {
        using N = Names;
        static const MemberTable table{
            {118, L"Count", reads<&N::count>},
            {170, L"Item", reads<&N::item>, nullptr, calls<&N::item>},
            {0, L"_Default", reads<&N::item>, nullptr, calls<&N::item>},
            {181, L"Add", nullptr, nullptr, calls<&N::add>},
        };
        return table;
    }
};

} // namespace

IDispatch* makeNames(const StatePointer& state, const BookPointer& book) {
    return newServed<Names>(state, book);
}

} // namespace headless::excel
