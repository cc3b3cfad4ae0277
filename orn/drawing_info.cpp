#include "drawing_info.h"

#include <memory>
#include <unordered_map>

#include "db/block_reference.h"
#include "db/block_table.h"
#include "db/curve.h"
#include "db/database.h"
#include "db/dim_style_table.h"
#include "db/entity.h"
#include "db/geometry_sink.h"
#include "db/layer_table.h"
#include "db/linetype_table.h"
#include "db/object_pointer.h"
#include "db/opaque.h"
#include "db/text_style_table.h"
#include "dxf/read_report.h"
#include "win/code_page.h"

namespace orn {
namespace {

template <class Record>
using Reading = AcDbObjectPointer<Record>;

std::string nameOf(const AcDbSymbolTableRecord& record) {
    const ACHAR* name = nullptr;
    return record.getName(name) == Acad::eOk ? headless::toUtf8(name) : std::string();
}

/// Names of table records, looked up once each.
class RecordNames {
public:
    const std::string& operator()(AcDbObjectId id) {
        const auto [entry, isNew] = names_.try_emplace(id);
        if (isNew)
            if (const Reading<AcDbSymbolTableRecord> record(id, AcDb::kForRead);
                record.openStatus() == Acad::eOk)
                entry->second = nameOf(*record);
        return entry->second;
    }

private:
    std::unordered_map<AcDbObjectId, std::string> names_;
};

/// Calls `visit` with every record of a table, hidden ones too.
template <class Record, class Visit>
void forEachRecord(AcDbObjectId tableId, Visit visit) {
    const Reading<AcDbSymbolTable> table(tableId, AcDb::kForRead);
    AcDbSymbolTableIterator* all = nullptr;
    if (table.openStatus() != Acad::eOk || table->newIterator(all) != Acad::eOk) return;
    const std::unique_ptr<AcDbSymbolTableIterator> records(all);
    if (auto* layers = dynamic_cast<AcDbLayerTableIterator*>(all)) layers->setSkipHidden(false);
    for (records->start(); !records->done(); records->step()) {
        AcDbObjectId id;
        records->getRecordId(id);
        const Reading<Record> record(id, AcDb::kForRead);
        if (record.openStatus() == Acad::eOk) visit(*record);
    }
}

template <class Visit>
void forEachEntity(const AcDbBlockTableRecord& block, Visit visit) {
    AcDbBlockTableRecordIterator* all = nullptr;
    if (block.newIterator(all) != Acad::eOk) return;
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(all);
    for (; !entities->done(); entities->step()) {
        AcDbObjectId id;
        entities->getEntityId(id);
        const Reading<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() == Acad::eOk) visit(*entity);
    }
}

template <class Record>
std::vector<std::string> recordNames(AcDbObjectId tableId) {
    std::vector<std::string> names;
    forEachRecord<Record>(tableId, [&](const Record& record) { names.push_back(nameOf(record)); });
    return names;
}

LayerInfo layerInfo(const AcDbLayerTableRecord& layer, RecordNames& names) {
    return {.name = nameOf(layer),
            .off = layer.isOff(),
            .frozen = layer.isFrozen(),
            .locked = layer.isLocked(),
            .plot = layer.isPlottable(),
            .color = layer.color().colorIndex(),
            .linetype = names(layer.linetypeObjectId()),
            .lineweight = static_cast<int>(layer.lineWeight())};
}

TypeCounts countTypes(const AcDbBlockTableRecord& block) {
    TypeCounts counts;
    forEachEntity(
        block, [&](const AcDbEntity& entity) { ++counts[std::string(headless::dxfName(entity))]; });
    return counts;
}

void addBlock(DrawingInfo& info, const AcDbBlockTableRecord& block, AcDbObjectId modelSpace,
              RecordNames& names) {
    if (block.objectId() == modelSpace) {
        info.entities = countTypes(block);
        forEachEntity(block,
                      [&](const AcDbEntity& entity) { ++info.byLayer[names(entity.layerId())]; });
    } else {
        (block.isLayout() ? info.paperSpaces : info.blocks)
            .push_back({nameOf(block), countTypes(block)});
    }
}

std::optional<std::array<double, 6>> boxOf(const AcDbEntity& entity) {
    AcDbExtents box;
    const bool ofLines =
        entity.isKindOf(AcDbCurve::desc()) || entity.isKindOf(AcDbBlockReference::desc());
    const auto part = ofLines ? headless::BoxOf::lines : headless::BoxOf::everything;
    const Acad::ErrorStatus status = headless::contentExtents(entity, part, box);
    if (status != Acad::eOk) return std::nullopt;
    const AcGePoint3d low = box.minPoint();
    const AcGePoint3d high = box.maxPoint();
    return std::array{low.x, low.y, low.z, high.x, high.y, high.z};
}

// Drawings that do not say are of the first version that this program reads.
std::string versionOf(AcDbDatabase& db) {
    const headless::DxfTag* version = db.headerVariables().find("$ACADVER", 1);
    return std::string(version == nullptr ? "AC1009" : version->text());
}

} // namespace

DrawingInfo collectInfo(AcDbDatabase& db) {
    DrawingInfo info;
    RecordNames names;
    info.version = versionOf(db);
    const AcDbObjectId modelSpace = db.modelSpaceId();
    forEachRecord<AcDbBlockTableRecord>(db.blockTableId(), [&](const AcDbBlockTableRecord& block) {
        addBlock(info, block, modelSpace, names);
    });
    forEachRecord<AcDbLayerTableRecord>(db.layerTableId(), [&](const AcDbLayerTableRecord& layer) {
        info.layers.push_back(layerInfo(layer, names));
    });
    info.linetypes = recordNames<AcDbLinetypeTableRecord>(db.linetypeTableId());
    info.textStyles = recordNames<AcDbTextStyleTableRecord>(db.textStyleTableId());
    info.dimStyles = recordNames<AcDbDimStyleTableRecord>(db.dimStyleTableId());
    return info;
}

std::vector<EntityInfo> collectEntities(AcDbDatabase& db) {
    std::vector<EntityInfo> entities;
    RecordNames names;
    const Reading<AcDbBlockTableRecord> modelSpace(db.modelSpaceId(), AcDb::kForRead);
    if (modelSpace.openStatus() != Acad::eOk) return entities;
    forEachEntity(*modelSpace, [&](const AcDbEntity& entity) {
        entities.push_back({.handle = headless::handleText(entity.objectId().handle()),
                            .type = std::string(headless::dxfName(entity)),
                            .layer = names(entity.layerId()),
                            .extents = boxOf(entity)});
    });
    return entities;
}

} // namespace orn
