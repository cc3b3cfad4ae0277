// Characters of two bytes whose second one means something to JSON, a backslash above all.
#include "style_file.h"

#include "text/conversions.h"

namespace {

/// All characters of code page 936 whose trail byte lies in a range.
std::vector<std::wstring> charactersWithTrail(int from, int to) {
    std::vector<std::wstring> characters;
    for (int lead = 0x81; lead <= 0xFE; ++lead) {
        for (int trail = from; trail <= to; ++trail) {
            if (trail == 0x7F) continue;
            const std::string pair = {static_cast<char>(lead), static_cast<char>(trail)};
            characters.emplace_back(String::ToCString(pair, false).GetString());
        }
    }
    return characters;
}

class CodePageNames : public StyleFile {
protected:
    /// Saves all components, reads them back, and saves what was read.
    void expectAllKept() {
        const Components back = savedAndRead();
        EXPECT_EQ(messages(), kQuiet);
        ASSERT_EQ(back.size(), components_.size());
        for (const auto& [key, info] : components_) {
            const auto found = back.find(key);
            ASSERT_TRUE(found != back.end()) << CStringA(key).GetString();
            ASSERT_TRUE(fields(found->second) == fields(info)) << CStringA(key).GetString();
        }
        ComponentFunc::SaveComponentInfo(back, path("again.json"));
        EXPECT_EQ(bytes("again.json"), bytes());
    }

    void addEverywhere(const std::wstring& text) {
        ComponentInfo info = named(text.c_str(), text.c_str(), text.c_str());
        info.attributeName = info.hatchName = info.simpleLineLayerInfo.layerName = text.c_str();
        add(info);
    }
};

TEST_F(CodePageNames, WithABackslashAsTrailByteAreKept) {
    const std::vector<std::wstring> characters = charactersWithTrail(0x5C, 0x5C);
    ASSERT_EQ(characters.size(), 126U);
    for (const std::wstring& character : characters)
        for (const wchar_t* tail : {L"", L"n", L"\\", L"\"", L"u4e2d", L"板"})
            addEverywhere(character + tail);
    expectAllKept();
    EXPECT_NE(bytes().find("\"\x81\x5C\x5C\""), std::string::npos);
}

TEST_F(CodePageNames, OfEveryCharacterAreKept) {
    const std::vector<std::wstring> characters = charactersWithTrail(0x40, 0xFE);
    ASSERT_EQ(characters.size(), 23940U);
    constexpr std::size_t kPerName = 20;
    for (std::size_t i = 0; i < characters.size(); i += kPerName) {
        std::wstring name;
        for (std::size_t j = i; j < i + kPerName; ++j)
            name += characters[j];
        addEverywhere(name);
    }
    expectAllKept();
}

TEST_F(CodePageNames, FollowTheSystemsPages) {
    struct Case {
        unsigned page;
        const wchar_t* name;
        const char* written;
    };
    for (const Case& c : {Case{1252, L"Träger", "Tr\xE4ger"}, Case{65001, L"楼板", "楼板"}}) {
        state_.ansiCodePage = state_.oemCodePage = c.page;
        components_.clear();
        addEverywhere(c.name);
        expectAllKept();
        EXPECT_NE(bytes().find(c.written), std::string::npos);
    }
}

TEST_F(CodePageNames, BeyondThePageAreLost) {
    addEverywhere(L"ä\x1F600");
    const Components back = savedAndRead();
    ASSERT_EQ(back.size(), 1U);
    EXPECT_EQ(std::wstring(back.begin()->second.hatchName), L"???") << "one mark for each unit";
}

} // namespace
