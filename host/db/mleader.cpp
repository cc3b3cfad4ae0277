#include "db/mleader.h"

#include <array>
#include <memory>

#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/database.h"
#include "db/explode.h"
#include "db/geometry_sink.h"
#include "db/line.h"
#include "db/linetype_table.h"
#include "db/mtext.h"
#include "db/residence.h"
#include "db/solid.h"
#include "db/spline.h"
#include "win/casing.h"

HEADLESS_DXF_DEFINE_MEMBERS(AcDbMLeader, AcDbEntity, "MULTILEADER")

using headless::MLeaderContext;
using headless::NewEntities;
using headless::Residence;

Acad::ErrorStatus AcDbMLeader::dxfInFields(AcDbDxfFiler* filer) {
    if (const auto status = AcDbEntity::dxfInFields(filer); status != Acad::eOk) return status;
    context_.read(*filer, filer->subclass("AcDbMLeader"));
    return Acad::eOk;
}

void AcDbMLeader::forEachReference(const headless::ReferenceVisitor& visit) {
    AcDbEntity::forEachReference(visit);
    context_.forEachReference(
        [&](AcDbObjectId& id) { visit(id, headless::ReferenceKind::kHardPointer); });
}

template <class T>
T& AcDbMLeader::addLook(NewEntities& parts, const AcCmEntityColor& color,
                        std::unique_ptr<T> part) const {
    T& added = headless::addPart(parts, *this, std::move(part));
    if (!color.isByBlock()) added.setColor(AcCmColor(color));
    return added;
}

template <class T>
T& AcDbMLeader::addStroke(NewEntities& parts, const Context::Line& line,
                          std::unique_ptr<T> part) const {
    T& added =
        addLook(parts, line.color.isByBlock() ? context_.lineColor : line.color, std::move(part));
    if (context_.lineWeight != AcDb::kLnWtByBlock) added.setLineWeight(context_.lineWeight);
    const auto* const linetype = Residence::peek<AcDbLinetypeTableRecord>(context_.linetype);
    if (linetype != nullptr && !headless::equalNoCase(linetype->nameOf(), L"ByBlock"))
        added.setLinetype(context_.linetype);
    return added;
}

void AcDbMLeader::addLine(NewEntities& parts, const Context::Leader& leader,
                          const Context::Line& line) const {
    if (line.vertices.empty()) return;
    const std::vector<AcGePoint3d> chain = context_.chain(leader, line);
    if (context_.lineKind == Context::LineKind::kSpline) {
        AcGePoint3dArray points;
        for (const AcGePoint3d& point : chain)
            points.append(point);
        addStroke(parts, line, std::make_unique<AcDbSpline>(points));
    } else {
        for (std::size_t i = 0; i + 1 < chain.size(); ++i)
            addStroke(parts, line, std::make_unique<AcDbLine>(chain[i], chain[i + 1]));
    }
    addArrow(parts, line, chain[1]);
}

void AcDbMLeader::addArrow(NewEntities& parts, const Context::Line& line,
                           const AcGePoint3d& towards) const {
    const AcGePoint3d& tip = line.vertices.front();
    const AcGeVector3d inward = towards - tip;
    if (!(context_.arrowSize > 0.0) || inward.isZeroLength()) return;
    const AcGeVector3d along = inward.normal() * context_.arrowSize;
    const AcGeVector3d across = context_.normal().crossProduct(along);
    const AcDbObjectId block = context_.arrowBlockOf(line);
    if (Residence::peek<AcDbBlockTableRecord>(block) == nullptr) {
        constexpr double kHalfWidth = 1.0 / 6.0;
        const AcGePoint3d foot = tip + along;
        addStroke(parts, line,
                  std::make_unique<AcDbSolid>(tip, foot + across * kHalfWidth,
                                              foot - across * kHalfWidth));
        return;
    }
    AcGeMatrix3d placing; // The block looks to the right.
    placing.setCoordSystem(tip, -along, -across, context_.normal() * context_.arrowSize);
    addStroke(parts, line, std::make_unique<AcDbBlockReference>(tip, block))
        .setBlockTransform(placing);
}

namespace {

/// The sides of the box around a text, that far from it.
std::array<AcGePoint3d, 4> frameOf(const AcDbMText& text, double gap) {
    const headless::MTextLayout layout = text.layout();
    const AcGeVector3d right = text.direction();
    const AcGeVector3d down = right.crossProduct(text.normal());
    const AcGePoint3d corner = text.boxCorner(layout) - (right + down) * gap;
    const AcGeVector3d along = right * (layout.width + 2.0 * gap);
    const AcGeVector3d below = down * (layout.height + 2.0 * gap);
    return {corner, corner + along, corner + along + below, corner + below};
}

} // namespace

