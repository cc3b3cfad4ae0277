// Clones of single objects: what they share with the original and what they leave behind.
#include "data_support.h"

#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/line.h"
#include "db/polyline_3d.h"
#include "db/xrecord.h"

using namespace datatest;

namespace {

class Clones : public DataTest {
protected:
    template <class T>
    static std::unique_ptr<T> cloneOf(AcDbObjectId id) {
        AcDbObjectPointer<AcDbObject> object(id);
        return std::unique_ptr<T>(T::cast(object->clone()));
    }
    static AcDbObjectId append(AcDbDatabase& to, AcDbEntity* entity) {
        return put(to.modelSpaceId(), entity)->objectId();
    }
};

TEST_F(Clones, TakeTheStateAndNotThePlace) {
    auto* const line = new AcDbLine({0.1, 0.2, 0.3}, {1e-17, -4, 5e300});
    const AcDbObjectId id = append(db, line);
    archive.put(id, "100=AcDbEntity|1001=APP|1070=7");
    {
        AcDbObjectPointer<AcDbLine> opened(id, AcDb::kForWrite);
        opened->setColorIndex(3);
        opened->createExtensionDictionary();
        opened->addPersistentReactor(db.layerZero());
    }
    auto clone = cloneOf<AcDbLine>(id);
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(clone->startPoint().z, 0.3);
    EXPECT_EQ(clone->endPoint().x, 1e-17);
    EXPECT_EQ(clone->colorIndex(), 3);
    EXPECT_EQ(shown(Chain(clone->xData()).get()), L"1001=APP 1070=7");
    EXPECT_TRUE(clone->objectId().isNull());
    EXPECT_TRUE(clone->ownerId().isNull());
    EXPECT_TRUE(clone->extensionDictionary().isNull());
    EXPECT_EQ(clone->reactors(), nullptr);

    // The original's record serves as a template in its own drawing only.
    AcDbDatabase other;
    const AcDbObjectId here = append(db, clone.release());
    EXPECT_EQ(Residence::source(*Residence::peek(here)).length, 1U);
    EXPECT_TRUE(Residence::isChanged(*Residence::peek(here)));
    EXPECT_TRUE(AcDbObjectPointer<AcDbLine>(here)->reactors() == nullptr);
    AcDbLine* const third = AcDbLine::cast(AcDbObjectPointer<AcDbLine>(id)->clone());
    third->setLayer(other.layerZero());
    EXPECT_EQ(Residence::source(*Residence::peek(append(other, third))).length, 0U);
}

TEST_F(Clones, HaveAttributesOfTheirOwn) {
    const auto blockId = addRecord<AcDbBlockTableRecord>(db.blockTableId(), L"B");
    auto* const original = new AcDbBlockReference({1, 2, 3}, blockId);
    const AcDbObjectId id = append(db, original);
    for (const ACHAR* const text : {L"one", L"two", L"three"}) {
        AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForWrite);
        auto* const attribute = new AcDbAttribute;
        attribute->setTextString(text);
        AcDbObjectId ignored;
        ASSERT_EQ(reference->appendAttribute(ignored, attribute), Acad::eOk);
        if (attribute->textStringConst() == std::wstring(L"two")) attribute->erase();
        attribute->close();
    }
    auto texts = [](AcDbObjectId reference) {
        std::wstring joined;
        AcDbObjectPointer<AcDbBlockReference> opened(reference);
        const std::unique_ptr<AcDbObjectIterator> each(opened->attributeIterator());
        for (; !each->done(); each->step()) {
            AcDbObjectPointer<AcDbAttribute> attribute(each->objectId());
            EXPECT_EQ(attribute->ownerId(), reference);
            joined += attribute->textStringConst() + std::wstring(L" ");
        }
        return joined;
    };
    const AcDbObjectId copy = append(db, cloneOf<AcDbBlockReference>(id).release());
    EXPECT_EQ(texts(copy), L"one three ");
    AcDbObjectPointer<AcDbObject>(id, AcDb::kForWrite)->erase();
    EXPECT_EQ(texts(copy), L"one three ");
}

TEST_F(Clones, OfUnenteredOwnersCopyWhatTheyOwn) {
    AcDb3dPolyline polyline;
    polyline.appendVertex(new AcDb3dPolylineVertex({1, 0, 0}));
    polyline.appendVertex(new AcDb3dPolylineVertex({2, 0, 0}));
    const std::unique_ptr<AcDb3dPolyline> clone(AcDb3dPolyline::cast(polyline.clone()));
    ASSERT_EQ(polyline.reverseCurve(), Acad::eOk);
    AcGePoint3d start;
    ASSERT_EQ(clone->getStartPoint(start), Acad::eOk);
    EXPECT_EQ(start.x, 1.0);
}

TEST_F(Clones, KeepValuesThatAreStillInTheFile) {
    AcDbObjectId id;
    auto* const record = new AcDbXrecord;
    ASSERT_EQ(db.addAcDbObject(id, record), Acad::eOk);
    record->close();
    archive.put(id, "100=AcDbXrecord|280=1|1=text|70=7");
    const auto clone = cloneOf<AcDbXrecord>(id);
    resbuf* values = nullptr;
    ASSERT_EQ(clone->rbChain(&values), Acad::eOk);
    EXPECT_EQ(shown(Chain(values).get()), L"1=text 70=7");
}

} // namespace
