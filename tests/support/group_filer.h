// A reader of records that are written down in the test.
#pragma once

#include <deque>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "db/drawing_roots.h"
#include "db/dxf_filer.h"
#include "db/residence.h"
#include "db/symbol_table.h"
#include "win/code_page.h"

namespace test_support {

/// The groups of a record as codes and texts.
class Groups : public std::vector<std::pair<int, std::string>> {
public:
    using vector::vector;
    Groups() = default;
    /// "40=2.5|10=1,2,3|1=text" and so on, a point with its two or three codes.
    Groups(const char* list) {
        std::istringstream parts(list);
        for (std::string part; std::getline(parts, part, '|');) {
            const std::size_t sign = part.find('=');
            int code = std::stoi(part);
            const bool isPoint = (code >= 10 && code <= 18) || (code >= 210 && code <= 213);
            std::istringstream values(part.substr(sign + 1));
            if (!isPoint) emplace_back(code, values.str());
            for (std::string value; isPoint && std::getline(values, value, ','); code += 10)
                emplace_back(code, value);
        }
    }
};

/// Reads records given as groups; texts are UTF-8, names are looked up in the database's tables.
class GroupFiler : public AcDbDxfFiler {
public:
    explicit GroupFiler(AcDbDatabase& db) : AcDbDxfFiler(&db) {}

    void give(const Groups& groups) {
        tags_ = tagsOf(groups);
        setRecord(tags_);
    }
    /// Tags whose texts live as long as the filer.
    std::vector<headless::DxfTag> tagsOf(const Groups& groups) {
        std::vector<headless::DxfTag> tags;
        for (const auto& [code, text] : groups) {
            const std::string& kept = texts_.emplace_back(text);
            headless::DxfTag& tag = tags.emplace_back();
            tag.code = static_cast<std::int16_t>(code);
            tag.bytes = kept.data();
            tag.length = static_cast<std::uint32_t>(kept.size());
        }
        return tags;
    }

    std::wstring text(const headless::DxfTag& tag) const override {
        return headless::fromUtf8({tag.bytes, tag.length});
    }
    AcDbObjectId objectId(const headless::DxfTag& handle) override {
        return AcDbObjectId(headless::Residence::announce(*database(), handle.handle()));
    }
    AcDbObjectId symbolId(AcRxClass* recordClass, const headless::DxfTag& name) override {
        return headless::DrawingRoots::table(*database(), recordClass)->findRecord(text(name));
    }
    void report(const headless::DxfTag& tag, std::string_view problem) override {
        reports.push_back(std::to_string(tag.code) + ": " + std::string(problem));
    }

    std::vector<std::string> reports;

private:
    std::vector<headless::DxfTag> tags_;
    std::deque<std::string> texts_;
};

} // namespace test_support
