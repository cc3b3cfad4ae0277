#include "OrnCore/rw_xdata.h"

#include <acdb.h>
#include <acutads.h>
#include <dbents.h>
#include <dbobjptr.h>
#include <dbxrecrd.h>

#include "support/session_fixture.h"

namespace {

class RwXData : public test_support::SessionTest {};

TEST_F(RwXData, ListsComeBackInOrder) {
    resbuf* chain = nullptr;
    rwXData::addXdata(L"a", chain, -70000);
    rwXData::addXdata(L"a", chain, CString(L"\x677F|x"));
    rwXData::addXdata(L"a", chain, 0.1);
    rwXData::addXdata(L"b", chain, CString());
    rwXData::addXdata(nullptr, chain, 7);

    AcDbDictionary* root = nullptr;
    ASSERT_EQ(database()->getNamedObjectsDictionary(root, AcDb::kForWrite), Acad::eOk);
    auto* const record = new AcDbXrecord;
    AcDbObjectId id;
    ASSERT_EQ(root->setAt(L"KEY", record, id), Acad::eOk);
    root->close();
    EXPECT_EQ(record->setFromRbChain(*chain), Acad::eOk) << "lists are made for xrecords";
    record->close();
    acutRelRb(chain);

    ASSERT_EQ(AcDbObjectPointer<AcDbXrecord>(id)->rbChain(&chain), Acad::eOk);
    resbuf* cursor = chain;
    int number = 0;
    double real = 0.0;
    CString text = L"old";
    EXPECT_NE(rwXData::getXdata(cursor, number), 0);
    EXPECT_EQ(number, -70000);
    EXPECT_NE(rwXData::getXdata(cursor, text), 0);
    EXPECT_STREQ(text, L"\x677F|x");
    EXPECT_NE(rwXData::getXdata(cursor, real), 0);
    EXPECT_EQ(real, 0.1);
    EXPECT_NE(rwXData::getXdata(cursor, text), 0);
    EXPECT_STREQ(text, L"");
    EXPECT_NE(rwXData::getXdata(cursor, number), 0);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(cursor, nullptr);
    acutRelRb(chain);
}

TEST_F(RwXData, WrongKindsAreSteppedOver) {
    resbuf* const chain =
        acutBuildList(AcDb::kDxfText, L"one", AcDb::kDxfReal, 2.0, AcDb::kDxfInt32, 3, RTNONE);
    resbuf* cursor = chain;
    int number = 42;
    CString text = L"old";
    EXPECT_EQ(rwXData::getXdata(cursor, number), 0);
    EXPECT_EQ(rwXData::getXdata(cursor, text), 0);
    EXPECT_EQ(number, 42);
    EXPECT_STREQ(text, L"old");
    EXPECT_NE(rwXData::getXdata(cursor, number), 0);
    EXPECT_EQ(number, 3);
    EXPECT_EQ(rwXData::getXdata(cursor, number), 0) << "the list has ended";
    EXPECT_EQ(cursor, nullptr);
    acutRelRb(chain);
}

TEST_F(RwXData, PointsStayWithTheirEntity) {
    const CString key = L"\x63D2\x5165\x70B9";
    const AcDbObjectId id = add(std::make_unique<AcDbPoint>(AcGePoint3d(1, 1, 0)));
    EXPECT_EQ(rwXData::ReadXdataPnt(id, key), AcGePoint3d::kOrigin);
    EXPECT_NE(rwXData::WriteXdataPnt(id, L"other", {7, 7, 7}), 0);
    EXPECT_EQ(rwXData::ReadXdataPnt(id, key), AcGePoint3d::kOrigin);
    EXPECT_NE(rwXData::WriteXdataPnt(id, key, {9, 9, 9}), 0);
    EXPECT_NE(rwXData::WriteXdataPnt(id, key, {1, 2, 3}), 0);
    EXPECT_EQ(rwXData::ReadXdataPnt(id, key), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(rwXData::ReadXdataPnt(id, L"OTHER"), AcGePoint3d(7, 7, 7));
    AcDbObjectPointer<AcDbEntity>(id, AcDb::kForWrite)
        ->transformBy(AcGeMatrix3d::translation({10, 0, 0}));
    EXPECT_EQ(rwXData::ReadXdataPnt(id, key), AcGePoint3d(11, 2, 3)) << "it moves along";
}

TEST_F(RwXData, PointsOfNothingAreTheOrigin) {
    EXPECT_EQ(rwXData::ReadXdataPnt(AcDbObjectId::kNull, L"key"), AcGePoint3d::kOrigin);
    EXPECT_EQ(rwXData::WriteXdataPnt(AcDbObjectId::kNull, L"key", {1, 2, 3}), 0);
    const AcDbObjectId id = add(std::make_unique<AcDbPoint>());
    EXPECT_EQ(rwXData::WriteXdataPnt(id, L"a|b", {1, 2, 3}), 0) << "no name for an application";
    const AcDbObjectPointer<AcDbObject> reader(id);
    EXPECT_EQ(rwXData::WriteXdataPnt(id, L"key", {1, 2, 3}), 0);
}

} // namespace
