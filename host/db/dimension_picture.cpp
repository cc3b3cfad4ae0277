#include "db/dimension_picture.h"

#include <cmath>
#include <optional>

#include "db/block_table.h"
#include "db/database.h"
#include "db/dxf_fields.h"
#include "db/geometry_sink.h"
#include "db/mtext.h"
#include "db/text.h"
#include "ge/plane.h"

namespace headless {
namespace {

/// The box of a text's letters.
class TextBox : public GeometrySink {
public:
    /// Lower left, lower right, upper right and upper left; empty for a text without letters.
    std::optional<std::array<AcGePoint3d, 4>> corners;

private:
    void onPoint(const AcGePoint3d& /*position*/) override {}
    void onSegment(const AcGePoint3d& /*start*/, const AcGePoint3d& /*end*/) override {}
    void onCurve(const CurvePiece& /*piece*/) override {}
    void onText(const std::array<AcGePoint3d, 4>& box) override { corners = box; }
    void onEndless(const AcGePoint3d& /*base*/, const AcGeVector3d& /*along*/) override {}
};

/// True for lines of text that run to the right, or straight up.
bool isReadable(const AcGeVector3d& along, const AcGeVector3d& normal) {
    constexpr double kUpright = 1e-9;
    const AcGeVector3d local = ocsMatrix(normal).transpose() * along.normal();
    return std::abs(local.x) < kUpright ? local.y > 0.0 : local.x > 0.0;
}

/// Turns a mirrored text over within its box: about the axis that leaves it readable.
void unmirror(AcDbEntity& text, const AcGeVector3d& normal) {
    TextBox box;
    box.describe(text);
    if (!box.corners) return;
    const auto& [lowerLeft, lowerRight, upperRight, upperLeft] = *box.corners;
    const AcGeVector3d along = lowerRight - lowerLeft;
    if (along.isZeroLength()) return;
    const AcGePoint3d middle = lowerLeft + (upperRight - lowerLeft) / 2.0;
    const AcGeVector3d across = isReadable(-along, normal) ? along : normal.crossProduct(along);
    text.transformBy(AcGeMatrix3d::mirroring(AcGePlane(middle, across)));
}

} // namespace

Acad::ErrorStatus addPicture(NewEntities& parts, AcDbObjectId block, const AcGeMatrix3d& transform,
                             const AcGeVector3d& normal) {
    const std::size_t first = parts.size();
    const Acad::ErrorStatus status = addBlockContents(parts, block, transform);
    if (status != Acad::eOk || transform.det() >= 0.0) return status;
    for (std::size_t i = first; i < parts.size(); ++i) {
        AcDbEntity& part = *parts[i];
        if (AcDbText::cast(&part) != nullptr || AcDbMText::cast(&part) != nullptr)
            unmirror(part, normal);
    }
    return status;
}

Acad::ErrorStatus makePictureBlock(AcDbDatabase& db, NewEntities parts, AcDbObjectId& block) {
    AcDbSmartObjectPointer<AcDbBlockTable> table(db.blockTableId(), AcDb::kForWrite);
    if (table.openStatus() != Acad::eOk) return table.openStatus();
    auto made = std::make_unique<AcDbBlockTableRecord>();
    made->setName(L"*D");
    if (const auto status = table->add(block, made.get()); status != Acad::eOk) return status;
    AcDbBlockTableRecord& record = *made.release();
    for (auto& part : parts) {
        if (record.appendAcDbEntity(part.get()) == Acad::eOk) part.release()->close();
    }
    return record.close();
}

} // namespace headless
