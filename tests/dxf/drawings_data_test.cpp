// Applications' data in real drawings against reference values that another reader gave: extended
// data, xrecords, groups, dictionaries.
#include <gmock/gmock.h>

#include "db/entity.h"
#include "db/group.h"
#include "db/object_data.h"
#include "db/xrecord.h"
#include "drawing_fixture.h"
#include "reference_drawings.h"
#include "rx/ac_string.h"

namespace headless::testing {
namespace {

std::string hexadecimal(const DataItem::Bytes& bytes) {
    std::string digits;
    for (const char byte : bytes) {
        constexpr const char* kDigits = "0123456789ABCDEF";
        digits += kDigits[static_cast<unsigned char>(byte) >> 4];
        digits += kDigits[static_cast<unsigned char>(byte) & 0xF];
    }
    return digits;
}

/// A value as the reference files show it.
struct ShownValue {
    Json::Value operator()(double real) const { return real; }
    Json::Value operator()(std::int16_t number) const { return number; }
    Json::Value operator()(std::int32_t number) const { return number; }
    Json::Value operator()(std::int64_t number) const { return Json::Int64{number}; }
    Json::Value operator()(const std::wstring& text) const { return toUtf8(text); }
    Json::Value operator()(AcDbObjectId id) const { return handleText(id.handle()); }
    Json::Value operator()(const DataItem::Bytes& bytes) const { return hexadecimal(bytes); }
    Json::Value operator()(const AcGePoint3d& point) const {
        Json::Value list;
        for (unsigned axis = 0; axis < 3; ++axis)
            list.append(point[axis]);
        return list;
    }
};

/// The values of a chain, which is freed, as [code, value] pairs.
Json::Value taken(resbuf* chain) {
    Json::Value list(Json::arrayValue);
    for (const resbuf* buffer = chain; buffer != nullptr; buffer = buffer->rbnext) {
        const auto item = itemOf(*buffer);
        Json::Value& pair = list.append(Json::arrayValue);
        pair.append(buffer->restype);
        pair.append(item ? std::visit(ShownValue{}, item->value) : Json::Value());
    }
    acutRelRb(chain);
    return list;
}

class DataComparison {
public:
    DataComparison(const std::filesystem::path& file, Json::Value oracle)
        : oracle_(std::move(oracle)), drawing_(file) {}

    void run() {
        ASSERT_TRUE(drawing_.result) << drawing_.result.refusal;
        space_ = entities(drawing_.db->modelSpaceId());
        extendedData();
        xrecords();
        groups();
        extensionDictionaries();
        EXPECT_EQ(Residence::openCount(*drawing_.db), 0U);
    }

private:
    /// The object an entry of the reference file speaks of. Files without handles count instead.
    AcDbObjectId objectOf(const Json::Value& entry) const {
        if (!entry["handle_generated"].asBool()) return idOf(entry["handle"]);
        const Json::ArrayIndex index = entry["index"].asUInt();
        return index < space_.size() ? space_[index]->objectId() : AcDbObjectId();
    }
    AcDbObjectId idOf(const Json::Value& handle) const {
        return Residence::find(*drawing_.db, std::stoull(handle.asString(), nullptr, 16));
    }

    void extendedData() {
        for (const Json::Value& entry : oracle_["xdata"]) {
            SCOPED_TRACE(traced("extended data of", entry["handle"]));
            const Opened<AcDbObject> object(objectOf(entry));
            ASSERT_TRUE(object);
            for (const std::string& application : entry["apps"].getMemberNames()) {
                Json::Value expected = entry["apps"][application];
                Json::Value name(Json::arrayValue);
                name.append(1001);
                name.append(application);
                expected.insert(0, name);
                EXPECT_EQ(taken(object->xData(fromUtf8(application).c_str())), expected);
            }
        }
    }

    void xrecords() {
        for (const Json::Value& entry : oracle_["xrecords"]) {
            SCOPED_TRACE(traced("xrecord", entry["handle"]));
            const Opened<AcDbXrecord> record(objectOf(entry));
            ASSERT_TRUE(record);
            EXPECT_EQ(handleText(record->ownerId().handle()), entry["owner"].asString());
            resbuf* chain = nullptr;
            ASSERT_EQ(record->rbChain(&chain), Acad::eOk);
            EXPECT_EQ(taken(chain), entry["tags"]);
        }
    }

    void groups() {
        for (const Json::Value& entry : oracle_["groups"]) {
            SCOPED_TRACE(traced("group", entry["name"]));
            const Opened<AcDbGroup> group(objectOf(entry));
            ASSERT_TRUE(group);
            AcString name;
            group->getName(name);
            EXPECT_EQ(toUtf8(name.kwszPtr()), entry["name"].asString());
            EXPECT_EQ(toUtf8(group->description()), entry["description"].asString());
            EXPECT_EQ(group->isSelectable(), entry["selectable"].asBool());
            EXPECT_EQ(group->isAnonymous(), entry["unnamed"].asBool());
            AcDbObjectIdArray ids;
            group->allEntityIds(ids);
            std::vector<std::string> members;
            for (const AcDbObjectId id : ids) {
                members.push_back(handleText(id.handle()));
                EXPECT_TRUE(Opened<AcDbObject>(id)->hasPersistentReactor(group->objectId()));
            }
            // The other reader knows the members but not their order.
            std::vector<std::string> expected;
            for (const Json::Value& member : entry["members"])
                expected.push_back(member.asString());
            EXPECT_THAT(members, ::testing::UnorderedElementsAreArray(expected));
        }
    }

    void extensionDictionaries() {
        for (const Json::Value& entry : oracle_["extension_dictionaries"]) {
            SCOPED_TRACE(traced("extension dictionary of", entry["owner"]));
            const Opened<AcDbObject> owner(idOf(entry["owner"]));
            ASSERT_TRUE(owner);
            const Opened<AcDbDictionary> dictionary(owner->extensionDictionary());
            ASSERT_TRUE(dictionary);
            EXPECT_EQ(dictionary->numEntries(), entry["entries"].size());
            for (const Json::Value& expected : entry["entries"]) {
                const AcDbObjectId id = dictionary->find(fromUtf8(expected["key"].asString()));
                EXPECT_EQ(handleText(id.handle()), expected["handle"].asString());
            }
        }
    }

    Json::Value oracle_;
    Drawing drawing_;
    std::vector<AcDbEntity*> space_;
};

class DrawingsData : public ReferenceDrawings {};

TEST_P(DrawingsData, AgreesWithItsReferenceValues) {
    const auto oracle = reference();
    if (!oracle) GTEST_SKIP() << "no reference values";
    DataComparison(GetParam(), *oracle).run();
}

ORN_INSTANTIATE_FOR_DRAWINGS(DrawingsData);

} // namespace
} // namespace headless::testing
