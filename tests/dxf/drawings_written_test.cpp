// Objects of real drawings write what their records say.
#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "db/block_table.h"
#include "db/dxf_output.h"
#include "db/opaque.h"
#include "db/record_archive.h"
#include "db/xrecord.h"
#include "drawing_fixture.h"
#include "dxf/source.h"
#include "reference_drawings.h"
#include "support/written_groups.h"

namespace headless::testing {
namespace {

using test_support::Group;
using test_support::groupOf;
using test_support::groupsOf;
using test_support::WrittenGroups;

bool isAngle(int code) { return code >= 50 && code <= 58; }

bool isHandle(int code) {
    return code == 5 || (code >= 320 && code <= 369) || (code >= 390 && code <= 399);
}

bool isText(int code) {
    return code <= 9 || (code >= 100 && code <= 102) || (code >= 300 && code <= 309);
}

/// The value of a group of a file, read as the written one is shown.
Group valueOf(const DxfTag& tag, const AcDbDxfFiler& filer) {
    if (isHandle(tag.code)) return {tag.code, test_support::hexadecimal(tag.handle())};
    if (isText(tag.code)) return {tag.code, toUtf8(filer.text(tag))};
    return {tag.code, tag.real()};
}

bool sameValue(const Group& written, const Group& stated) {
    if (written == stated) return true;
    if (isAngle(written.code) && stated.isNumber)
        return std::abs(std::remainder(written.number - stated.number, 360.0)) < 1e-10;
    // Names are written as their records have them, whatever the case they were referred to by.
    return !written.isNumber && lower(written.text) == lower(stated.text);
}

class WrittenDrawing {
public:
    explicit WrittenDrawing(const std::filesystem::path& file) : drawing_(file) {}

    void run() {
        ASSERT_TRUE(drawing_.result) << drawing_.result.refusal;
        DxfOutFiler writer(drawing_.db.get(), DrawingVersion::k2018);
        test_support::GroupFiler reader(*drawing_.db);
        for (const AcDbObjectId id : Residence::residents(*drawing_.db)) {
            const AcDbObject& object = *Residence::peek(id);
            if (Residence::source(object).length == 0) continue;
            const WrittenGroups first = groupsOf(writer.write(object));
            compareWithRecord(object, writer.write(object));
            // Symbol tables do not read themselves, extension records keep their values in the
            // file.
            const bool reads = object.isA()->dxfNameBytes() != nullptr;
            if (!reads || object.isKindOf(AcDbXrecord::desc())) continue;
            const auto again = test_support::readWritten(reader, *object.isA(), first);
            ASSERT_NE(again, nullptr);
            compareLists(object, withoutParts(first), withoutParts(groupsOf(writer.write(*again))));
        }
        std::string list;
        for (const auto& [fault, count] : faults_)
            list += std::to_string(count) + " x " + fault + ", first of handle " +
                    handleText(firsts_[fault]) + '\n';
        EXPECT_TRUE(faults_.empty()) << list;
    }

private:
    void note(const AcDbObject& object, const std::string& fault) {
        const std::string full = std::string(toUtf8(object.isA()->name())) + ' ' + fault;
        ++faults_[full];
        firsts_.emplace(full, object.objectId().handle());
    }

    /// Without what counts the vertices or attributes that an object alone does not have.
    static WrittenGroups withoutParts(WrittenGroups groups) {
        const bool mesh =
            std::find(groups.begin(), groups.end(), Group(100, "AcDbPolyFaceMesh")) != groups.end();
        std::erase_if(groups, [mesh](const Group& group) {
            return group.code == 66 || (mesh && (group.code == 71 || group.code == 72));
        });
        return groups;
    }

    void compareLists(const AcDbObject& object, const WrittenGroups& a, const WrittenGroups& b) {
        const std::string what = "read again";
        const std::size_t common = std::min(a.size(), b.size());
        for (std::size_t i = 0; i < common; ++i) {
            if (sameValue(a[i], b[i])) continue;
            return note(object, what + ": " + ::testing::PrintToString(a[i]) + " becomes " +
                                    ::testing::PrintToString(b[i]));
        }
        if (a.size() != b.size())
            note(object, what + ": " + std::to_string(a.size()) + " groups become " +
                             std::to_string(b.size()));
    }

    void compareWithRecord(const AcDbObject& object, const DxfOutput& output) {
        readAgain(object, [&](std::span<const DxfTag> groups, AcDbDxfFiler& filer) {
            const std::vector<DxfTag> own = ownGroups(groups);
            const DxfRecord record(own);
            for (const DxfOutPart& part : output.parts())
                if (!part.application && !part.whole)
                    comparePart(object, output, part, record, filer);
        });
    }

    /// Neither extended data nor groups in braces.
    static std::vector<DxfTag> ownGroups(std::span<const DxfTag> groups) {
        std::vector<DxfTag> own;
        bool inBraces = false;
        for (const DxfTag& tag : groups) {
            if (tag.code >= 1000 || tag.code == 101) break;
            if (tag.code == 102) inBraces = tag.text().starts_with('{');
            if (!inBraces && tag.code != 102) own.push_back(tag);
        }
        return own;
    }

    using ByCode = std::map<int, WrittenGroups>;

