// Lists of values in xrecords.
#include "data_support.h"

#include "db/xrecord.h"

using namespace datatest;

namespace {

class Xrecords : public DataTest {
protected:
    Xrecords() {
        auto* const made = new AcDbXrecord;
        EXPECT_EQ(db.addAcDbObject(id, made), Acad::eOk);
        made->close();
    }

    Acad::ErrorStatus set(const Chain& data) {
        return AcDbObjectPointer<AcDbXrecord>(id, AcDb::kForWrite)->setFromRbChain(*data);
    }
    std::wstring get() {
        resbuf* values = nullptr;
        EXPECT_EQ(AcDbObjectPointer<AcDbXrecord>(id)->rbChain(&values), Acad::eOk);
        const Chain data(values);
        return shown(data.get());
    }

    AcDbObjectId id;
};

TEST_F(Xrecords, KeepAllKindsOfValues) {
    EXPECT_EQ(get(), L"");
    char bytes[] = {'a', '\0', 'b'};
    const ads_binary chunk{3, bytes};
    const ads_point point = {1, 2, 3};
    ads_name name;
    acdbGetAdsName(name, db.layerZero());
    const ads_name none = {0, 0};
    const Chain data =
        chain(102, L"{mine", 1, L"text", 10, point, 40, 1.5, 62, 256, 70, -7, 90, 70000, 102, L"}",
              102, L"label", 110, point, 140, 2.5, 160, Adesk::Int64{1} << 40, 175, 3, 210, point,
              280, 1, 290, 1, 300, L"", 310, chunk, 320, L"2F", 330, name, 340, none, 350, name,
              360, name, 1000, L"x");
    ASSERT_EQ(set(data), Acad::eOk);
    EXPECT_EQ(get(), shown(data.get()));
    ASSERT_EQ(set(chain(1, L"new")), Acad::eOk);
    EXPECT_EQ(get(), L"1=new") << "the list is replaced";
}

TEST_F(Xrecords, RefuseWhatFilesCannotHold) {
    ads_name stranger;
    {
        const AcDbDatabase other;
        acdbGetAdsName(stranger, other.layerZero());
    }
    const struct {
        const char* name;
        Chain data;
    } cases[] = {
        {"a name of a record", chain(1, L"x", RTDXF0, L"LINE")},
        {"its own handle", chain(5, L"2F")},
        {"its own handle, elsewhere", chain(105, L"2F")},
        {"a subclass", chain(100, L"AcDbLine")},
        {"extended data", chain(1001, L"APP")},
        {"a comment", chain(999, L"x")},
        {"a code below all", chain(-4, L"<AND")},
        {"a list's code", chain(RTREAL, 1.0)},
        {"an id of nothing", chain(330, stranger)},
        {"no text", chain(1, static_cast<ACHAR*>(nullptr))},
    };
    ASSERT_EQ(set(chain(90, 1)), Acad::eOk);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_NE(c.data, nullptr);
        EXPECT_EQ(set(c.data), Acad::eInvalidResBuf);
        EXPECT_EQ(get(), L"90=1");
    }
}

TEST_F(Xrecords, AreReadFromTheFileUntilTheyChange) {
    const struct {
        const char* name;
        Groups groups;
        std::wstring values;
    } cases[] = {
        {"the first 280 is the merge style", "5=1|330=C|100=AcDbXrecord|280=1|280=2", L"280=2"},
        {"old records have none", "100=AcDbXrecord|1=a|280=2", L"1=a 280=2"},
        {"braces are values", "100=AcDbXrecord|102={ACAD_REACTORS|330=0|102=}",
         L"102={ACAD_REACTORS 330=0 102=}"},
        {"extended data are not", "100=AcDbXrecord|1000=mine|1001=APP|1000=its", L"1000=mine"},
        {"points take their three groups", "100=AcDbXrecord|10=1,2,3|11=4,5|40=6|20=7",
         L"10=1 2 3 11=4 5 0 40=6 20=7"},
        {"numbers out of range are 0", "100=AcDbXrecord|70=70000|90=x", L"70=0 90=0"},
        {"odd digits of chunks", "100=AcDbXrecord|310=41424|310=zz", L"310=AB 310="},
        {"nothing", {{100, "AcDbXrecord"}}, L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        archive.put(id, c.groups);
        EXPECT_EQ(get(), c.values);
    }
    ASSERT_EQ(set(chain(1, L"new")), Acad::eOk);
    EXPECT_EQ(get(), L"1=new");
}

TEST_F(Xrecords, AreWalkedValueByValue) {
    ASSERT_EQ(set(chain(1, L"a", 90, 5)), Acad::eOk);
    AcDbObjectPointer<AcDbXrecord> record(id);
    AcDbXrecordIterator iterator(record.object());
    EXPECT_EQ(iterator.curRbType(), 1);
    resbuf value{};
    ASSERT_EQ(iterator.getCurResbuf(value), Acad::eOk);
    EXPECT_STREQ(value.resval.rstring, L"a");
    acutDelString(value.resval.rstring);
    EXPECT_TRUE(iterator.next());
    ASSERT_EQ(iterator.getCurResbuf(value), Acad::eOk);
    EXPECT_EQ(value.resval.rlong, 5);
    EXPECT_FALSE(iterator.next());
    EXPECT_EQ(iterator.curRbType(), RTNONE);
    EXPECT_EQ(iterator.getCurResbuf(value), Acad::eIteratorDone);
    iterator.start();
    EXPECT_FALSE(iterator.done());
}

} // namespace
