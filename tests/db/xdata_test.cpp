// Extended data: what is taken, what is kept, and what goes along when an entity moves.
#include "data_support.h"

#include "db/object_data.h"
#include "db/xdata.h"

using namespace datatest;

namespace {

constexpr std::size_t kLongestText = 255;

class Xdata : public DataTest {
protected:
    Acad::ErrorStatus set(const Chain& data) {
        return AcDbObjectPointer<AcDbObject>(id, AcDb::kForWrite)->setXData(data.get());
    }
    std::wstring get(const ACHAR* application = nullptr) {
        const Chain data(AcDbObjectPointer<AcDbObject>(id)->xData(application));
        return shown(data.get());
    }

    AcDbObjectId id = addPoint(db);
};

TEST_F(Xdata, KeepsAllKindsOfValues) {
    char bytes[] = {'a', '\0', 'b'};
    const ads_binary chunk{3, bytes};
    const ads_point point = {1, 2, 3};
    const Chain data = chain(1001, L"app", 1000, L"text", 1002, L"{", 1003, L"0", 1004, chunk, 1002,
                             L"}", 1005, L"2F", 1010, point, 1011, point, 1012, point, 1013, point,
                             1040, 1.5, 1041, 2.5, 1042, 3.5, 1070, -7, 1071, 70000);
    ASSERT_EQ(set(data), Acad::eOk);
    EXPECT_EQ(get(), shown(data.get()));
    EXPECT_EQ(get(L"APP"), shown(data.get())) << "names are found in any case";
    EXPECT_EQ(get(L"Other"), L"");
    EXPECT_EQ(get(L""), L"");
}

TEST_F(Xdata, EachApplicationHasItsOwn) {
    ASSERT_EQ(set(chain(1001, L"APP", 1070, 1, 1001, L"Other", 1070, 2)), Acad::eOk);
    ASSERT_EQ(set(chain(1001, L"other", 1000, L"new", 1070, 3)), Acad::eOk);
    EXPECT_EQ(get(), L"1001=APP 1070=1 1001=other 1000=new 1070=3");
    ASSERT_EQ(set(chain(1001, L"app")), Acad::eOk) << "a name alone takes its data away";
    EXPECT_EQ(get(), L"1001=other 1000=new 1070=3");
    ASSERT_EQ(set(chain(1001, L"Other")), Acad::eOk);
    EXPECT_EQ(get(), L"");
}

TEST_F(Xdata, RefusesWhatFilesCannotHold) {
    const std::wstring longText(kLongestText + 1, L'x');
    std::vector<char> bytes(128);
    const ads_binary chunk{128, bytes.data()};
    const struct {
        const char* name;
        Chain data;
        Acad::ErrorStatus status;
    } cases[] = {
        {"nothing", nullptr, Acad::eInvalidResBuf},
        {"no application", chain(1070, 1), Acad::eInvalidResBuf},
        {"nameless application", chain(1001, L""), Acad::eInvalidResBuf},
        {"a record's own code", chain(1001, L"APP", 70, 1), Acad::eInvalidResBuf},
        {"a code without meaning", chain(1001, L"APP", 1020, 1.0), Acad::eInvalidResBuf},
        {"a list's code", chain(1001, L"APP", RTSTR, L"x"), Acad::eInvalidResBuf},
        {"open brace", chain(1001, L"APP", 1002, L"{"), Acad::eInvalidResBuf},
        {"close before open", chain(1001, L"APP", 1002, L"}", 1002, L"{"), Acad::eInvalidResBuf},
        {"braces across applications", chain(1001, L"APP", 1002, L"{", 1001, L"Other", 1002, L"}"),
         Acad::eInvalidResBuf},
        {"other control text", chain(1001, L"APP", 1002, L"("), Acad::eInvalidResBuf},
        {"no handle", chain(1001, L"APP", 1005, L"xyz"), Acad::eInvalidResBuf},
        {"unknown application", chain(1001, L"APP", 1070, 1, 1001, L"None", 1070, 1),
         Acad::eRegappIdNotFound},
        {"long text", chain(1001, L"APP", 1000, longText.c_str()), Acad::eOutOfRange},
        {"long chunk", chain(1001, L"APP", 1004, chunk), Acad::eOutOfRange},
    };
    ASSERT_EQ(set(chain(1001, L"APP", 1070, 9)), Acad::eOk);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(set(c.data), c.status);
        EXPECT_EQ(get(), L"1001=APP 1070=9");
    }
    AcDbPoint homeless;
    EXPECT_EQ(homeless.setXData(chain(1001, L"APP", 1070, 1).get()), Acad::eNoDatabase);
    state.services.setWorkingDatabase(&db);
    EXPECT_EQ(homeless.setXData(chain(1001, L"APP", 1070, 1).get()), Acad::eOk);
}