void AcDbMLeader::addText(NewEntities& parts) const {
    const Context::Text& stated = *context_.text;
    if (!(context_.textHeight > 0.0)) return;
    auto& text = addLook(parts, stated.color, std::make_unique<AcDbMText>());
    text.setContents(stated.contents.c_str());
    text.setTextStyle(stated.style.isNull() ? context_.textStyle : stated.style);
    text.setTextHeight(context_.textHeight);
    text.setWidth(stated.width * context_.scale);
    text.setLineSpacingFactor(stated.lineSpacing);
    text.setNormal(stated.normal);
    text.setDirection(stated.direction);
    text.setLocation(stated.location);
    text.setAttachment(static_cast<AcDbMText::AttachmentPoint>(stated.column));
    text.setFlowDirection(static_cast<AcDbMText::FlowDirection>(stated.flow));
    if (!context_.isFramed) return;
    const auto frame = frameOf(text, context_.gap);
    for (std::size_t i = 0; i < frame.size(); ++i)
        addLook(parts, stated.color,
                std::make_unique<AcDbLine>(frame[i], frame[(i + 1) % frame.size()]));
}

void AcDbMLeader::addBlock(NewEntities& parts) const {
    const Context::Block& stated = *context_.block;
    if (Residence::peek<AcDbBlockTableRecord>(stated.record) == nullptr) return;
    auto& reference = addLook(parts, stated.color,
                              std::make_unique<AcDbBlockReference>(stated.location, stated.record));
    reference.setNormal(stated.normal);
    reference.setRotation(stated.rotation);
    reference.setScaleFactors(stated.scale);
    const AcGeMatrix3d placing = reference.blockTransform();
    for (const Context::Label& label : context_.labels)
        addLabel(parts, label, placing);
}

void AcDbMLeader::addLabel(NewEntities& parts, const Context::Label& label,
                           const AcGeMatrix3d& placing) const {
    const auto* const definition = Residence::peek<AcDbAttributeDefinition>(label.definition);
    std::unique_ptr<AcDbEntity> copy;
    if (definition == nullptr || definition->isDrawnInReferences() ||
        definition->transformedCopy(placing, copy) != Acad::eOk)
        return;
    const AcDbText& from = *AcDbText::cast(copy.get());
    auto& text = headless::addPart(parts, from, std::make_unique<AcDbText>());
    if (from.colorIndex() == AcCmEntityColor::kACIbyBlock) text.setColor(color());
    if (from.layerId() == definition->database()->layerZero()) text.setLayer(layerId());
    text.setNormal(from.normal());
    text.setTextStyle(from.textStyle());
    text.setHeight(from.height());
    text.setWidthFactor(from.widthFactor());
    text.setOblique(from.oblique());
    text.setRotation(from.rotation());
    text.setTextString(label.text.c_str());
    text.setHorizontalMode(from.horizontalMode());
    text.setVerticalMode(from.verticalMode());
    text.setPosition(from.position());
    if (!from.isDefaultAlignment()) {
        text.setAlignmentPoint(from.alignmentPoint());
        text.adjustAlignment(database());
    }
}

Acad::ErrorStatus AcDbMLeader::subExplode(NewEntities& parts) const {
    if (context_.lineKind != Context::LineKind::kNone) {
        for (const Context::Leader& leader : context_.leaders) {
            if (!leader.isPlaced) continue;
            for (const Context::Line& line : leader.lines)
                addLine(parts, leader, line);
        }
    }
    if (context_.text)
        addText(parts);
    else if (context_.block)
        addBlock(parts);
    return Acad::eOk;
}

void AcDbMLeader::subDescribe(headless::GeometrySink& sink) const {
    NewEntities parts;
    if (subExplode(parts) != Acad::eOk) return;
    for (const auto& part : parts)
        sink.describe(*part);
}

Acad::ErrorStatus AcDbMLeader::subGetGripPoints(AcGePoint3dArray& points) const {
    for (const Context::Leader& leader : context_.leaders)
        for (const Context::Line& line : leader.lines)
            for (const AcGePoint3d& vertex : line.vertices)
                points.append(vertex);
    if (context_.text) points.append(context_.text->location);
    if (context_.block) points.append(context_.block->location);
    return Acad::eOk;
}