    void comparePart(const AcDbObject& object, const DxfOutput& output, const DxfOutPart& part,
                     const DxfRecord& record, const AcDbDxfFiler& filer) {
        ByCode written;
        std::map<int, std::uint32_t> masks;
        for (const DxfOutTag& tag : output.tagsOf(part)) {
            if (tag.code == 100) continue;
            written[tag.code].push_back(groupOf(tag));
            if (tag.kind == DxfOutTag::Kind::kFlags) masks[tag.code] = tag.mask;
        }
        ByCode stated;
        for (const DxfTag& tag : record.subclass(part.name)) {
            if (std::find(part.codes.begin(), part.codes.end(), tag.code) == part.codes.end())
                continue;
            Group value = valueOf(tag, filer);
            if (masks.contains(tag.code))
                value.number = static_cast<double>(tag.integer() & masks[tag.code]);
            stated[tag.code].push_back(value);
        }
        alike(part.name, written);
        alike(part.name, stated);
        for (const auto& [code, values] : stated)
            compareValues(object, std::string(part.name) + ' ' + std::to_string(code),
                          written[code], values);
    }

    /// Leaves out and puts in order what may differ between writers.
    static void alike(std::string_view part, ByCode& groups) {
        if (part == "AcDbMText") { // chunks of any size
            std::string text;
            for (const int code : {3, 1})
                for (const Group& chunk : groups[code])
                    text += chunk.text;
            groups.erase(3);
            groups[1] = {Group(1, text)};
        }
        if (part == "AcDbDictionary") { // soft and hard entries
            WrittenGroups& entries = groups[350];
            for (const Group& entry : groups[360])
                entries.emplace_back(350, entry.text);
            groups.erase(360);
        }
        if (part == "AcDbSortentsTable") { // pairs in any order
            for (const int code : {5, 331})
                std::sort(groups[code].begin(), groups[code].end(),
                          [](const Group& a, const Group& b) { return a.text < b.text; });
        }
        if (part == "AcDbDimStyleTableRecord") groups.erase(70); // some state it twice
        if (part == "AcDbText")                                  // of no meaning unless aligned
            for (const int code : {11, 21, 31})
                if (!groups.contains(72)) groups.erase(code);
        if (part.ends_with("dPolyline")) { // only the height counts
            groups.erase(10);
            groups.erase(20);
        }
        groups.erase(66); // Some promise attributes that do not follow.
    }

    void compareValues(const AcDbObject& object, const std::string& what,
                       const WrittenGroups& written, const WrittenGroups& stated) {
        if (written.empty()) {
            const auto lost =
                std::find_if_not(stated.begin(), stated.end(), [&](const Group& group) {
                    return isUsual(group) || namesNoBlock(group);
                });
            if (lost != stated.end())
                note(object, what + " is not written: " + ::testing::PrintToString(*lost));
            return;
        }
        // Drawings get the dictionaries that every one has.
        const bool completed =
            object.isKindOf(AcDbDictionary::desc()) && written.size() > stated.size();
        if (written.size() != stated.size() && !completed)
            return note(object, what + " stands " + std::to_string(stated.size()) +
                                    " times, is written " + std::to_string(written.size()) +
                                    " times");
        for (std::size_t i = 0; i < stated.size(); ++i) {
            if (sameValue(written[i], stated[i])) continue;
            if (isHandle(stated[i].code) && sharesHandles()) continue;
            return note(object, what + " is " + ::testing::PrintToString(stated[i]) + ", written " +
                                    ::testing::PrintToString(written[i]));
        }
    }

    /// Names of blocks that the file does not define lead nowhere.
    bool namesNoBlock(const Group& group) const {
        const auto* const blocks = Residence::peek<AcDbSymbolTable>(drawing_.db->blockTableId());
        return group.code == 2 && blocks->findRecord(fromUtf8(group.text)).isNull();
    }

    /// Values that files take for granted where a group is missing.
    static bool isUsual(const Group& value) {
        static const std::multimap<int, double> kUsual = {{41, 1}, {42, 1},   {43, 1},   {44, 1},
                                                          {48, 1}, {62, 256}, {370, -1}, {230, 1},
                                                          {70, 1}, {71, 1}};
        if (!value.isNumber)
            return value.text.empty() || value.text == "0" || lower(value.text) == "bylayer";
        const auto [begin, end] = kUsual.equal_range(value.code);
        return value.number == 0.0 || std::any_of(begin, end, [&](const auto& usual) {
                   return usual.second == value.number;
               });
    }

    /// True for a drawing whose objects shared handles: some have another one now.
    bool sharesHandles() const {
        const auto lines = drawing_.findings();
        return std::any_of(lines.begin(), lines.end(), [](const std::string& line) {
            return line.find("the handle is") != std::string::npos;
        });
    }

    Drawing drawing_;
    std::map<std::string, int> faults_;
    std::map<std::string, std::uint64_t> firsts_;
};

class DrawingsWritten : public ReferenceDrawings {};

TEST_P(DrawingsWritten, SayWhatTheirRecordsSay) { WrittenDrawing(GetParam()).run(); }

ORN_INSTANTIATE_FOR_DRAWINGS(DrawingsWritten);

} // namespace
} // namespace headless::testing
