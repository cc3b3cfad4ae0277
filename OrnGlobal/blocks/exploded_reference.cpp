#include "blocks/exploded_reference.h"

#include <algorithm>

#include <dbmain.h>
#include <dbsymtb.h>

#include "blocks/entity_clone.h"
#include "blocks/reference_clip.h"
#include "blocks/uneven_scale.h"
#include "frame/object_handle.h"

namespace blocks {
namespace {

/// Gives an entity what it takes from the reference that holds it.
void inherit(AcDbEntity& entity, const AcDbBlockReference& reference) {
    if (entity.color().isByBlock()) entity.setColor(reference.color());
    if (entity.lineWeight() == AcDb::kLnWtByBlock) entity.setLineWeight(reference.lineWeight());
    if (entity.linetypeId() == reference.database()->byBlockLinetype())
        entity.setLinetype(reference.linetypeId());
}

/// A text that shows what an attribute or an attribute definition does.
std::unique_ptr<AcDbEntity> textOf(const AcDbText& attribute) {
    auto text = std::make_unique<AcDbText>();
    text->setPropertiesFrom(&attribute);
    text->setTextString(attribute.textStringConst());
    text->setNormal(attribute.normal());
    text->setPosition(attribute.position());
    text->setHeight(attribute.height());
    text->setRotation(attribute.rotation());
    text->setWidthFactor(attribute.widthFactor());
    text->setOblique(attribute.oblique());
    text->setThickness(attribute.thickness());
    text->setTextStyle(attribute.textStyle());
    text->setHorizontalMode(attribute.horizontalMode());
    text->setVerticalMode(attribute.verticalMode());
    if (!attribute.isDefaultAlignment()) text->setAlignmentPoint(attribute.alignmentPoint());
    return text;
}

/// A copy of an entity of a block as it shows in a reference; null for one that does not.
std::unique_ptr<AcDbEntity> shownCopy(const AcDbEntity& entity) {
    const auto* const definition = AcDbAttributeDefinition::cast(&entity);
    if (definition == nullptr) return cloneOf(entity);
    return definition->isConstant() ? textOf(*definition) : nullptr;
}

/// Where the cells of an array reference stand from the first; one that is none has one.
std::vector<AcGeVector3d> cellsOf(const AcDbBlockReference& reference) {
    const auto* const array = AcDbMInsertBlock::cast(&reference);
    if (array == nullptr) return {AcGeVector3d()};
    AcGeMatrix3d axes;
    reference.getEcs(axes);
    AcGeMatrix3d turned;
    turned.setToRotation(reference.rotation(), AcGeVector3d::kZAxis);
    std::vector<AcGeVector3d> cells;
    for (int row = 0; row < array->rows(); ++row)
        for (int column = 0; column < array->columns(); ++column)
            cells.push_back(
                axes * turned *
                AcGeVector3d(column * array->columnSpacing(), row * array->rowSpacing(), 0.0));
    return cells;
}

void append(NewEntities& all, NewEntities more) {
    std::ranges::move(more, std::back_inserter(all));
}

NewEntities copiesOf(const NewEntities& entities) {
    NewEntities copies;
    for (const auto& entity : entities)
        copies.push_back(cloneOf(*entity));
    return copies;
}

} // namespace

NewEntities ReferenceTaker::takeEntity(const AcDbEntity& entity, const Frame& frame) {
    NewEntities parts;
    const AcDbObjectId layer = effectiveLayer(entity, frame.layer);
    const auto* const inner = AcDbBlockReference::cast(&entity);
    if (inner != nullptr && param_.nested) {
        if (pieces_.in(*inner, layer) > 0.0) parts = take(*inner, layer);
    } else if (pieces_.isChosen(layer)) {
        if (auto copy = shownCopy(entity)) {
            copy->setLayer(layer, true, true);
            parts.push_back(std::move(copy));
        } else if (!entity.isKindOf(AcDbAttributeDefinition::desc())) {
            ++leftOut_;
        }
    }
    for (const auto& part : parts)
        inherit(*part, frame.reference);
    return parts;
}

void ReferenceTaker::takeContents(const Frame& frame, NewEntities& parts) {
    const ReadHandle<AcDbBlockTableRecord> block(frame.reference.blockTableRecord());
    AcDbBlockTableRecordIterator* made = nullptr;
    if (!block || block->newIterator(made) != Acad::eOk) return;
    const std::unique_ptr<AcDbBlockTableRecordIterator> all(made);
    for (; !all->done(); all->step()) {
        AcDbObjectId id;
        all->getEntityId(id);
        if (const ReadHandle<AcDbEntity> entity(id); entity)
            append(parts, takeEntity(*entity, frame));
    }
}

void ReferenceTaker::takeAttributes(const Frame& frame, NewEntities& parts) {
    const std::unique_ptr<AcDbObjectIterator> attributes(frame.reference.attributeIterator());
    for (; !attributes->done(); attributes->step()) {
        const ReadHandle<AcDbAttribute> attribute(attributes->objectId());
        if (!attribute || attribute->isInvisible()) continue;
        const AcDbObjectId layer = effectiveLayer(*attribute, frame.layer);
        if (!pieces_.isChosen(layer)) continue;
        auto text = textOf(*attribute);
        text->setLayer(layer, true, true);
        inherit(*text, frame.reference);
        parts.push_back(std::move(text));
    }
}

/// Clips the contents of a block and puts them where the reference shows them.
NewEntities ReferenceTaker::placed(NewEntities contents, const Frame& frame) {
    NewEntities shown;
    const std::optional<ClipBoundary> clip =
        param_.clips ? clipOf(frame.reference) : std::optional<ClipBoundary>();
    for (auto& entity : contents) {
        if (clip)
            append(shown, shownParts(std::move(entity), *clip));
        else
            shown.push_back(std::move(entity));
    }
    NewEntities parts;
    const std::vector<AcGeVector3d> cells = cellsOf(frame.reference);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        AcGeMatrix3d step;
        step.setToTranslation(cells[i]);
        const bool isLast = i + 1 == cells.size();
        for (auto& entity : isLast ? std::move(shown) : copiesOf(shown)) {
            NewEntities moved =
                transformed(std::move(entity), step * frame.reference.blockTransform());
            if (moved.empty()) ++leftOut_;
            append(parts, std::move(moved));
        }
    }
    return parts;
}

NewEntities ReferenceTaker::take(const AcDbBlockReference& reference, AcDbObjectId layer) {
    const AcDbObjectId block = reference.blockTableRecord();
    // A block that holds itself shows nothing where it would recur.
    if (std::ranges::find(blocks_, block) != blocks_.end()) return {};
    blocks_.push_back(block);
    const Frame frame{reference, layer};
    NewEntities contents;
    takeContents(frame, contents);
    NewEntities parts = placed(std::move(contents), frame);
    takeAttributes(frame, parts);
    blocks_.pop_back();
    return parts;
}

} // namespace blocks
