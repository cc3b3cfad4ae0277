#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <afxwin.h>

#include "win/native_path.h"
#include "win/state.h"

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

/// The cause of the file exception that `action` raises; none when it raises none.
template <class Action>
int causeOf(Action action) {
    try {
        action();
    } catch (CFileException* exception) {
        const int cause = exception->m_cause;
        exception->Delete();
        return cause;
    }
    return CFileException::none;
}

class Files : public testing::Test {
protected:
    Files() {
        char pattern[] = "/tmp/mfc-files-XXXXXX";
        folder_ = mkdtemp(pattern);
    }
    ~Files() override { fs::remove_all(folder_); }

    /// A path as Windows programs write it.
    [[nodiscard]] CString path(const wchar_t* name) const {
        CString path = headless::platformPath(folder_.string()).c_str();
        path += L"\\";
        return path + name;
    }
    [[nodiscard]] std::string bytesOf(const char* name) const {
        std::ifstream file(folder_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void store(const char* name, const std::string& bytes) const {
        std::ofstream(folder_ / name, std::ios::binary) << bytes;
    }

    fs::path folder_;
};

TEST_F(Files, TextIsWrittenInTheAnsiPageWithCrLf) {
    const UINT text = CFile::modeCreate | CFile::modeWrite | CFile::typeText;
    const struct {
        const char* name;
        unsigned page;
        UINT flags;
        const wchar_t* text;
        std::string bytes;
    } cases[] = {
        {"936", 936, text, L"中\n文", "\xD6\xD0\r\n\xCE\xC4"},
        {"what the page lacks", 1252, text, L"é中", "\xE9?"},
        {"UTF-8", 65001, text, L"中\n", "\xE4\xB8\xAD\r\n"},
        {"text is the default", 936, CFile::modeCreate | CFile::modeWrite, L"a\n\n", "a\r\n\r\n"},
        {"CR LF doubles its CR", 936, text, L"a\r\n", "a\r\r\n"},
        {"binary", 936, CFile::modeCreate | CFile::modeWrite | CFile::typeBinary, L"中\n\U0001F600",
         "\x2D\x4E\n\0\x3D\xD8\x00\xDE"s},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        headless::WinState session;
        session.ansiCodePage = c.page;
        CStdioFile file;
        ASSERT_TRUE(file.Open(path(L"图.txt"), c.flags));
        file.WriteString(c.text);
        file.Close();
        EXPECT_EQ(bytesOf("图.txt"), c.bytes);
    }
}

TEST_F(Files, LinesAreReadWithoutTheirEnds) {
    const struct {
        const char* name;
        std::string bytes;
        UINT type;
        std::vector<std::wstring> lines;
    } cases[] = {
        {"CR LF", "ab\r\ncd\r\n", CFile::typeText, {L"ab", L"cd"}},
        {"LF, the last line open", "ab\n\ncd", CFile::typeText, {L"ab", L"", L"cd"}},
        {"a lone CR stays", "a\rb\n", CFile::typeText, {L"a\rb"}},
        {"Chinese", "\xD6\xD0\r\n\x81\x5C", CFile::typeText, {L"中", L"乗"}},
        {"Ctrl+Z ends the text", "ab\n\x1Axx\ncd", CFile::typeText, {L"ab"}},
        {"empty file", "", CFile::typeText, {}},
        {"binary", "a\0\r\0\n\0\x3D\xD8\x00\xDE"s, CFile::typeBinary, {L"a\r", L"\U0001F600"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        store("in.txt", c.bytes);
        CStdioFile file(path(L"in.txt"), CFile::modeRead | c.type);
        std::vector<std::wstring> lines;
        CString line = L"old";
        while (file.ReadString(line))
            lines.emplace_back(line.GetString());
        EXPECT_EQ(lines, c.lines);
        EXPECT_STREQ(line, L"");
    }
}

TEST_F(Files, ShortBuffersTakeALineInPieces) {
    store("in.txt", "abcdef\r\ngh\r\n");
    CStdioFile file(path(L"in.txt"), CFile::modeRead);
    wchar_t text[4];
    EXPECT_STREQ(file.ReadString(text, 4), L"abc");
    EXPECT_STREQ(file.ReadString(text, 4), L"def");
    EXPECT_STREQ(file.ReadString(text, 4), L"\n");
    EXPECT_STREQ(file.ReadString(text, 4), L"gh\n");
    EXPECT_EQ(file.ReadString(text, 4), nullptr);
    file.SeekToBegin();
    CString rest;
    EXPECT_STREQ(file.ReadString(text, 4), L"abc");
    EXPECT_TRUE(file.ReadString(rest));
    EXPECT_STREQ(rest, L"def");
}

TEST_F(Files, OpenFlags) {
    const struct {
        const char* name;
        UINT flags;
        bool exists, opens;
        const char* after;
    } cases[] = {
        {"create empties", CFile::modeCreate | CFile::modeWrite, true, true, "x"},
        {"no truncate keeps", CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite, true,
         true, "xld"},
        {"write needs the file", CFile::modeWrite, false, false, ""},
        {"write keeps the file", CFile::modeWrite, true, true, "xld"},
        {"create makes", CFile::modeCreate | CFile::modeReadWrite | CFile::shareDenyNone, false,
         true, "x"},
        {"read needs the file", CFile::modeRead, false, false, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        fs::remove(folder_ / "f");
        if (c.exists) store("f", "old");
        CFile file;
        CFileException error;
        EXPECT_EQ(file.Open(path(L"f"), c.flags, &error) != FALSE, c.opens);
        if (c.opens) {
            file.Write("x", 1);
            file.Close();
        } else {
            EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
        }
        EXPECT_EQ(bytesOf("f"), c.after);
    }
}

TEST_F(Files, BytesAndPositions) {
    CFile file(path(L"./f.bin"), CFile::modeCreate | CFile::modeReadWrite);
    EXPECT_STREQ(file.GetFileName(), L"f.bin");
    file.Write("hello\n", 6);
    EXPECT_EQ(file.GetLength(), 6U);
    EXPECT_EQ(file.Seek(-2, CFile::end), 4U);
    char bytes[8] = {};
    EXPECT_EQ(file.Read(bytes, 8), 2U);
    EXPECT_STREQ(bytes, "o\n");
    file.SetLength(3);
    EXPECT_EQ(file.GetPosition(), 3U);
    EXPECT_EQ(file.SeekToEnd(), 3U);
    EXPECT_EQ(causeOf([&] { file.Seek(-1, CFile::begin); }), CFileException::badSeek);
    file.Close();
    EXPECT_EQ(bytesOf("f.bin"), "hel");

    CFile::Rename(path(L"f.bin"), path(L"g.bin"));
    store("f.bin", "");
    EXPECT_EQ(causeOf([&] { CFile::Rename(path(L"f.bin"), path(L"g.bin")); }),
              CFileException::accessDenied);
    CFile::Remove(path(L"g.bin"));
    EXPECT_EQ(causeOf([&] { CFile::Remove(path(L"g.bin")); }), CFileException::fileNotFound);
}

TEST_F(Files, FailuresNameTheirCause) {
    EXPECT_EQ(causeOf([&] { CFile(path(L"no/f"), CFile::modeRead); }), CFileException::badPath);
    EXPECT_EQ(causeOf([&] { CFile(path(L""), CFile::modeRead); }), CFileException::accessDenied)
        << "a folder is no file";
    EXPECT_EQ(causeOf([] { CStdioFile().WriteString(L"x"); }), CFileException::invalidFile);
    EXPECT_EQ(causeOf([] { CFile().Close(); }), CFileException::invalidFile);
    CStdioFile full(L"/dev/full", CFile::modeWrite);
    full.WriteString(L"x");
    EXPECT_EQ(causeOf([&] { full.Close(); }), CFileException::diskFull);

    wchar_t text[64];
    const CFileException missing(CFileException::fileNotFound, 2, L"plan.dxf");
    EXPECT_TRUE(missing.GetErrorMessage(text, 64));
    EXPECT_STREQ(text, L"plan.dxf was not found.");
    EXPECT_TRUE(missing.GetErrorMessage(text, 5));
    EXPECT_STREQ(text, L"plan");
    EXPECT_FALSE(CUserException().GetErrorMessage(text, 64));
}

} // namespace
