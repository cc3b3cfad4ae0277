// The program as other programs drive it.
#include <afxdisp.h>
#include <dbents.h>
#include <rxmfcapi.h>

#include "ed/state.h"
#include "headless/session.h"
#include "support/session_fixture.h"

namespace {

class AutomationTest : public test_support::SessionTest {
protected:
    static double viewHeight() { return headless::EdState::current().variables.real(L"VIEWSIZE"); }
};

TEST_F(AutomationTest, ZoomsByNumberAndByName) {
    add(std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 594, 0)));
    COleDispatchDriver driver(acedGetAcadWinApp()->GetIDispatch(TRUE));
    driver.InvokeHelper(37, DISPATCH_METHOD, VT_EMPTY, nullptr, VTS_NONE);
    EXPECT_EQ(viewHeight(), 594.0);

    LPDISPATCH object = driver;
    OLECHAR name[] = L"zoomextents";
    LPOLESTR names[] = {name};
    DISPID id = 0;
    ASSERT_EQ(object->GetIDsOfNames(IID_NULL, names, 1, 0, &id), S_OK);
    driver.InvokeHelper(id, DISPATCH_METHOD, VT_EMPTY, nullptr, VTS_NONE);
    EXPECT_EQ(headless::EdState::current().variables.point(L"VIEWCTR").x, 5.0);
    name[0] = L'x';
    EXPECT_EQ(object->GetIDsOfNames(IID_NULL, names, 1, 0, &id), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(id, DISPID_UNKNOWN);

    session().closeDrawings();
    driver.InvokeHelper(37, DISPATCH_METHOD, VT_EMPTY, nullptr, VTS_NONE);
}

/// An array of that type, or of variants; the values are converted.
COleVariant arrayOf(VARTYPE type, const std::vector<double>& values) {
    COleVariant array;
    array.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    array.parray = SafeArrayCreateVector(type, 1, static_cast<ULONG>(values.size()));
    LONG index = 1;
    for (const double value : values) {
        COleVariant element(value);
        if (type == VT_VARIANT) {
            EXPECT_EQ(SafeArrayPutElement(array.parray, &index, &element), S_OK);
        } else {
            EXPECT_EQ(VariantChangeType(&element, &element, 0, type), S_OK);
            EXPECT_EQ(SafeArrayPutElement(array.parray, &index, &element.llVal), S_OK);
        }
        ++index;
    }
    return array;
}

TEST_F(AutomationTest, ZoomsToPlaces) {
    const COleVariant low = arrayOf(VT_R8, {10, 20, 0});
    const COleVariant high = arrayOf(VT_VARIANT, {20, 60, 5});
    const COleVariant whole = arrayOf(VT_I4, {3, 4, 0});
    const COleVariant flat = arrayOf(VT_R8, {3, 4});
    COleVariant byReference;
    byReference.vt = VT_BYREF | VT_VARIANT;
    byReference.pvarVal = const_cast<COleVariant*>(&low);
    const struct {
        const char* name;
        const wchar_t* method;
        std::vector<COleVariant> arguments; // as they are written
        HRESULT result;
        UINT wrong; // counted from the last
        double x, y, height;
    } cases[] = {
        {"a box", L"ZoomWindow", {low, high}, S_OK, 9, 15, 40, 40},
        {"corners the other way round", L"zoomwindow", {high, byReference}, S_OK, 9, 15, 40, 40},
        {"a place and a height", L"ZoomCenter", {whole, COleVariant(50.0)}, S_OK, 9, 3, 4, 50},
        {"a text that is a number", L"ZoomCenter", {low, L"7"}, S_OK, 9, 10, 20, 7},
        {"no height", L"ZoomCenter", {low, COleVariant(0.0)}, E_INVALIDARG, 9, 10, 20, 7},
        {"two coordinates", L"ZoomWindow", {flat, low}, DISP_E_TYPEMISMATCH, 1, 10, 20, 7},
        {"a number", L"ZoomWindow", {low, COleVariant(1.0)}, DISP_E_TYPEMISMATCH, 0, 10, 20, 7},
        {"no number", L"ZoomCenter", {low, L"x"}, DISP_E_TYPEMISMATCH, 0, 10, 20, 7},
        {"too few", L"ZoomCenter", {low}, DISP_E_BADPARAMCOUNT, 9, 10, 20, 7},
    };
    COleDispatchDriver driver(acedGetAcadWinApp()->GetIDispatch(TRUE));
    const LPDISPATCH object = driver;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::wstring name = c.method;
        LPOLESTR names[] = {name.data()};
        DISPID id = 0;
        ASSERT_EQ(object->GetIDsOfNames(IID_NULL, names, 1, 0, &id), S_OK);
        std::vector<VARIANT> given(c.arguments.rbegin(), c.arguments.rend());
        DISPPARAMS parameters = {given.data(), nullptr, static_cast<UINT>(given.size()), 0};
        UINT wrong = 9;
        EXPECT_EQ(
            object->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, &wrong),
            c.result);
        EXPECT_EQ(wrong, c.wrong);
        const AcGePoint3d center = headless::EdState::current().variables.point(L"VIEWCTR");
        EXPECT_TRUE(center.isEqualTo({c.x, c.y, center.z})) << center.x << ' ' << center.y;
        EXPECT_NEAR(viewHeight(), c.height, 1e-9);
    }
}

TEST(Automation, ReferencesKeptAreLeftovers) {
    const headless::Session session;
    EXPECT_TRUE(session.leftovers().empty());
    const LPDISPATCH kept = acedGetAcadWinApp()->GetIDispatch(TRUE);
    ASSERT_EQ(session.leftovers().size(), 1U);
    EXPECT_EQ(session.leftovers()[0], "1 references to automation objects were not released");
    kept->Release();
    EXPECT_TRUE(session.leftovers().empty());
}

TEST(Automation, ProgramsThatCannotBeDriven) {
    headless::SessionOptions options;
    options.automation = false;
    const headless::Session session(options);
    EXPECT_EQ(acedGetAcadWinApp()->GetIDispatch(TRUE), nullptr);
    EXPECT_TRUE(session.leftovers().empty());
}

} // namespace