TEST_F(Xdata, HasRoomForSixteenThousandBytes) {
    // A name takes 9 bytes, a text of 252 letters 255: 64 of them and a text of 51 make 16383.
    constexpr int kTexts = 64;
    const std::wstring text(252, L'x');
    const auto filled = [&](std::size_t lastText) {
        Chain data = chain(1001, L"APP", 1000, std::wstring(lastText, L'y').c_str());
        for (int i = 0; i < kTexts; ++i) {
            resbuf* const item = acutBuildList(1000, text.c_str(), RTNONE);
            item->rbnext = data->rbnext;
            data->rbnext = item;
        }
        return data;
    };
    ads_name name;
    acdbGetAdsName(name, id);
    Adesk::Int32 bytes = 0;
    EXPECT_EQ(acdbXdSize(filled(51).get(), &bytes), RTNORM);
    EXPECT_EQ(bytes, 16383);
    EXPECT_EQ(acdbXdRoom(name, &bytes), RTNORM);
    EXPECT_EQ(bytes, 16383);
    EXPECT_EQ(set(filled(52)), Acad::eOutOfRange);
    EXPECT_EQ(set(filled(51)), Acad::eOk);
    EXPECT_EQ(acdbXdRoom(name, &bytes), RTNORM);
    EXPECT_EQ(bytes, 0);
    EXPECT_EQ(set(chain(1001, L"Other", 1070, 1)), Acad::eOutOfRange) << "all data count";
    EXPECT_EQ(set(chain(1001, L"APP", 1000, L"\x9480")), Acad::eOk) << "replaced data do not";
    EXPECT_EQ(acdbXdRoom(name, &bytes), RTNORM);
    EXPECT_EQ(bytes, 16383 - 9 - 6) << "a letter counts its bytes in UTF-8";
    EXPECT_EQ(acdbXdSize(nullptr, &bytes), RTERROR);
}

TEST_F(Xdata, IsReadFromTheFileUntilItChanges) {
    id = Residence::admit(db, std::make_unique<AcDbPoint>());
    archive.put(id, "8=0|100=AcDbPoint|1000=stray|1001=APP |1000=two words|1010=1|1020=2|"
                    "1030=3|1011=4|1040=0.5|1030=9|1070=7|1004=4142|1001=Gone|1071=8");
    EXPECT_EQ(get(L"app"),
              L"1001=APP 1000=two words 1010=1 2 3 1011=4 0 0 1040=0.5 1070=7 1004=AB");
    EXPECT_EQ(get(L"Gone"), L"1001=Gone 1071=8") << "unregistered data of a file show too";
    EXPECT_FALSE(Residence::isChanged(*Residence::peek(id)));
    ASSERT_EQ(set(chain(1001, L"APP")), Acad::eOk);
    EXPECT_TRUE(Residence::isChanged(*Residence::peek(id)));
    archive.reads = 0;
    EXPECT_EQ(get(), L"1001=Gone 1071=8");
    EXPECT_EQ(archive.reads, 0);
}

