// Real drawings against reference values that another reader and exact formulas gave.
//
// See reference_drawings.h for where they come from.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <numbers>
#include <set>

#include <json/json.h>

#include "db/arc.h"
#include "db/attribute.h"
#include "db/block_reference.h"
#include "db/circle.h"
#include "db/dimension.h"
#include "db/geometry_sink.h"
#include "db/mtext.h"
#include "db/opaque.h"
#include "db/polyface_mesh.h"
#include "db/polygon_mesh.h"
#include "db/polyline.h"
#include "db/polyline_2d.h"
#include "db/polyline_3d.h"
#include "db/text.h"
#include "drawing_fixture.h"
#include "dxf/record_parts.h"
#include "reference_drawings.h"
#include "win/casing.h"

namespace headless::testing {
namespace {

/// A copy that the platform made for its caller.
std::string taken(ACHAR* copy) {
    const std::string text = copy == nullptr ? std::string() : toUtf8(copy);
    std::free(copy);
    return text;
}

/// Equal to 1e-9 of the greater of 1 and the expected value.
void expectClose(double actual, const Json::Value& expected, const std::string& what) {
    if (expected.isNull()) return;
    const double value = expected.asDouble();
    EXPECT_NEAR(actual, value, 1e-9 * std::max(1.0, std::abs(value))) << what;
}

/// What space and blocks have in common in the reference files.
Json::Value summary(const std::vector<AcDbEntity*>& all) {
    std::map<std::string, int> byType;
    std::map<std::string, int> byLayer;
    int attributes = 0;
    for (AcDbEntity* const entity : all) {
        const Opened<AcDbEntity> open(entity->objectId());
        ++byType[std::string(dxfName(*entity))];
        ++byLayer[nameOf(open->layerId())];
        if (auto* const reference = AcDbBlockReference::cast(entity)) {
            reference->subentities().forEach<AcDbAttribute>([&](AcDbAttribute&) { ++attributes; });
        }
    }
    Json::Value result;
    result["total"] = static_cast<int>(all.size());
    result["attribs"] = attributes;
    result["by_type"] = Json::objectValue;
    result["by_layer"] = Json::objectValue;
    for (const auto& [name, count] : byType)
        result["by_type"][name] = count;
    for (const auto& [name, count] : byLayer)
        result["by_layer"][name] = count;
    return result;
}

/// The same of a reference file's entry, without what else it holds.
Json::Value summary(const Json::Value& entry) {
    Json::Value result;
    for (const char* const key : {"total", "attribs", "by_type", "by_layer"}) {
        result[key] = entry[key];
    }
    return result;
}

class Comparison {
public:
    Comparison(const std::filesystem::path& file, Json::Value oracle)
        : oracle_(std::move(oracle)), drawing_(file) {}

    void run() {
        ASSERT_TRUE(drawing_.result) << drawing_.result.refusal;
        space_ = entities(drawing_.db->modelSpaceId());
        layers();
        linetypes();
        textStyles();
        blocks();
        spaces();
        curves();
        boxes();
        references();
        annotations();
        dictionaries();
        EXPECT_EQ(Residence::openCount(*drawing_.db), 0U);
    }

private:
    /// The object an entry of the reference file speaks of. Files without handles count instead.
    template <class T>
    T* object(const Json::Value& entry) {
        if (entry["handle_generated"].asBool()) {
            const Json::Value& index = entry["index"];
            if (!index.isUInt() || index.asUInt() >= space_.size()) return nullptr;
            return T::cast(space_[index.asUInt()]);
        }
        return at<T>(drawing_, std::stoull(entry["handle"].asString(), nullptr, 16));
    }

    /// Handles that two objects of the file state: what is no entity gives way.
    bool isShared(const std::string& handle) const {
        const auto& boxed = oracle_["extents"];
        return std::any_of(boxed.begin(), boxed.end(), [&](const Json::Value& entry) {
            return entry["handle"].asString() == handle;
        });
    }

