// Numbers of a file, well and badly spelt.
#include <gtest/gtest.h>

#include "dxf/value_check.h"

namespace headless {
namespace {

DxfTag tagOf(int code, std::string_view text) {
    DxfTag tag;
    tag.code = static_cast<std::int16_t>(code);
    tag.bytes = text.data();
    tag.length = static_cast<std::uint32_t>(text.size());
    return tag;
}

TEST(CheckValue, KeepsNumbersAndNullsWhatIsNone) {
    struct Case {
        const char* text;
        int code;
        double value;
        bool sound;
    };
    const std::string longNumber = std::string(400, '9');
    const Case cases[] = {
        {"1.5", 10, 1.5, true},
        {"   -12.25  ", 10, -12.25, true},
        {".5", 40, 0.5, true},
        {"-.5", 40, -0.5, true},
        {"1e-3", 40, 0.001, true},
        {"1E+20", 10, 1e20, true},
        {"+7.5", 10, 7.5, true},
        {"1e-999", 40, 0.0, true},
        {"1e999", 10, 0.0, false},
        {"-1e999", 10, 0.0, false},
        {longNumber.c_str(), 10, 0.0, false},
        {"inf", 10, 0.0, false},
        {"nan", 10, 0.0, false},
        {"", 10, 0.0, false},
        {"-", 10, 0.0, false},
        {"--1", 10, 0.0, false},
        {"1,5", 10, 0.0, false},
        {"1.5x", 10, 0.0, false},
        {"1.2.3", 10, 0.0, false},
        {"     7", 62, 7, true},
        {"-7", 62, -7, true},
        {"+7", 62, 7, true},
        {"65535", 70, 65535, true},
        {"-32768", 70, -32768, true},
        {"65536", 70, 0, false},
        {"4294967295", 90, 4294967295.0, true},
        {"4294967296", 90, 0, false},
        {"1099511627776", 160, 1099511627776.0, true},
        {"99999999999999999999", 160, 0, false},
        {"3.0", 70, 3, true},
        {"3.5", 70, 0, false},
        {"red", 62, 0, false},
        {"", 70, 0, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.text) + " as " + std::to_string(c.code));
        DxfTag tag = tagOf(c.code, c.text);
        EXPECT_EQ(!checkValue(tag).has_value(), c.sound);
        const bool real = c.code < 60;
        EXPECT_EQ(real ? tag.real() : static_cast<double>(tag.integer()), c.value);
    }
}

TEST(CheckValue, LeavesTextsAlone) {
    for (const int code : {1, 5, 100, 330, 1000}) {
        DxfTag tag = tagOf(code, "no number");
        EXPECT_FALSE(checkValue(tag).has_value());
        EXPECT_EQ(tag.text(), "no number");
    }
}

} // namespace
} // namespace headless
