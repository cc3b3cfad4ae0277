#include "excel/server.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "excel/office_engine.h"
#include "excel/workbook_files.h"
#include "support/png.h"
#include "support/temporary_folder.h"
#include "win/code_page.h"
#include "win/safe_array.h"
#include "win/served_object.h"
#include "win/state.h"

using headless::OwnedVariant;

namespace {

/// An object whose members are called by their names.
class Object {
public:
    Object() = default;
    explicit Object(OwnedVariant value) : value_(std::move(value)) {}

    template <class... Arguments>
    OwnedVariant get(const wchar_t* name, Arguments... arguments) const {
        return invoke(name, DISPATCH_PROPERTYGET, {OwnedVariant(arguments)...});
    }
    template <class... Arguments>
    Object at(const wchar_t* name, Arguments... arguments) const {
        return Object(get(name, arguments...));
    }
    template <class... Arguments>
    OwnedVariant call(const wchar_t* name, Arguments... arguments) const {
        return invoke(name, DISPATCH_METHOD, {OwnedVariant(arguments)...});
    }
    template <class Value>
    void put(const wchar_t* name, Value value) const {
        invoke(name, DISPATCH_PROPERTYPUT, {OwnedVariant(value)});
    }
    /// A member as text; "null" where cells differ.
    std::wstring text(const wchar_t* name) const {
        const OwnedVariant value = get(name);
        return value.vt == VT_NULL ? L"null" : headless::textOf(static_cast<const VARIANT&>(value));
    }
    [[nodiscard]] bool isNothing() const {
        return value_.vt != VT_DISPATCH || value_.pdispVal == nullptr;
    }
    /// What the last call failed with; empty when it did not.
    static std::wstring& failure() {
        static std::wstring text;
        return text;
    }

private:
    OwnedVariant invoke(const wchar_t* name, WORD flags,
                        const std::vector<VARIANT>& arguments) const {
        failure().clear();
        OwnedVariant result;
        if (isNothing()) {
            failure() = L"no object";
            return result;
        }
        std::wstring own = name;
        LPOLESTR names = own.data();
        DISPID member = 0;
        if (FAILED(value_.pdispVal->GetIDsOfNames(IID_NULL, &names, 1, 0, &member))) {
            failure() = L"unknown name";
            return result;
        }
        std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
        DISPID put = DISPID_PROPERTYPUT;
        const bool isPut = flags == DISPATCH_PROPERTYPUT;
        DISPPARAMS parameters = {reversed.data(), isPut ? &put : nullptr,
                                 static_cast<UINT>(reversed.size()), isPut ? 1U : 0U};
        EXCEPINFO exception{};
        const HRESULT status = value_.pdispVal->Invoke(member, IID_NULL, 0, flags, &parameters,
                                                       &result, &exception, nullptr);
        if (FAILED(status)) failure() = L"failed";
        if (status == DISP_E_EXCEPTION) {
            failure() = headless::textOf(exception.bstrDescription);
            SysFreeString(exception.bstrDescription);
            SysFreeString(exception.bstrSource);
        }
        return result;
    }

    OwnedVariant value_;
};

class Server : public testing::Test {
protected:
    Server() { start(headless::excel::embeddedEngine()); }
    void TearDown() override {
        application_ = Object();
        sheet_ = Object();
        EXPECT_EQ(headless::liveAutomationReferences(), references_);
        EXPECT_EQ(headless::liveBstrCount(), strings_);
        EXPECT_EQ(headless::liveSafeArrayCount(), arrays_);
    }
    void start(std::shared_ptr<headless::excel::Engine> engine) {
        headless::excel::install(win_.automationServers, std::move(engine));
        application_ =
            Object(OwnedVariant(win_.automationServers.find(L"excel.application")->create()));
    }
    /// A new book, its first sheet current.
    Object addBook() {
        Object book(application_.at(L"Workbooks").call(L"Add"));
        sheet_ = book.at(L"ActiveSheet");
        return book;
    }
    Object range(const wchar_t* name) const { return sheet_.at(L"Range", name); }
    std::wstring path(const char* name) const { return (folder_.path() / name).wstring(); }

