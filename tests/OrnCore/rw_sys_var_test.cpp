#include <aced.h>
#include <adslib.h>

#include "OrnCore/rw_sys_var.h"
#include "OrnCore/zel_cmd.h"
#include "support/session_fixture.h"

namespace {

using SysVarTest = test_support::SessionTest;

TEST_F(SysVarTest, IntegersAsTheyAre) {
    EXPECT_NE(rwSysVar::SetVar(L"useri1", -12), 0);
    int value = 99;
    EXPECT_NE(rwSysVar::GetVar(L"USERI1", &value), 0);
    EXPECT_EQ(value, -12);
    for (const wchar_t* name : {L"NOSUCHVAR", L"LTSCALE", L"CLAYER"}) {
        EXPECT_EQ(rwSysVar::GetVar(name, &value), 0);
        EXPECT_EQ(value, -12) << "stays as it is";
    }
    EXPECT_EQ(rwSysVar::GetVar(L"USERI1", static_cast<int*>(nullptr)), 0);
    EXPECT_EQ(rwSysVar::SetVar(L"CMDECHO", 2), 0);
    EXPECT_EQ(rwSysVar::SetVar(L"USERI1", 70000), 0) << "more than the variable holds";
}

TEST_F(SysVarTest, RealsAndPoints) {
    double real = 99.0;
    EXPECT_NE(rwSysVar::GetVar(L"LTSCALE", &real), 0);
    EXPECT_EQ(real, 1.0);
    EXPECT_NE(rwSysVar::GetVar(L"PICKBOX", &real), 0) << "an integer";
    EXPECT_EQ(real, 3.0);
    AcGePoint3d point(9, 9, 9);
    EXPECT_NE(rwSysVar::GetVar(L"SCREENSIZE", &point), 0) << "of the plane";
    EXPECT_EQ(point, AcGePoint3d(1600, 900, 0));
    for (const wchar_t* name : {L"NOSUCHVAR", L"CLAYER"}) {
        EXPECT_EQ(rwSysVar::GetVar(name, &real), 0);
        EXPECT_EQ(rwSysVar::GetVar(name, &point), 0);
    }
    EXPECT_EQ(real, 3.0) << "stays as it is";
}

TEST_F(SysVarTest, CommandsTakeTheirAnswers) {
    EXPECT_EQ(CZelCmd::Run(L"ZOOM", {L"C", L"10,20", L"30"}), RTNORM);
    EXPECT_EQ(CZelCmd::Run(L"ZOOM", {L""}), RTNORM) << "Enter alone changes nothing";
    resbuf height = {};
    acedGetVar(L"VIEWSIZE", &height);
    EXPECT_EQ(height.resval.rreal, 30.0);
    EXPECT_EQ(CZelCmd::ZoomExtents(), RTNORM);
    acedGetVar(L"VIEWSIZE", &height);
    EXPECT_EQ(height.resval.rreal, 297.0) << "the limits of an empty drawing";
    EXPECT_NE(CZelCmd::Run(L"NOSUCHCOMMAND"), RTNORM);
}

} // namespace
