#include <gtest/gtest.h>

#include <string>

#include <afxdisp.h>

#include "argument_kinds.h"
#include "win/served_object.h"
#include "win/state.h"

using headless::AutomationError;
using headless::CallArguments;
using headless::MemberTable;
using headless::OwnedVariant;

namespace {

/// A number with a few members.
class Counter final : public headless::ServedObject {
public:
    double value() const { return value_; }
    void setValue(const VARIANT& value) { value_ = headless::realOf(value); }
    OwnedVariant item(const CallArguments& arguments) const {
        if (!arguments.has(0)) return L"nothing";
        return std::to_wstring(arguments.integer(0, -1)) + L"/" + arguments.text(1);
    }
    void fail() { throw AutomationError(E_FAIL, "板 is broken"); }
    IDispatch* itself() {
        AddRef();
        return this;
    }
    OwnedVariant nobody() const { return {}; }

protected:
    const MemberTable& members() const override {
        using namespace headless;
        static const MemberTable table{
            {1, L"Value", reads<&Counter::value>, writes<&Counter::setValue>},
            {2, L"Item", reads<&Counter::item>},
            {3, L"Fail", nullptr, nullptr, calls<&Counter::fail>},
            {4, L"Itself", reads<&Counter::itself>},
            {5, L"Nobody", reads<&Counter::nobody>},
        };
        return table;
    }
    const wchar_t* source() const override { return L"Counter"; }

private:
    double value_ = 0;
};

constexpr CLSID kCounterClass = {1, 2, 3, {4}};
class Automation : public testing::Test {
protected:
    Automation() {
        win_.automationServers.add(
            {L"Test.Counter", kCounterClass, [] { return headless::newServed<Counter>(); }});
        before_ = headless::liveAutomationReferences();
    }
    void TearDown() override { EXPECT_EQ(headless::liveAutomationReferences(), before_); }

