#include "mfc/dispatch_driver.h"

#include <vector>

#include <gmock/gmock.h>

#include "argument_kinds.h"
#include "win/unknown.h"

namespace {

/// Notes how it is called and answers with what the test says.
class Recorder : public headless::AutomationObject {
public:
    explicit Recorder(bool& deleted) : deleted_(deleted) {}
    ~Recorder() override { deleted_ = true; }

    HRESULT GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT Invoke(DISPID id, REFIID, LCID, WORD callFlags, DISPPARAMS* parameters, VARIANT* result,
                   EXCEPINFO*, UINT*) override {
        member = id;
        flags = callFlags;
        types.clear();
        for (UINT i = parameters->cArgs; i > 0; --i)
            types.push_back(parameters->rgvarg[i - 1].vt);
        namesPut =
            parameters->cNamedArgs == 1 && parameters->rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
        if (parameters->cArgs > 0 && result != nullptr)
            return VariantCopy(result, &parameters->rgvarg[0]); // the last argument
        return S_OK;
    }

    DISPID member = 0;
    WORD flags = 0;
    std::vector<VARTYPE> types;
    bool namesPut = false;

private:
    bool& deleted_;
};

class DispatchDriverTest : public testing::Test {
protected:
    DispatchDriverTest() {
        object_->AddRef();
        driver_.AttachDispatch(object_);
    }
    ~DispatchDriverTest() override {
        driver_.ReleaseDispatch();
        EXPECT_TRUE(deleted_) << "a reference was lost";
        EXPECT_EQ(headless::liveBstrCount(), strings_);
    }

    std::size_t strings_ = headless::liveBstrCount();
    bool deleted_ = false;
    Recorder* object_ = new Recorder(deleted_);
    COleDispatchDriver driver_;
};

TEST_F(DispatchDriverTest, ReferencesAreCounted) {
    EXPECT_EQ(object_->AddRef(), 2U);
    EXPECT_EQ(object_->Release(), 1U);
    {
        const COleDispatchDriver second = driver_;
        COleDispatchDriver third;
        third = second;
        third = third;
        EXPECT_EQ(object_->AddRef(), 4U);
        EXPECT_EQ(object_->Release(), 3U);
    }
    {
        COleDispatchDriver borrowing(object_, FALSE);
        COleDispatchDriver leaving(object_);
        EXPECT_EQ(leaving.DetachDispatch(), object_);
    }
    void* same = nullptr;
    EXPECT_EQ(object_->QueryInterface(IID_IDispatch, &same), S_OK);
    EXPECT_EQ(same, static_cast<IDispatch*>(object_));
    EXPECT_EQ(object_->Release(), 1U);
    EXPECT_EQ(object_->QueryInterface(IID_NULL, &same), E_NOINTERFACE);
    EXPECT_EQ(same, nullptr);
}

TEST_F(DispatchDriverTest, ArgumentsAndResults) {
    CString text;
    driver_.InvokeHelper(7, DISPATCH_METHOD, VT_BSTR, &text,
                         test_support::kinds(VTS_I2 VTS_BOOL VTS_BSTR), 1, TRUE, L"梁");
    EXPECT_EQ(text, L"梁");
    EXPECT_EQ(object_->member, 7);
    EXPECT_THAT(object_->types, testing::ElementsAre(VT_I2, VT_BOOL, VT_BSTR));

    double real = 0;
    driver_.InvokeHelper(8, DISPATCH_METHOD, VT_R8, &real, test_support::kinds(VTS_I4 VTS_R8),
                         LONG{1}, 2.5);
    EXPECT_EQ(real, 2.5);
    BOOL flag = FALSE;
    driver_.InvokeHelper(8, DISPATCH_METHOD, VT_BOOL, &flag, test_support::kinds(VTS_BOOL), 17);
    EXPECT_EQ(flag, TRUE);
    LPDISPATCH same = nullptr;
    driver_.InvokeHelper(8, DISPATCH_PROPERTYGET, VT_DISPATCH, &same,
                         test_support::kinds(VTS_DISPATCH), static_cast<LPDISPATCH>(object_));
    EXPECT_EQ(same, object_);
    EXPECT_EQ(same->Release(), 1U) << "the caller's own reference";

    VARIANT number{};
    number.vt = VT_I4;
    number.lVal = 5;
    VARIANT answer{};
    driver_.InvokeHelper(9, DISPATCH_PROPERTYPUT, VT_VARIANT, &answer,
                         test_support::kinds(VTS_VARIANT), &number);
    EXPECT_EQ(answer.lVal, 5);
    EXPECT_TRUE(object_->namesPut);
    driver_.InvokeHelper(10, DISPATCH_METHOD, VT_EMPTY, nullptr, VTS_NONE);
    EXPECT_TRUE(object_->types.empty());
}

TEST_F(DispatchDriverTest, ResultsOfAnotherTypeAndCallsOfNothingAreThrown) {
    LONG unused = 0;
    COleDispatchDriver empty;
    for (COleDispatchDriver* const driver : {&driver_, &empty}) {
        try {
            driver->InvokeHelper(1, DISPATCH_METHOD, VT_UNKNOWN, &unused, VTS_NONE);
            ADD_FAILURE() << "nothing thrown";
        } catch (COleException* exception) {
            EXPECT_TRUE(driver == &empty || exception->m_sc == DISP_E_TYPEMISMATCH);
            exception->Delete();
        }
    }
}

} // namespace