TEST_F(Xdata, GoesAlongWithItsEntity) {
    const ads_point point = {1, 2, 0};
    ASSERT_EQ(set(chain(1001, L"APP", 1010, point, 1011, point, 1012, point, 1013, point, 1040, 1.0,
                        1041, 1.0, 1042, 1.0)),
              Acad::eOk);
    AcGeMatrix3d move = AcGeMatrix3d::translation({10, 0, 0});
    move *= AcGeMatrix3d::scaling(2);
    AcDbObjectPointer<AcDbPoint>(id, AcDb::kForWrite)->transformBy(move);
    EXPECT_EQ(get(), L"1001=APP 1010=1 2 0 1011=12 4 0 1012=2 4 0 1013=1 2 0 1040=1 1041=2 1042=2");
}

TEST_F(Xdata, ApplicationsAreRegisteredByName) {
    EXPECT_EQ(acdbRegApp(L"New"), RTERROR) << "no working database";
    state.services.setWorkingDatabase(&db);
    EXPECT_EQ(acdbRegApp(L"New"), RTNORM);
    EXPECT_EQ(acdbRegApp(L"NEW"), RTNORM);
    EXPECT_EQ(acdbRegApp(L"a|b"), RTERROR);
    EXPECT_EQ(acdbRegApp(nullptr), RTERROR);
    EXPECT_EQ(set(chain(1001, L"new", 1070, 1)), Acad::eOk);
}

class Reactors : public DataTest {
protected:
    AcDbObjectId id = addPoint(db);
    AcDbObjectId first = addPoint(db);
    AcDbObjectId second = addPoint(db);
};

TEST_F(Reactors, AreAddedAndRemoved) {
    AcDbObjectPointer<AcDbPoint> point(id, AcDb::kForWrite);
    EXPECT_EQ(point->reactors(), nullptr);
    EXPECT_EQ(point->addPersistentReactor({}), Acad::eNullObjectId);
    EXPECT_EQ(point->addPersistentReactor(first), Acad::eOk);
    EXPECT_EQ(point->addPersistentReactor(first), Acad::eDuplicateKey);
    EXPECT_EQ(point->addPersistentReactor(second), Acad::eOk);
    EXPECT_TRUE(point->hasPersistentReactor(second));
    ASSERT_NE(point->reactors(), nullptr);
    ASSERT_EQ(point->reactors()->length(), 2);
    void* const reactor = point->reactors()->at(1);
    EXPECT_TRUE(acdbIsPersistentReactor(reactor));
    EXPECT_EQ(acdbPersistentReactorObjectId(reactor), second);
    EXPECT_EQ(point->removePersistentReactor(first), Acad::eOk);
    EXPECT_EQ(point->removePersistentReactor(first), Acad::eKeyNotFound);
    EXPECT_EQ(point->reactors()->length(), 1);
}

TEST_F(Reactors, AreReadFromTheBracesThatBelongToThem) {
    id = Residence::admit(db, std::make_unique<AcDbPoint>());
    std::ostringstream handle;
    handle << std::hex << first.handle();
    archive.put(id, {{330, "1"},
                     {102, "{ACAD_XDICTIONARY"},
                     {360, "1"},
                     {102, "}"},
                     {102, "{ACAD_REACTORS"},
                     {330, handle.str()},
                     {330, "0"},
                     {102, "}"},
                     {330, "2"},
                     {100, "AcDbPoint"},
                     {102, "{ACAD_REACTORS"},
                     {330, "3"}});
    AcDbObjectPointer<AcDbPoint> point(id, AcDb::kForWrite);
    EXPECT_EQ(headless::ObjectData::reactors(*point), std::vector<AcDbObjectId>{first});
    EXPECT_FALSE(Residence::isChanged(*point));
    EXPECT_EQ(point->addPersistentReactor(second), Acad::eOk);
    EXPECT_EQ(headless::ObjectData::reactors(*point), (std::vector{first, second}));
}

} // namespace