    headless::WinState win_;
    std::size_t before_ = 0;
};

TEST_F(Automation, ServersAreFoundByTheirNames) {
    COleDispatchDriver driver;
    COleException why;
    EXPECT_FALSE(driver.CreateDispatch(L"Test.Missing", &why));
    EXPECT_EQ(why.m_sc, CO_E_CLASSSTRING);
    EXPECT_FALSE(driver.CreateDispatch(CLSID{9, 9, 9, {9}}, &why));
    EXPECT_EQ(why.m_sc, REGDB_E_CLASSNOTREG);
    EXPECT_EQ(driver.m_lpDispatch, nullptr);
    EXPECT_TRUE(driver.CreateDispatch(L"test.counter"));
    EXPECT_NE(driver.m_lpDispatch, nullptr);
}

TEST_F(Automation, CallsCarryArgumentsAndResults) {
    COleDispatchDriver driver;
    ASSERT_TRUE(driver.CreateDispatch(L"Test.Counter"));
    driver.InvokeHelper(1, DISPATCH_PROPERTYPUT, VT_EMPTY, nullptr, test_support::kinds(VTS_I4),
                        41L);
    LONG whole = 0;
    driver.GetProperty(1, VT_I4, &whole);
    EXPECT_EQ(whole, 41);
    driver.SetProperty(1, VT_R8, 2.5);
    CString text;
    driver.InvokeHelper(1, DISPATCH_PROPERTYGET, VT_BSTR, &text, nullptr);
    EXPECT_STREQ(text, L"2.5");

    driver.InvokeHelper(2, DISPATCH_PROPERTYGET, VT_BSTR, &text,
                        test_support::kinds(VTS_I2 VTS_BSTR), 7, L"板");
    EXPECT_STREQ(text, L"7/板") << "arguments arrive in the order written";
    COleVariant missing(long{DISP_E_PARAMNOTFOUND}, VT_ERROR);
    driver.InvokeHelper(2, DISPATCH_PROPERTYGET, VT_BSTR, &text, test_support::kinds(VTS_VARIANT),
                        &missing);
    EXPECT_STREQ(text, L"nothing");

    LPDISPATCH other = driver;
    driver.InvokeHelper(5, DISPATCH_PROPERTYGET, VT_DISPATCH, &other, nullptr);
    EXPECT_EQ(other, nullptr);
    driver.InvokeHelper(4, DISPATCH_PROPERTYGET, VT_DISPATCH, &other, nullptr);
    ASSERT_EQ(other, driver.m_lpDispatch);
    other->Release();
}

TEST_F(Automation, FailuresAreExceptionsWithTheirReasons) {
    COleDispatchDriver driver;
    ASSERT_TRUE(driver.CreateDispatch(L"Test.Counter"));
    try {
        driver.InvokeHelper(3, DISPATCH_METHOD, VT_EMPTY, nullptr, nullptr);
        ADD_FAILURE() << "nothing thrown";
    } catch (COleDispatchException* exception) {
        EXPECT_STREQ(exception->m_strDescription, L"板 is broken");
        EXPECT_STREQ(exception->m_strSource, L"Counter");
        EXPECT_EQ(exception->m_scError, E_FAIL);
        exception->Delete();
    }
    const struct {
        const char* name;
        DISPID member;
        WORD flags;
        const char* kinds;
        SCODE status;
    } cases[] = {
        {"no such member", 99, DISPATCH_METHOD, nullptr, DISP_E_MEMBERNOTFOUND},
        {"a method is no property", 3, DISPATCH_PROPERTYGET, nullptr, DISP_E_MEMBERNOTFOUND},
        {"read-only", 4, DISPATCH_PROPERTYPUT, VTS_BSTR, DISP_E_MEMBERNOTFOUND},
        {"not a number", 1, DISPATCH_PROPERTYPUT, VTS_BSTR, DISP_E_TYPEMISMATCH},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        try {
            driver.InvokeHelper(c.member, c.flags, VT_EMPTY, nullptr,
                                c.kinds == nullptr ? nullptr : test_support::kinds(c.kinds),
                                L"abc");
            ADD_FAILURE() << "nothing thrown";
        } catch (COleException* exception) {
            EXPECT_EQ(exception->m_sc, c.status);
            exception->Delete();
        }
    }
    OLECHAR name[] = L"VALUE";
    OLECHAR unknown[] = L"Velue";
    LPOLESTR names[] = {name, unknown};
    DISPID id = 0;
    EXPECT_EQ(driver.m_lpDispatch->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id),
              S_OK);
    EXPECT_EQ(id, 1);
    EXPECT_EQ(driver.m_lpDispatch->GetIDsOfNames(IID_NULL, names + 1, 1, LOCALE_USER_DEFAULT, &id),
              DISP_E_UNKNOWNNAME);
}

TEST(OleVariants, HoldWhatTheyAreGiven) {
    CString text = L"板";
    EXPECT_EQ(COleVariant(text).vt, VT_BSTR);
    EXPECT_EQ(COleVariant(short{3}).vt, VT_I2);
    EXPECT_EQ(COleVariant(long{1}, VT_BOOL).boolVal, VARIANT_TRUE);
    COleVariant value(2.5);
    COleVariant copy = value;
    EXPECT_TRUE(copy == value);
    copy = L"abc";
    EXPECT_FALSE(copy == value);
    try {
        copy.ChangeType(VT_R8);
        ADD_FAILURE() << "nothing thrown";
    } catch (COleException* exception) {
        EXPECT_EQ(COleException::Process(exception), DISP_E_TYPEMISMATCH);
        exception->Delete();
    }
    const VARIANT detached = copy.Detach();
    EXPECT_EQ(copy.vt, VT_EMPTY);
    VARIANT again = detached;
    value.Attach(again);
    EXPECT_STREQ(value.bstrVal, L"abc");
}

} // namespace
