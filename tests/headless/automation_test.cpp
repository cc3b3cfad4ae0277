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
