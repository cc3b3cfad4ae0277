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
                   EXCEPINFO* exception, UINT*) override {
        member = id;
        flags = callFlags;
        types.clear();
        for (UINT i = parameters->cArgs; i > 0; --i)
            types.push_back(parameters->rgvarg[i - 1].vt);
        namesPut =
            parameters->cNamedArgs == 1 && parameters->rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
        if (parameters->cArgs > 0 && result != nullptr)
            return VariantCopy(result, &parameters->rgvarg[0]); // the last argument
        if (status == DISP_E_EXCEPTION) exception->bstrDescription = SysAllocString(L"no sheet");
        return status;
    }

    DISPID member = 0;
    WORD flags = 0;
    std::vector<VARTYPE> types;
    bool namesPut = false;
    HRESULT status = S_OK;

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

template <class Exception, class Call>
Exception* thrownBy(Call call) {
    try {
        call();
    } catch (Exception* exception) {
        return exception;
    }
    return nullptr;
}

TEST_F(DispatchDriverTest, FailuresAreThrown) {
    object_->status = DISP_E_EXCEPTION;
    auto* told = thrownBy<COleDispatchException>(
        [&] { driver_.InvokeHelper(1, DISPATCH_METHOD, VT_EMPTY, nullptr, VTS_NONE); });
    ASSERT_NE(told, nullptr);
    EXPECT_EQ(told->m_strDescription, L"no sheet");
    told->Delete();

    struct Case {
        const char* name;
        HRESULT status;
        VARTYPE type;
        SCODE code;
    };
    const Case cases[] = {
        {"refused", DISP_E_MEMBERNOTFOUND, VT_EMPTY, DISP_E_MEMBERNOTFOUND},
        {"a result of another type", S_OK, VT_UNKNOWN, DISP_E_TYPEMISMATCH},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        object_->status = c.status;
        LONG unused = 0;
        auto* failure = thrownBy<COleException>(
            [&] { driver_.InvokeHelper(1, DISPATCH_METHOD, c.type, &unused, VTS_NONE); });
        ASSERT_NE(failure, nullptr);
        EXPECT_EQ(failure->m_sc, c.code);
        failure->Delete();
    }
    COleDispatchDriver empty;
    auto* failure = thrownBy<COleException>(
        [&] { empty.InvokeHelper(1, DISPATCH_METHOD, VT_EMPTY, nullptr, VTS_NONE); });
    ASSERT_NE(failure, nullptr);
    failure->Delete();
}

} // namespace
