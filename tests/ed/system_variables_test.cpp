#include <cstdlib>

#include <gmock/gmock.h>

#include "editor_fixture.h"

namespace {

using headless::HostError;
using SystemVariableTest = EditorTest;

resbuf shortValue(short value) {
    resbuf buffer{};
    buffer.restype = RTSHORT;
    buffer.resval.rint = value;
    return buffer;
}

resbuf realValue(double value) {
    resbuf buffer{};
    buffer.restype = RTREAL;
    buffer.resval.rreal = value;
    return buffer;
}

resbuf textValue(const wchar_t* value) {
    resbuf buffer{};
    buffer.restype = RTSTR;
    buffer.resval.rstring = const_cast<wchar_t*>(value);
    return buffer;
}

resbuf pointValue(short type, double x, double y, double z) {
    resbuf buffer{};
    buffer.restype = type;
    buffer.resval.rpoint[0] = x;
    buffer.resval.rpoint[1] = y;
    buffer.resval.rpoint[2] = z;
    return buffer;
}

TEST_F(SystemVariableTest, AnswersHaveTheDocumentedTypes) {
    const struct {
        const wchar_t* name;
        short type;
    } cases[] = {
        {L"cmdecho", RTSHORT},    {L"FileDia", RTSHORT},   {L"CVPORT", RTSHORT},
        {L"SNAPANG", RTREAL},     {L"VIEWSIZE", RTREAL},   {L"LTSCALE", RTREAL},
        {L"VIEWDIR", RT3DPOINT},  {L"VIEWCTR", RT3DPOINT}, {L"LASTPOINT", RT3DPOINT},
        {L"SCREENSIZE", RTPOINT}, {L"LIMMIN", RTPOINT},    {L"EXTMIN", RT3DPOINT},
        {L"UCSXDIR", RT3DPOINT},  {L"TILEMODE", RTSHORT},  {L"CELWEIGHT", RTSHORT},
        {L"errno", RTSHORT},      {L"INSUNITS", RTSHORT},
    };
    for (const auto& c : cases) {
        resbuf buffer{};
        EXPECT_EQ(acedGetVar(c.name, &buffer), RTNORM) << testing::PrintToString(c.name);
        EXPECT_EQ(buffer.restype, c.type) << testing::PrintToString(c.name);
    }
    resbuf untouched{};
    EXPECT_EQ(acedGetVar(L"NOSUCHVAR", &untouched), RTERROR);
    EXPECT_EQ(untouched.restype, 0);
}

TEST_F(SystemVariableTest, TextsOfAFreshDrawing) {
    const struct {
        const wchar_t *name, *text;
    } cases[] = {
        {L"CLAYER", L"0"},           {L"CELTYPE", L"ByLayer"},      {L"CECOLOR", L"BYLAYER"},
        {L"TEXTSTYLE", L"Standard"}, {L"DIMSTYLE", L"Standard"},    {L"CTAB", L"Model"},
        {L"DWGPREFIX", L"/plans/"},  {L"DWGNAME", L"Storey 1.dxf"},
    };
    for (const auto& c : cases) {
        resbuf buffer{};
        ASSERT_EQ(acedGetVar(c.name, &buffer), RTNORM) << testing::PrintToString(c.name);
        ASSERT_EQ(buffer.restype, RTSTR);
        EXPECT_STREQ(buffer.resval.rstring, c.text) << testing::PrintToString(c.name);
        // Callers may use the C run time's free, so the text must come from malloc.
        std::free(buffer.resval.rstring);
    }
}

TEST_F(SystemVariableTest, SettingIsCheckedAndExplained) {
    const struct {
        const char* name;
        const wchar_t* variable;
        resbuf value;
        int result;
        HostError error;
    } cases[] = {
        {"in range", L"CMDECHO", shortValue(0), RTNORM, HostError::none},
        {"beyond its range", L"CMDECHO", shortValue(2), RTERROR, HostError::outOfRange},
        {"read-only", L"VIEWSIZE", realValue(5), RTERROR, HostError::readOnlyVariable},
        {"read-only of the drawing", L"EXTMIN", pointValue(RT3DPOINT, 0, 0, 0), RTERROR,
         HostError::readOnlyVariable},
        {"unknown", L"NOSUCHVAR", shortValue(0), RTERROR, HostError::none},
        {"integer for a real", L"LTSCALE", shortValue(2), RTNORM, HostError::none},
        {"real for an integer", L"CMDECHO", realValue(1), RTERROR, HostError::none},
        {"text for a number", L"LTSCALE", textValue(L"2"), RTERROR, HostError::none},
        {"scale of zero", L"LTSCALE", realValue(0), RTERROR, HostError::outOfRange},
        {"2D point for a 3D one", L"LASTPOINT", pointValue(RTPOINT, 1, 2, 9), RTNORM,
         HostError::none},
        {"a layer that is not there", L"CLAYER", textValue(L"walls"), RTERROR,
         HostError::badLayerName},
        {"a linetype in any case", L"CELTYPE", textValue(L"CONTINUOUS"), RTNORM, HostError::none},
        {"a colour by number", L"CECOLOR", textValue(L"3"), RTNORM, HostError::none},
        {"a colour beyond the palette", L"CECOLOR", textValue(L"256"), RTERROR,
         HostError::badColorName},
        {"a viewport that is not there", L"CVPORT", shortValue(5), RTERROR, HostError::outOfRange},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        headless::setHostError(HostError::none);
        EXPECT_EQ(acedSetVar(c.variable, &c.value), c.result);
        resbuf error{};
        acedGetVar(L"ERRNO", &error);
        EXPECT_EQ(error.resval.rint, static_cast<short>(c.error));
    }
    EXPECT_EQ(drawing().ltscale(), 2.0);
    EXPECT_EQ(drawing().celtype(), drawing().continuousLinetype());
    EXPECT_EQ(drawing().cecolor().colorIndex(), 3);
    EXPECT_EQ(ed_.variables.point(L"LASTPOINT"), AcGePoint3d(1, 2, 0));
}

TEST_F(SystemVariableTest, TilemodeChoosesSpaceAndViewport) {
    const resbuf paper = shortValue(0);
    ASSERT_EQ(acedSetVar(L"TILEMODE", &paper), RTNORM);
    EXPECT_EQ(drawing().currentSpaceId(), drawing().paperSpaceId());
    EXPECT_EQ(ed_.variables.get(L"CVPORT"), headless::VariableValue(Adesk::Int16{1}));
    const resbuf model = shortValue(1);
    ASSERT_EQ(acedSetVar(L"TILEMODE", &model), RTNORM);
    EXPECT_EQ(drawing().currentSpaceId(), drawing().modelSpaceId());
    EXPECT_EQ(ed_.variables.get(L"CVPORT"), headless::VariableValue(Adesk::Int16{2}));
}

TEST_F(SystemVariableTest, EachDrawingAndEachSessionHasItsOwn) {
    ed_.variables.set(L"LTSCALE", 3.0);
    ed_.variables.set(L"USERS1", std::wstring(L"kept"));
    ed_.documents.open(std::make_unique<AcDbDatabase>(true, true), L"Drawing2.dwg", false);
    EXPECT_EQ(ed_.variables.real(L"LTSCALE"), 1.0);
    EXPECT_EQ(ed_.variables.get(L"USERS1"), headless::VariableValue(std::wstring(L"kept")));
    {
        const headless::EdState other;
        resbuf buffer{};
        ASSERT_EQ(acedGetVar(L"USERS1", &buffer), RTNORM);
        EXPECT_STREQ(buffer.resval.rstring, L"");
        std::free(buffer.resval.rstring);
    }
    ed_.documents.closeAll();
    EXPECT_EQ(ed_.variables.get(L"LTSCALE"), std::nullopt);
}

} // namespace
