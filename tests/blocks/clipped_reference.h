// References and their clips.
#pragma once

#include <vector>

#include <dbdict.h>
#include <dbspfilt.h>
#include <dbxrecrd.h>

#include "blocks_fixture.h"

/// A clip in the block's coordinates, seen from above.
struct Clip {
    std::vector<AcGePoint2d> points; // two corners of a rectangle, or a polygon
    bool inverted = false, enabled = true;
    double front = ACDB_INFINITE_XCLIP_DEPTH, back = -ACDB_INFINITE_XCLIP_DEPTH;
};

class ClippedReferences : public BlocksTest {
protected:
    AcDbObjectId addReference(AcDbObjectId block, const AcGePoint3d& position = {},
                              const ACHAR* layer = L"0", const ACHAR* owner = ACDB_MODEL_SPACE) {
        auto reference = std::make_unique<AcDbBlockReference>(position, block);
        reference->setLayer(addLayer(layer));
        return add(std::move(reference), owner);
    }

    void clip(AcDbObjectId id, const Clip& clip) {
        const WriteHandle<AcDbBlockReference> reference(id);
        ASSERT_TRUE(reference);
        ASSERT_EQ(reference->createExtensionDictionary(), Acad::eOk);
        const AcDbObjectId filters = put(reference->extensionDictionary(), L"ACAD_FILTER",
                                         std::make_unique<AcDbDictionary>());
        auto filter = std::make_unique<AcDbSpatialFilter>();
        AcGePoint2dArray points;
        for (const AcGePoint2d& point : clip.points)
            points.append(point);
        ASSERT_EQ(filter->setDefinition(points, AcGeVector3d::kZAxis, 0.0, clip.front, clip.back,
                                        clip.enabled),
                  Acad::eOk);
        const AcDbObjectId filterId = put(filters, L"SPATIAL", std::move(filter));
        if (clip.inverted) invert(filterId, clip);
    }

private:
    static AcDbObjectId put(AcDbObjectId dictionaryId, const ACHAR* key,
                            std::unique_ptr<AcDbObject> object) {
        const WriteHandle<AcDbDictionary> dictionary(dictionaryId);
        AcDbObjectId id;
        EXPECT_EQ(dictionary->setAt(key, object.get(), id), Acad::eOk);
        object.release()->close();
        return id;
    }

    /// Notes that the boundary is that of a hole. As it is the filter's own boundary, too, programs
    /// that do not know holes would show the wrong half; those that do need not care.
    static void invert(AcDbObjectId filterId, const Clip& clip) {
        resbuf* chain = nullptr;
        resbuf* last = nullptr;
        const auto append = [&](resbuf* item) {
            (last == nullptr ? chain : last->rbnext) = item;
            last = item;
        };
        for (const ACHAR* heading :
             {L"ACAD_INVERTEDCLIP_ROUNDTRIP", L"ACAD_INVERTEDCLIP_ROUNDTRIP_COMPARE"}) {
            append(acutBuildList(102, heading, RTNONE));
            for (const AcGePoint2d& point : clip.points) {
                const ads_point coordinates = {point.x, point.y, 0.0};
                append(acutBuildList(10, coordinates, RTNONE));
            }
        }
        auto record = std::make_unique<AcDbXrecord>();
        EXPECT_EQ(record->setFromRbChain(*chain), Acad::eOk);
        acutRelRb(chain);
        const WriteHandle<AcDbSpatialFilter> filter(filterId);
        filter->createExtensionDictionary();
        put(filter->extensionDictionary(), L"ACAD_XREC_ROUNDTRIP", std::move(record));
        EXPECT_TRUE(filter->isInverted());
    }
};