    test_support::TemporaryFolder folder_;
    std::size_t references_ = headless::liveAutomationReferences();
    std::size_t strings_ = headless::liveBstrCount();
    std::size_t arrays_ = headless::liveSafeArrayCount();
    headless::WinState win_;
    Object application_;
    Object sheet_;
};

TEST_F(Server, TextsCountAsTyped) {
    addBook();
    struct Case {
        const wchar_t* typed;
        VARTYPE type;
        const wchar_t* value;
    };
    const Case cases[] = {
        {L"12.5", VT_R8, L"12.5"},     {L"1,234", VT_R8, L"1234"},
        {L"1,23", VT_BSTR, L"1,23"},   {L"50%", VT_R8, L"0.5"},
        {L"-3", VT_R8, L"-3"},         {L"3-", VT_BSTR, L"3-"},
        {L"true", VT_BOOL, L"True"},   {L"'007", VT_BSTR, L"007"},
        {L"60+60", VT_BSTR, L"60+60"}, {L"2024-1-2", VT_BSTR, L"2024-1-2"},
        {L"", VT_EMPTY, L""},
    };
    for (const Case& c : cases) {
        range(L"A1").put(L"Value2", c.typed);
        EXPECT_EQ(range(L"A1").get(L"Value2").vt, c.type) << testing::PrintToString(c.typed);
        EXPECT_EQ(range(L"A1").text(L"Value2"), c.value);
    }
    range(L"A1").put(L"NumberFormat", L"@");
    range(L"A1").put(L"Value2", L"12.5");
    EXPECT_EQ(range(L"A1").get(L"Value2").vt, VT_BSTR);
}

TEST_F(Server, RangesAreFoundInManyWays) {
    addBook();
    range(L"B2:C3").put(L"Value2", 1.0);
    struct Case {
        const wchar_t* address;
        Object found;
    };
    const Object area = range(L"B2:C3");
    const Case cases[] = {
        {L"$B$2:$C$3", sheet_.at(L"Range", L"C3", L"B2")},
        {L"$A$1", sheet_.at(L"Cells", 1, 1)},
        {L"$AB$7", sheet_.at(L"Cells", 7, L"AB")},
        {L"$C$2", area.at(L"Item", 1, 2)},
        {L"$B$3", area.at(L"Cells", 3)},
        {L"$C$3:$D$4", area.at(L"Offset", 1, 1)},
        {L"$B$2:$D$2", area.at(L"Resize", 1, 3)},
        {L"$B$3:$C$3", area.at(L"Rows", 2)},
        {L"$B:$C", area.at(L"EntireColumn")},
        {L"$2:$3", area.at(L"EntireRow")},
        {L"$B$2:$C$3", sheet_.at(L"UsedRange")},
        {L"$B$2:$C$3", range(L"C2").at(L"CurrentRegion")},
        {L"$B$3", range(L"B2").at(L"End", -4121)},
        {L"$B$3", range(L"B9").at(L"End", -4162)},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.found.text(L"Address"), c.address);
    EXPECT_EQ(area.text(L"Count"), L"4");
    EXPECT_EQ(area.at(L"Rows").text(L"Count"), L"2");
    EXPECT_EQ(sheet_.at(L"Cells").text(L"Count"), L"17179869184");
    EXPECT_TRUE(area.at(L"Offset", -2, 0).isNothing());
    EXPECT_EQ(Object::failure(), L"the range would lie off the sheet");
}

TEST_F(Server, MixedFormatsAreNull) {
    addBook();
    range(L"A1").at(L"Font").put(L"Bold", true);
    EXPECT_EQ(range(L"A1:A2").at(L"Font").text(L"Bold"), L"null");
    EXPECT_EQ(range(L"A1").at(L"Font").text(L"FontStyle"), L"Bold");
    EXPECT_EQ(range(L"A1:B2").text(L"MergeCells"), L"False");
    sheet_.at(L"Columns", 3).at(L"Interior").put(L"Color", 255.0);
    EXPECT_EQ(range(L"C77").at(L"Interior").text(L"Color"), L"255") << "of the column";
    EXPECT_EQ(range(L"B1:C1").at(L"Interior").text(L"Color"), L"null");
    range(L"A5:B6").at(L"Borders").put(L"LineStyle", 1);
    range(L"A5:B6").at(L"Borders", 11).put(L"LineStyle", -4142);
    EXPECT_EQ(range(L"A5").at(L"Borders", 10).text(L"LineStyle"), L"-4142");
    EXPECT_EQ(range(L"A5").at(L"Borders", 7).text(L"LineStyle"), L"1");
    EXPECT_EQ(range(L"A5").at(L"Borders", 7).text(L"Weight"), L"2");
}

TEST_F(Server, FormulasFollowTheirCells) {
    Object book = addBook();
    range(L"A1").put(L"Value2", 5.0);
    range(L"B5").put(L"Formula", L"=SUM(A1:A4)+$A$2");
    Object(book.at(L"Worksheets").call(L"Item", 2))
        .at(L"Range", L"A1")
        .put(L"Formula", L"=Sheet1!A2+A2");
    book.at(L"Names").call(L"Add", L"Total", L"=Sheet1!$A$2");
    sheet_.at(L"Rows", 2).call(L"Insert");
    EXPECT_EQ(range(L"B6").text(L"Formula"), L"=SUM(A1:A5)+$A$3");
    EXPECT_EQ(book.at(L"Sheets", 2).at(L"Range", L"A1").text(L"Formula"), L"=Sheet1!A3+A2");
    EXPECT_EQ(range(L"Total").text(L"Address"), L"$A$3");
    sheet_.at(L"Rows", 3).call(L"Delete");
    EXPECT_EQ(range(L"B5").text(L"Formula"), L"=SUM(A1:A4)+#REF!");
    // Copies.
    range(L"C1").put(L"Formula", L"=A1*2");
    range(L"C1").call(L"Copy");
    range(L"C2:C3").call(L"PasteSpecial");
    EXPECT_EQ(range(L"C3").text(L"Formula"), L"=A3*2");
    range(L"A1").at(L"Font").put(L"Bold", true);
    range(L"A1").call(L"Copy");
    range(L"D1").call(L"PasteSpecial", -4163);
    EXPECT_EQ(range(L"D1").text(L"Value2"), L"5");
    EXPECT_EQ(range(L"D1").at(L"Font").text(L"Bold"), L"False");
}

TEST_F(Server, SheetsComeGoAndMove) {
    Object book = addBook();
    Object sheets = book.at(L"Worksheets");
    Object last(sheets.call(L"Item", L"sheet3"));
    last.put(L"Name", L"End");
    last.call(L"Move");
    sheet_.put(L"Name", L"end");
    EXPECT_EQ(Object::failure(), L"another sheet has that name");
    sheet_.call(L"Copy");
    EXPECT_EQ(sheets.text(L"Count"), L"4");
    EXPECT_EQ(book.at(L"ActiveSheet").text(L"Name"), L"Sheet1 (2)");
    book.at(L"ActiveSheet").call(L"Delete");
    sheet_.call(L"Delete");
    EXPECT_EQ(sheet_.text(L"Name"), L"");
    EXPECT_EQ(Object::failure(), L"the object invoked has disconnected from its workbook");
    const Object second(sheets.call(L"Item", 1));
    second.put(L"Visible", 2);
    EXPECT_EQ(second.text(L"Visible"), L"2") << "very hidden";
    last.call(L"Delete");
    EXPECT_EQ(Object::failure(), L"a workbook must keep one visible sheet");
    EXPECT_TRUE(Object(sheets.call(L"Item", 9)).isNothing());
}

TEST_F(Server, SettingsArriveInTheFile) {
    Object book = addBook();
    range(L"A1").put(L"Value2", L"a long heading of the table");
    sheet_.at(L"Columns", 1).call(L"AutoFit");
    EXPECT_GT(headless::realOf(range(L"A1").get(L"ColumnWidth")), 20.0);
    range(L"B3").call(L"Select");
    application_.at(L"ActiveWindow").put(L"FreezePanes", true);
    const Object page = sheet_.at(L"PageSetup");
    page.put(L"Orientation", 2);
    page.put(L"LeftMargin", 36.0);
    page.put(L"CenterHeader", L"Boards");
    page.put(L"RightHeader", L"&P");
    page.put(L"PrintArea", L"$A$1:$C$9");
    page.put(L"PrintTitleRows", L"$1:$2");
    page.put(L"Zoom", false);
    page.put(L"FitToPagesTall", false);
    range(L"A1:C9").call(L"AutoFilter");
    const std::string picture = (folder_.path() / "p.png").string();
    std::ofstream(picture, std::ios::binary) << test_support::onePixelPng();
    const Object shape(sheet_.at(L"Shapes").call(L"AddPicture", path("p.png").c_str(), 0, -1, 100.0,
                                                 20.0, 30.0, 15.0));
    shape.put(L"Width", 60.0);
    EXPECT_EQ(shape.text(L"Height"), L"30") << "the proportions are locked";
    book.put(L"Title", L"Boards");
    range(L"A3:A9").put(L"RowHeight", 20.0);
    range(L"A5:A6").put(L"RowHeight", 30.0);
    range(L"A5:A6").put(L"RowHeight", 20.0);
    range(L"A10").put(L"RowHeight", 20.0);
    book.call(L"SaveAs", path("a").c_str());
    const Object copy(application_.at(L"Workbooks").call(L"Add", path("a.xlsx").c_str()));
    EXPECT_EQ(copy.text(L"Name"), L"Book2") << "a book made after a file does not write to it";
    EXPECT_EQ(book.text(L"Name"), L"a.xlsx");
    EXPECT_EQ(book.text(L"Saved"), L"True");
    const auto read = headless::excel::readWorkbook((folder_.path() / "a.xlsx").string());
    const headless::excel::Sheet& sheet = *read->sheets[0];
    EXPECT_GT(sheet.columns.at(1).width.value_or(0.0), 20.0);
    EXPECT_EQ(sheet.view.frozenRows, 2);
    EXPECT_EQ(sheet.view.frozenColumns, 1);
    EXPECT_TRUE(sheet.page.landscape);
    EXPECT_EQ(sheet.page.leftMargin, 0.5);
    EXPECT_EQ(sheet.page.header, "&CBoards&R&P");
    EXPECT_EQ(sheet.page.printArea, (headless::excel::Area{1, 1, 9, 3}));
    EXPECT_TRUE(sheet.page.fitToPages);
    EXPECT_EQ(sheet.page.fitTall, 0);
    EXPECT_EQ(sheet.autoFilter, (headless::excel::Area{1, 1, 1, 1}));
    std::vector<std::pair<int, int>> heights;
    sheet.rows.forEach([&](int first, int last, const headless::excel::RowProperties& row) {
        if (row.height == 20.0) heights.emplace_back(first, last);
    });
    EXPECT_EQ(heights, (std::vector<std::pair<int, int>>{{3, 10}}));
    ASSERT_EQ(sheet.pictures.size(), 1U);
    EXPECT_NEAR(sheet.pictures[0].width, 60.0, 0.1);
    EXPECT_EQ(read->properties.title, "Boards");
}

TEST_F(Server, SavesTheKindsThatItsEngineWrites) {
    const Object book = addBook();
    book.call(L"SaveAs", path("a.xlsx").c_str(), LONG{51});
    EXPECT_EQ(Object::failure(), L"");
    EXPECT_EQ(book.text(L"FileFormat"), L"51");
    book.call(L"SaveAs", path("b").c_str(), LONG{56});
    EXPECT_NE(Object::failure().find(L"b.xls cannot be written"), std::wstring::npos)
        << "the number chose the ending";
    book.call(L"SaveAs", path("c.pdf").c_str());
    EXPECT_NE(Object::failure().find(L"workbooks end in"), std::wstring::npos);
    book.call(L"SaveAs", path("d").c_str(), LONG{6});
    EXPECT_NE(Object::failure().find(L"(56)"), std::wstring::npos);
    EXPECT_EQ(book.text(L"Name"), L"a.xlsx");
}

TEST_F(Server, AnOfficeCalculatesWhatIsRead) {
#ifndef ORN_WITH_OFFICE
    GTEST_SKIP() << "libreoffice-calc-nogui and libreoffice-dev are not installed";
#endif
    start(headless::excel::officeEngine());
    const Object book = addBook();
    range(L"A1").put(L"Value2", 2.0);
    range(L"A2").put(L"Formula", L"=A1*21");
    EXPECT_EQ(range(L"A2").text(L"Value2"), L"42");
    range(L"A1").put(L"Value2", 3.0);
    EXPECT_EQ(range(L"A2").text(L"Text"), L"63");
    book.call(L"SaveAs", path("a").c_str(), LONG{56});
    EXPECT_EQ(Object::failure(), L"");
    EXPECT_EQ(book.text(L"Name"), L"a.xls");
    book.call(L"Close", false);

    const Object again(application_.at(L"Workbooks").call(L"Open", path("a.xls").c_str()));
    sheet_ = again.at(L"ActiveSheet");
    EXPECT_EQ(range(L"A2").text(L"Value2"), L"63");
    EXPECT_EQ(range(L"A2").text(L"Formula"), L"=A1*21");
    application_.call(L"Quit");
}

/// An engine whose files hold what it cannot keep.
class LosingEngine final : public headless::excel::Engine {
public:
    std::unique_ptr<headless::excel::Workbook> open(const std::string&) override {
        auto book = headless::excel::newWorkbook(1);
        book->leftOut = {"charts", "macros"};
        return book;
    }
    std::vector<std::string> save(const headless::excel::Workbook&, const std::string& path,
                                  headless::excel::FileKind) override {
        saved.push_back(path);
        return {};
    }
    std::vector<std::string> saved;
};

TEST_F(Server, NothingIsDroppedSilently) {
    const auto engine = std::make_shared<LosingEngine>();
    start(engine);
    Object book(application_.at(L"Workbooks").call(L"Open", L"/plans/a.xlsx"));
    book.call(L"Save");
    EXPECT_EQ(Object::failure(),
              L"/plans/a.xlsx was not saved: it holds charts, macros, which would "
              L"be lost. Save it under a new name.");
    book.call(L"SaveAs", L"/plans/a.xlsx");
    EXPECT_FALSE(Object::failure().empty()) << "the same file by another way";
    EXPECT_TRUE(engine->saved.empty());
    book.call(L"SaveAs", L"/plans/b.xlsx");
    ASSERT_EQ(win_.messageBoxes.size(), 1U);
    EXPECT_EQ(win_.messageBoxes[0].text,
              L"/plans/b.xlsx was saved without what could not be kept: charts, macros");
    book.call(L"Save");
    EXPECT_EQ(engine->saved.size(), 2U);
}

TEST_F(Server, ChangesAreAskedAboutWhileVisible) {
    struct Case {
        const char* name;
        bool visible;
        int answer;
        std::size_t boxes;
        int booksLeft;
    };
    const Case cases[] = {
        {"nobody sees it", false, IDYES, 0, 0},
        {"given up", true, IDNO, 1, 0},
        {"stopped", true, IDCANCEL, 1, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        start(headless::excel::embeddedEngine());
        win_.messageBoxes.clear();
        win_.messageBoxAnswers = {c.answer};
        addBook();
        range(L"A1").put(L"Value2", 1.0);
        application_.put(L"Visible", c.visible);
        application_.call(L"Quit");
        EXPECT_EQ(win_.messageBoxes.size(), c.boxes);
        EXPECT_EQ(application_.at(L"Workbooks").text(L"Count"), std::to_wstring(c.booksLeft));
    }
}

} // namespace
