// Real drawings, saved.
#include <sys/wait.h>

#include <cstdio>
#include <fstream>
#include <iterator>

#include "db/block_table.h"
#include "db/entity.h"
#include "db/object_data.h"
#include "db/object_pointer.h"
#include "drawing_fixture.h"
#include "dxf/writer.h"
#include "ge/matrix3d.h"
#include "reference_drawings.h"
#include "support/temporary_folder.h"

namespace headless::testing {
namespace {

std::string bytesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string saved(Drawing& drawing) {
    std::string bytes;
    writeDxf(*drawing.db, [&](std::string_view piece) { bytes += piece; });
    return bytes;
}

/// The first line that differs, for a message.
std::string difference(const std::string& a, const std::string& b) {
    const auto [x, y] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (x == a.end() && y == b.end()) return {};
    const auto at = static_cast<std::size_t>(x - a.begin());
    const std::size_t begin = at < 60 ? 0 : at - 60;
    return "at " + std::to_string(at) + ":\n" + a.substr(begin, 120) + "\n-- became --\n" +
           b.substr(begin, 120);
}

bool gotOtherHandles(const Drawing& drawing) {
    const auto findings = drawing.findings();
    return std::any_of(findings.begin(), findings.end(), [](const std::string& finding) {
        return finding.find("the handle is") != std::string::npos;
    });
}

class SavedDrawings : public ReferenceDrawings {};

TEST_P(SavedDrawings, AreUnchanged) {
    Drawing drawing(GetParam());
    ASSERT_TRUE(drawing.result) << drawing.result.refusal;
    EXPECT_EQ(difference(bytesOf(GetParam()), saved(drawing)), "");
}

TEST_P(SavedDrawings, RecordsMergedWithThemselvesStayAsTheyAre) {
    Drawing drawing(GetParam());
    ASSERT_TRUE(drawing.result) << drawing.result.refusal;
    if (gotOtherHandles(drawing)) GTEST_SKIP() << "objects of one handle are told apart";
    for (const AcDbObjectId id : Residence::residents(*drawing.db)) {
        AcDbObject& object = *Residence::peek(id);
        // The root dictionary names what every drawing has, whether or not this file had it.
        const bool root = id == drawing.db->namedObjectsDictionaryId();
        if (Residence::record(object) == Residence::Record::kAsRead && !root)
            ObjectData::markChanged(object);
    }
    EXPECT_EQ(difference(bytesOf(GetParam()), saved(drawing)), "");
}

/// Does something to every so many entities of the drawing.
template <class Change>
void changeEntities(Drawing& drawing, std::size_t every, Change apply) {
    std::size_t count = 0;
    for (const AcDbObjectId id : Residence::residents(*drawing.db)) {
        if (AcDbEntity::cast(Residence::peek(id)) == nullptr || ++count % every != 0) continue;
        AcDbObjectPointer<AcDbEntity> entity;
        if (entity.open(id, AcDb::kForWrite, false, true) == Acad::eOk) apply(*entity);
    }
}

void moveThereAndBack(AcDbEntity& entity) {
    for (const double way : {1024.0, -1024.0}) {
        AcGeMatrix3d move;
        move.setToTranslation(AcGeVector3d(way, way / 2, 0));
        entity.transformBy(move);
    }
}

void colour(AcDbEntity& entity) { entity.setColorIndex(3); }

void addCopy(AcDbEntity& entity) {
    auto* const block = Residence::peek<AcDbBlockTableRecord>(entity.ownerId());
    if (block == nullptr) return;
    std::unique_ptr<AcDbEntity> copy(AcDbEntity::cast(entity.clone()));
    AcDbObjectPointer<AcDbBlockTableRecord> owner(block->objectId(), AcDb::kForWrite);
    if (copy != nullptr && owner->appendAcDbEntity(copy.get()) == Acad::eOk)
        copy.release()->close();
}

void mirror(AcDbEntity& entity) {
    entity.transformBy(AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(), AcGeVector3d(3, 4, 0))));
}

/// Gives every sheet the name of the next one in turn, so that another one is shown.
void showOtherSheet(Drawing& drawing) {
    auto& table = *Residence::peek<AcDbBlockTable>(drawing.db->blockTableId());
    for (auto* const block : records<AcDbBlockTableRecord>(table.objectId())) {
        auto& shown = *Residence::peek<AcDbBlockTableRecord>(drawing.db->paperSpaceId());
        const bool isSheet = block->isSpace() && block->objectId() != drawing.db->modelSpaceId();
        if (isSheet && block != &shown) table.exchangeNames(*block, shown);
    }
}

/// Saves the drawing with each of some changes; the files' names, quoted, one behind the other.
std::string savedWithChanges(const std::filesystem::path& file,
                             const std::filesystem::path& folder) {
    struct Case {
        const char* name;
        std::size_t every;
        void (*apply)(AcDbEntity&);
    };
    std::string names;
    for (const Case& c : {Case{"moved", 1, moveThereAndBack}, Case{"coloured", 100, colour},
                          Case{"copied", 3, addCopy}, Case{"mirrored", 2, mirror}}) {
        Drawing drawing(file);
        showOtherSheet(drawing);
        changeEntities(drawing, c.every, c.apply);
        const auto target = folder / (std::string(c.name) + ".dxf");
        EXPECT_EQ(writeDxf(*drawing.db, target).refusal, "");
        const Drawing again(target);
        EXPECT_EQ(again.report.count(), Drawing(file).report.count()) << c.name;
        EXPECT_EQ(entities(again.db->modelSpaceId()).size(),
                  entities(drawing.db->modelSpaceId()).size())
            << c.name;
        EXPECT_EQ(entities(again.db->paperSpaceId()).size(),
                  entities(drawing.db->paperSpaceId()).size())
            << c.name;
        names += " '" + target.string() + "'";
    }
    return names;
}

void auditSaved(const std::filesystem::path& file) {
    constexpr int kNotInstalled = 77;
    const test_support::TemporaryFolder folder;
    const std::string names = savedWithChanges(file, folder.path());
    const std::string command =
        std::string(ORN_AUDIT) + " '" + file.string() + "'" + names + " 2>&1";
    std::FILE* const output = ::popen(command.c_str(), "r");
    ASSERT_NE(output, nullptr);
    std::string told(4096, '\0');
    told.resize(std::fread(told.data(), 1, told.size(), output));
    const int status = ::pclose(output);
    if (WEXITSTATUS(status) == kNotInstalled) GTEST_SKIP() << told;
    EXPECT_EQ(status, 0) << told;
}

TEST_P(SavedDrawings, ChangesAddNoErrors) {
    if (gotOtherHandles(Drawing(GetParam()))) GTEST_SKIP() << "damaged as it is";
    auditSaved(GetParam());
}

TEST(SavedSamples, ChangesAddNoErrors) {
    for (const char* const name : {"floor-plan.dxf", "floor-plan-r12.dxf"}) {
        SCOPED_TRACE(name);
        auditSaved(std::filesystem::path(ORN_SAMPLES) / name);
    }
}

ORN_INSTANTIATE_FOR_DRAWINGS(SavedDrawings);

} // namespace
} // namespace headless::testing