    /// True when the file itself states the entry's handle, and for one object only.
    bool isStated(const Json::Value& entry) {
        if (stated_.empty()) {
            DxfReadReport ignored;
            const auto scanner = RecordScanner::make(drawing_.db->sourceBytes(), ignored);
            RecordSplitter splitter(ignored);
            ScannedRecord record;
            while (scanner->next(record)) {
                stated_.insert(handleText(splitter.split(record, false).handle));
            }
        }
        return stated_.count(entry["handle"].asString()) == 1;
    }

    template <class Record, class Check>
    void table(const char* key, AcDbObjectId tableId, Check check) {
        std::vector<Record*> all = records<Record>(tableId);
        std::map<std::string, std::vector<Record*>> byName;
        for (Record* const record : all)
            byName[toUtf8(record->nameOf())].push_back(record);
        for (const Json::Value& entry : oracle_[key]) {
            SCOPED_TRACE(traced(key, entry["name"]));
            auto& named = byName[entry["name"].asString()];
            ASSERT_FALSE(named.empty());
            const Opened<Record> record(named.front()->objectId());
            ASSERT_TRUE(record);
            check(*record, entry);
            const std::string handle = entry["handle"].asString();
            if (entry.isMember("handle") && !entry["handle_generated"].asBool() &&
                !isShared(handle)) {
                EXPECT_EQ(handleText(record->objectId().handle()), handle);
            }
            named.erase(named.begin());
        }
    }

    void layers() {
        table<AcDbLayerTableRecord>(
            "layers", drawing_.db->layerTableId(),
            [](const AcDbLayerTableRecord& layer, const Json::Value& entry) {
                EXPECT_EQ(layer.isOff(), entry["off"].asBool());
                EXPECT_EQ(layer.isFrozen(), entry["frozen"].asBool());
                EXPECT_EQ(layer.isLocked(), entry["locked"].asBool());
                EXPECT_EQ(layer.isPlottable(), entry["plot"].asBool());
                EXPECT_EQ(static_cast<int>(layer.lineWeight()), entry["lineweight"].asInt());
                if (entry["true_color"].isNull()) {
                    EXPECT_EQ(layer.color().colorIndex(), entry["color"].asInt());
                } else {
                    const AcCmColor color = layer.color();
                    EXPECT_EQ(color.red() << 16 | color.green() << 8 | color.blue(),
                              entry["true_color"].asInt());
                }
                EXPECT_EQ(lower(nameOf(layer.linetypeObjectId())),
                          lower(entry["linetype"].asString()));
            });
    }

    void linetypes() {
        table<AcDbLinetypeTableRecord>(
            "linetypes", drawing_.db->linetypeTableId(),
            [](const AcDbLinetypeTableRecord& linetype, const Json::Value& entry) {
                ACHAR* comments = nullptr;
                linetype.comments(comments);
                EXPECT_EQ(taken(comments), entry["description"].asString());
            });
    }

    void textStyles() {
        table<AcDbTextStyleTableRecord>(
            "text_styles", drawing_.db->textStyleTableId(),
            [](const AcDbTextStyleTableRecord& style, const Json::Value& entry) {
                const ACHAR* file = nullptr;
                style.fileName(file);
                EXPECT_EQ(toUtf8(file), entry["font"].asString());
                style.bigFontFileName(file);
                EXPECT_EQ(toUtf8(file), entry["bigfont"].asString());
                expectClose(style.textSize(), entry["height"], "height");
                expectClose(style.xScale(), entry["width"], "width");
                expectClose(style.obliquingAngle() * 180.0 / std::numbers::pi, entry["oblique"],
                            "oblique");
            });
        std::multiset<std::string> shapes;
        for (auto* const style :
             records<AcDbTextStyleTableRecord>(drawing_.db->textStyleTableId())) {
            const Opened<AcDbTextStyleTableRecord> open(style->objectId());
            if (!open->isShapeFile()) continue;
            const ACHAR* file = nullptr;
            open->fileName(file);
            shapes.insert(toUtf8(file));
        }
        std::multiset<std::string> expected;
        for (const Json::Value& file : oracle_["shape_files"])
            expected.insert(file.asString());
        EXPECT_EQ(shapes, expected);
    }

