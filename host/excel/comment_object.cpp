// The comment of a cell.
#include "excel/objects.h"
#include "win/code_page.h"

namespace headless::excel {
namespace {

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

IDispatch* makeComment(const SheetPlace& place, int row, int column) {
    return newServed<CommentObject>(place, row, column);
}

} // namespace headless::excel
