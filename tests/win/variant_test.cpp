#include <gtest/gtest.h>

#include <oleauto.h>

#include "win/owned_variant.h"

using headless::OwnedVariant;

namespace {

template <class Set>
VARIANT made(VARTYPE type, Set set) {
    VARIANT value{};
    set(value);
    value.vt = type;
    return value;
}
VARIANT real(double number) {
    return made(VT_R8, [&](VARIANT& v) { v.dblVal = number; });
}
VARIANT single(float number) {
    return made(VT_R4, [&](VARIANT& v) { v.fltVal = number; });
}
VARIANT date(double days) {
    return made(VT_DATE, [&](VARIANT& v) { v.date = days; });
}
VARIANT money(LONGLONG tenThousandths) {
    return made(VT_CY, [&](VARIANT& v) { v.cyVal.int64 = tenThousandths; });
}
VARIANT boolean(SHORT value) {
    return made(VT_BOOL, [&](VARIANT& v) { v.boolVal = value; });
}
VARIANT integer(LONGLONG number, VARTYPE type = VT_I4) {
    return made(type, [&](VARIANT& v) { v.llVal = number; });
}

/// What the value becomes as a text; the status when it cannot.
std::wstring changedToText(const VARIANT& value, USHORT flags = 0) {
    OwnedVariant text;
    const HRESULT status = VariantChangeType(&text, &value, flags, VT_BSTR);
    return FAILED(status) ? L"failed" : std::wstring(headless::textOf(text.bstrVal));
}

// The expected texts and numbers were recorded from another implementation of these calls.
TEST(Variants, BecomeTexts) {
    const struct {
        VARIANT value;
        USHORT flags;
        const wchar_t* text;
    } cases[] = {
        {real(0), 0, L"0"},
        {real(-0.0), 0, L"0"},
        {real(1.0049999999999999), 0, L"1.005"},
        {real(1.0 / 3.0), 0, L"0.333333333333333"},
        {real(0.0001), 0, L"0.0001"},
        {real(1.5e-7), 0, L"1.5E-07"},
        {real(1e14), 0, L"100000000000000"},
        {real(1234567890123456.0), 0, L"1.23456789012346E+15"},
        {real(1e100), 0, L"1E+100"},
        {single(0.1F), 0, L"0.1"},
        {single(1e7F), 0, L"1E+07"},
        {single(16777216.0F), 0, L"1.677722E+07"},
        {money(-12345), 0, L"-1.2345"},
        {money(99999999999999), 0, L"9999999999.9999"},
        {boolean(-1), 0, L"-1"},
        {boolean(-1), VARIANT_ALPHABOOL, L"True"},
        {boolean(0), VARIANT_LOCALBOOL, L"假"},
        {boolean(5), 0, L"5"},
        {integer(9007199254740993, VT_I8), 0, L"9007199254740993"},
        {date(36526), 0, L"2000/1/1"},
        {date(0.25), 0, L"6:00:00"},
        {date(45000.5), 0, L"2023/3/15 12:00:00"},
        {date(-1.25), 0, L"1899/12/29 6:00:00"},
        {date(45292.999999), 0, L"2024/1/2 0:00:00"},
        {VARIANT{}, 0, L""},
        {integer(0, VT_NULL), 0, L"failed"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(changedToText(c.value, c.flags), c.text);
}

TEST(Variants, TextsBecomeNumbers) {
    const struct {
        const wchar_t* text;
        HRESULT status;
        double number;
    } cases[] = {
        {L" 12 ", S_OK, 12},
        {L"(5)", S_OK, -5},
        {L"5-", S_OK, -5},
        {L"1,23,4", S_OK, 1234},
        {L"1,5", S_OK, 15},
        {L"1E+3", S_OK, 1000},
        {L"5.", S_OK, 5},
        {L"&H1F", S_OK, 31},
        {L"&O17", S_OK, 15},
        {L"¥5", S_OK, 5},
        {L"", DISP_E_TYPEMISMATCH, 0},
        {L"1d3", DISP_E_TYPEMISMATCH, 0},
        {L"0x1F", DISP_E_TYPEMISMATCH, 0},
        {L"1 2", DISP_E_TYPEMISMATCH, 0},
        {L"12abc", DISP_E_TYPEMISMATCH, 0},
        {L"--5", DISP_E_TYPEMISMATCH, 0},
        {L"inf", DISP_E_TYPEMISMATCH, 0},
        {L"１２", DISP_E_TYPEMISMATCH, 0},
        {L"50%", DISP_E_TYPEMISMATCH, 0},
        {L"1e400", DISP_E_OVERFLOW, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(c.text)));
        OwnedVariant value(c.text);
        ASSERT_EQ(VariantChangeType(&value, &value, 0, VT_R8), c.status);
        if (FAILED(c.status)) {
            EXPECT_EQ(value.vt, VT_BSTR) << "a failing change leaves the value as it was";
        } else {
            EXPECT_EQ(value.dblVal, c.number);
        }
    }
}

TEST(Variants, IntegersRoundToEvenAndKeepToTheirRange) {
    const struct {
        VARIANT value;
        VARTYPE type;
        HRESULT status;
        LONGLONG number;
    } cases[] = {
        {real(2.5), VT_I4, S_OK, 2},
        {real(-1.5), VT_I4, S_OK, -2},
        {real(2147483647.4), VT_I4, S_OK, 2147483647},
        {real(2147483647.5), VT_I4, DISP_E_OVERFLOW, 0},
        {integer(-1), VT_UI1, DISP_E_OVERFLOW, 0},
        {integer(-1), VT_UI4, S_OK, 4294967295},
        {integer(4000000000, VT_UI4), VT_I4, S_OK, -294967296},
        {integer(200, VT_UI1), VT_I1, S_OK, -56},
        {integer(9007199254740993, VT_I8), VT_I4, DISP_E_OVERFLOW, 0},
        {boolean(-1), VT_UI1, S_OK, 255},
        {money(25000), VT_I4, S_OK, 2},
        {integer(2147483647), VT_DATE, DISP_E_OVERFLOW, 0},
        {integer(0, 77), VT_I4, DISP_E_BADVARTYPE, 0},
        {integer(0), 77, DISP_E_BADVARTYPE, 0},
    };
    for (const auto& c : cases) {
        OwnedVariant result;
        ASSERT_EQ(VariantChangeType(&result, &c.value, 0, c.type), c.status);
        OwnedVariant wide;
        if (SUCCEEDED(c.status)) {
            ASSERT_EQ(VariantChangeType(&wide, &result, 0, VT_I8), S_OK);
            EXPECT_EQ(wide.llVal, c.number);
        }
    }
}

TEST(Variants, CopiesAreTheirOwn) {
    const std::size_t strings = headless::liveBstrCount();
    const std::size_t arrays = headless::liveSafeArrayCount();
    {
        const OwnedVariant text(L"board");
        OwnedVariant copy;
        ASSERT_EQ(VariantCopy(&copy, &text), S_OK);
        EXPECT_NE(copy.bstrVal, text.bstrVal);
        VARIANT reference{};
        reference.vt = VT_BYREF | VT_VARIANT;
        reference.pvarVal = &copy;
        OwnedVariant read;
        ASSERT_EQ(VariantCopyInd(&read, &reference), S_OK);
        EXPECT_EQ(headless::textOf(read.bstrVal), L"board");

        OwnedVariant array = OwnedVariant::array(SafeArrayCreateVector(VT_VARIANT, 1, 2));
        LONG index = 2;
        ASSERT_EQ(SafeArrayPutElement(array.parray, &index, &read), S_OK);
        OwnedVariant secondArray;
        ASSERT_EQ(VariantCopy(&secondArray, &array), S_OK);
        VariantClear(&array);
        OwnedVariant element;
        ASSERT_EQ(SafeArrayGetElement(secondArray.parray, &index, &element), S_OK);
        EXPECT_EQ(headless::textOf(element.bstrVal), L"board");
        index = 3;
        EXPECT_EQ(SafeArrayGetElement(secondArray.parray, &index, &element), DISP_E_BADINDEX);
    }
    EXPECT_EQ(headless::liveBstrCount(), strings);
    EXPECT_EQ(headless::liveSafeArrayCount(), arrays);
}

TEST(SafeArrays, LieColumnByColumn) {
    const SAFEARRAYBOUND bounds[] = {{2, 1}, {3, 1}};
    SAFEARRAY* array = SafeArrayCreate(VT_I4, 2, bounds);
    ASSERT_NE(array, nullptr);
    LONG number = 23;
    const LONG indices[] = {2, 3};
    ASSERT_EQ(SafeArrayPutElement(array, indices, &number), S_OK);
    void* data = nullptr;
    ASSERT_EQ(SafeArrayAccessData(array, &data), S_OK);
    EXPECT_EQ(static_cast<LONG*>(data)[5], 23);
    EXPECT_EQ(SafeArrayDestroy(array), DISP_E_ARRAYISLOCKED);
    SafeArrayUnaccessData(array);
    EXPECT_EQ(array->rgsabound[0].cElements, 3U) << "the last dimension stands first";
    LONG bound = 0;
    EXPECT_EQ(SafeArrayGetUBound(array, 2, &bound), S_OK);
    EXPECT_EQ(bound, 3);
    EXPECT_EQ(SafeArrayDestroy(array), S_OK);
    const SAFEARRAYBOUND absurd[] = {{0xFFFFFFFF, 0}, {0xFFFFFFFF, 0}};
    EXPECT_EQ(SafeArrayCreate(VT_VARIANT, 2, absurd), nullptr);
}

TEST(VariantTime, IsTheCalendar) {
    SYSTEMTIME time{};
    ASSERT_TRUE(VariantTimeToSystemTime(-1.25, &time));
    EXPECT_EQ(time.wYear, 1899);
    EXPECT_EQ(time.wDay, 29);
    EXPECT_EQ(time.wDayOfWeek, 5);
    EXPECT_EQ(time.wHour, 6);
    double days = 0;
    EXPECT_TRUE(SystemTimeToVariantTime(&time, &days));
    EXPECT_EQ(days, -1.25);
    EXPECT_FALSE(VariantTimeToSystemTime(2958466.0, &time));
}

} // namespace