    void blocks() {
        std::multiset<std::string> names;
        std::multiset<std::string> expected;
        for (const Json::Value& name : oracle_["block_names"])
            expected.insert(name.asString());
        for (auto* const block : records<AcDbBlockTableRecord>(drawing_.db->blockTableId())) {
            const Opened<AcDbBlockTableRecord> open(block->objectId());
            if (!open->isLayout()) names.insert(toUtf8(block->nameOf()));
        }
        EXPECT_EQ(names, expected);
        table<AcDbBlockTableRecord>(
            "blocks", drawing_.db->blockTableId(),
            [](const AcDbBlockTableRecord& block, const Json::Value& entry) {
                EXPECT_EQ(summary(entities(block.objectId())), summary(entry));
                for (unsigned axis = 0; axis < 3; ++axis) {
                    expectClose(block.origin()[axis], entry["base_point"][axis], "base point");
                }
            });
    }

    void spaces() {
        EXPECT_EQ(summary(space_), summary(oracle_["model_space"]));
        // Layouts go by their titles there, by their blocks here.
        std::multiset<Json::Value> papers;
        std::multiset<Json::Value> expected;
        for (auto* const block : records<AcDbBlockTableRecord>(drawing_.db->blockTableId())) {
            const Opened<AcDbBlockTableRecord> open(block->objectId());
            if (!open->isLayout() || block->objectId() == drawing_.db->modelSpaceId()) continue;
            const auto all = entities(block->objectId());
            if (!all.empty()) papers.insert(summary(all));
        }
        for (const Json::Value& paper : oracle_["paper_spaces"]) {
            if (paper["total"].asInt() != 0) expected.insert(summary(paper));
        }
        EXPECT_EQ(papers, expected);
    }

    void polyline(const AcDbEntity& entity, const Json::Value& entry) {
        const auto kind = entry["kind"].asString();
        const auto vertices = [&](const auto* owner) {
            return const_cast<std::remove_const_t<std::remove_pointer_t<decltype(owner)>>*>(owner)
                ->subentities()
                .size();
        };
        std::size_t count = 0;
        bool closed = false;
        if (const auto* const light = AcDbPolyline::cast(&entity)) {
            count = light->numVerts();
            closed = light->isClosed();
            EXPECT_EQ(static_cast<bool>(light->hasBulges()), entry["has_bulge"].asBool());
            EXPECT_EQ(kind, "2d");
        } else if (const auto* const flat = AcDb2dPolyline::cast(&entity)) {
            count = vertices(flat);
            closed = flat->isClosed();
            EXPECT_EQ(kind, "2d");
        } else if (const auto* const spatial = AcDb3dPolyline::cast(&entity)) {
            count = vertices(spatial);
            closed = spatial->isClosed();
            EXPECT_EQ(kind, "3d");
        } else if (const auto* const faces = AcDbPolyFaceMesh::cast(&entity)) {
            EXPECT_EQ(vertices(faces), entry["vertex_count"].asUInt());
            EXPECT_EQ(kind, "polyface");
            return;
        } else if (const auto* const mesh = AcDbPolygonMesh::cast(&entity)) {
            EXPECT_EQ(vertices(mesh), entry["vertex_count"].asUInt());
            EXPECT_EQ(kind, "mesh");
            return;
        } else {
            FAIL() << "no polyline";
        }
        EXPECT_EQ(count, entry["vertex_count"].asUInt());
        EXPECT_EQ(closed, entry["closed"].asBool());
        const auto& curve = static_cast<const AcDbCurve&>(entity);
        measures(curve, entry);
    }

    static void measures(const AcDbCurve& curve, const Json::Value& entry) {
        double value = 0.0;
        if (!entry["area"].isNull()) {
            EXPECT_EQ(curve.getArea(value), Acad::eOk);
            expectClose(value, entry["area"], "area");
        }
        double end = 0.0;
        EXPECT_EQ(curve.getEndParam(end), Acad::eOk);
        EXPECT_EQ(curve.getDistAtParam(end, value), Acad::eOk);
        expectClose(value, entry["length"], "length");
    }

    void curves() {
        for (const Json::Value& entry : oracle_["polylines"]) {
            SCOPED_TRACE(traced("polyline", entry["handle"]));
            auto* const entity = object<AcDbEntity>(entry);
            ASSERT_NE(entity, nullptr);
            const Opened<AcDbEntity> open(entity->objectId());
            EXPECT_EQ(nameOf(open->layerId()), entry["layer"].asString());
            polyline(*open, entry);
        }
        for (const Json::Value& entry : oracle_["circles"]) {
            SCOPED_TRACE(traced("circle", entry["handle"]));
            auto* const entity = object<AcDbCircle>(entry);
            ASSERT_NE(entity, nullptr);
            const Opened<AcDbCircle> circle(entity->objectId());
            expectClose(circle->radius(), entry["radius"], "radius");
            measures(*circle, entry);
        }
        for (const Json::Value& entry : oracle_["arcs"]) {
            SCOPED_TRACE(traced("arc", entry["handle"]));
            auto* const entity = object<AcDbArc>(entry);
            ASSERT_NE(entity, nullptr);
            const Opened<AcDbArc> arc(entity->objectId());
            expectClose(arc->radius(), entry["radius"], "radius");
            expectClose(arc->length(), entry["length"], "length");
        }
    }

    static void expectBox(const AcDbExtents& box, const Json::Value& entry) {
        for (unsigned axis = 0; axis < 3; ++axis) {
            const double size = std::max(std::abs(entry["min"][axis].asDouble()),
                                         std::abs(entry["max"][axis].asDouble()));
            const double tolerance = 1e-9 * std::max(1.0, size);
            EXPECT_NEAR(box.minPoint()[axis], entry["min"][axis].asDouble(), tolerance);
            EXPECT_NEAR(box.maxPoint()[axis], entry["max"][axis].asDouble(), tolerance);
        }
    }

    void boxes() {
        for (const Json::Value& entry : oracle_["extents"]) {
            SCOPED_TRACE(traced(entry["type"].asString(), entry["handle"]));
            auto* const entity = object<AcDbEntity>(entry);
            ASSERT_NE(entity, nullptr);
            EXPECT_EQ(dxfName(*entity), entry["type"].asString());
            const Opened<AcDbEntity> open(entity->objectId());
            AcDbExtents lines;
            AcDbExtents box;
            ASSERT_EQ(contentExtents(*entity, BoxOf::lines, lines), Acad::eOk);
            ASSERT_EQ(open->getGeomExtents(box), Acad::eOk);
            expectBox(lines, entry); // The reference boxes are those of centre lines.
            EXPECT_LE(box.minPoint().x, lines.minPoint().x);
            EXPECT_GE(box.maxPoint().x, lines.maxPoint().x);
        }
    }

    void references() {
        for (const Json::Value& entry : oracle_["inserts"]) {
            SCOPED_TRACE(traced("INSERT", entry["handle"]));
            auto* const entity = object<AcDbBlockReference>(entry);
            ASSERT_NE(entity, nullptr);
            const Opened<AcDbBlockReference> reference(entity->objectId());
            EXPECT_EQ(nameOf(reference->blockTableRecord()), entry["name"].asString());
            attributes(*entity, entry["attribs"]);
            AcDbExtents box;
            const auto status = contentExtents(*entity, BoxOf::lines, box);
            if (entry["min"].isNull()) {
                EXPECT_EQ(status, Acad::eNullExtents);
            } else if (entry["exact"].asBool()) {
                ASSERT_EQ(status, Acad::eOk);
                expectBox(box, entry);
            }
        }
    }

    static void attributes(AcDbBlockReference& reference, const Json::Value& expected) {
        Json::ArrayIndex index = 0;
        reference.subentities().forEach<AcDbAttribute>([&](AcDbAttribute& attribute) {
            const Opened<AcDbAttribute> open(attribute.objectId());
            const Json::Value& entry = expected[index++];
            EXPECT_EQ(toUtf8(open->tagConst()), entry["tag"].asString());
            EXPECT_EQ(toUtf8(open->textStringConst()), entry["text"].asString());
        });
        EXPECT_EQ(index, expected.size());
    }

    void annotations() {
        for (const Json::Value& entry : oracle_["dimensions"]) {
            if (entry["type"].asString() != "DIMENSION") continue;
            SCOPED_TRACE(traced("DIMENSION", entry["handle"]));
            auto* const entity = object<AcDbDimension>(entry);
            ASSERT_NE(entity, nullptr);
            const Opened<AcDbDimension> dimension(entity->objectId());
            const bool defined =
                oracle_["block_names"].isArray() &&
                std::any_of(oracle_["block_names"].begin(), oracle_["block_names"].end(),
                            [&](const Json::Value& name) { return name == entry["block"]; });
            EXPECT_EQ(nameOf(dimension->dimBlockId()), defined ? entry["block"].asString() : "");
        }
        for (const Json::Value& entry : oracle_["texts"]) {
            if (entry["handle_generated"].asBool() || !isStated(entry)) continue;
            SCOPED_TRACE(traced(entry["type"].asString(), entry["handle"]));
            auto* const entity = object<AcDbEntity>(entry);
            ASSERT_NE(entity, nullptr);
            const Opened<AcDbEntity> open(entity->objectId());
            if (const auto* const text = AcDbText::cast(entity)) {
                EXPECT_EQ(toUtf8(text->textStringConst()), entry["text"].asString());
            } else if (const auto* const block = AcDbMText::cast(entity)) {
                EXPECT_EQ(taken(block->contents()), entry["text"].asString());
            }
        }
    }

    void dictionaries() {
        for (const Json::Value& entry : oracle_["dictionary"]) {
            AcDbObjectId id = drawing_.db->namedObjectsDictionaryId();
            std::string path;
            for (const Json::Value& key : entry["path"]) {
                path.append("/").append(key.asString());
                const auto* const dictionary = Residence::peek<AcDbDictionary>(id);
                id = dictionary == nullptr ? AcDbObjectId()
                                           : dictionary->find(fromUtf8(key.asString()));
            }
            SCOPED_TRACE(path);
            const AcDbObject* const found = Residence::peek(id);
            ASSERT_NE(found, nullptr);
            EXPECT_EQ(dxfName(*found), entry["type"].asString());
            EXPECT_EQ(handleText(id.handle()), entry["handle"].asString());
        }
        for (const Json::Value& entry : oracle_["extension_dictionaries"]) {
            SCOPED_TRACE(traced("extension dictionary of", entry["owner"]));
            const auto handle = std::stoull(entry["owner"].asString(), nullptr, 16);
            const auto* const owner = at<AcDbObject>(drawing_, handle);
            ASSERT_NE(owner, nullptr);
            EXPECT_EQ(handleText(owner->extensionDictionary().handle()),
                      entry["handle"].asString());
        }
    }

    Json::Value oracle_;
    Drawing drawing_;
    std::vector<AcDbEntity*> space_;
    std::multiset<std::string> stated_; // handles in the file
};

class Drawings : public ReferenceDrawings {};

TEST_P(Drawings, AgreeWithTheirReferenceValues) {
    const auto oracle = reference();
    if (!oracle) GTEST_SKIP() << "no reference values";
    Comparison(GetParam(), *oracle).run();
}

ORN_INSTANTIATE_FOR_DRAWINGS(Drawings);

} // namespace
} // namespace headless::testing
