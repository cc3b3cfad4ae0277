// What the tests of applications' data share: lists of values written down in a line each, and a
// file whose records are written down in the test.
#pragma once

#include "core_support.h"

#include <map>
#include <sstream>

#include "db/data_item.h"
#include "db/record_archive.h"
#include "db/resbuf.h"

namespace datatest {

using namespace coretest;

/// Chains in tests are freed when they go out of scope.
struct ChainDeleter {
    void operator()(resbuf* chain) const { acutRelRb(chain); }
};
using Chain = std::unique_ptr<resbuf, ChainDeleter>;

template <class... Arguments>
Chain chain(Arguments... arguments) {
    return Chain(acutBuildList(arguments..., RTNONE));
}

struct ShownValue {
    std::wostringstream& out;

    void operator()(const std::wstring& text) const { out << text; }
    void operator()(const AcGePoint3d& p) const { out << p.x << ' ' << p.y << ' ' << p.z; }
    void operator()(AcDbObjectId id) const { out << std::hex << id.handle() << std::dec; }
    void operator()(const headless::DataItem::Bytes& bytes) const {
        out << std::wstring(bytes.begin(), bytes.end());
    }
    template <class Number>
    void operator()(Number number) const {
        out << number;
    }
};

/// "1001=APP 1070=7" and so on.
inline std::wstring shown(const resbuf* chain) {
    std::wostringstream out;
    for (; chain != nullptr; chain = chain->rbnext) {
        out << chain->restype << L'=';
        if (const auto item = headless::itemOf(*chain)) std::visit(ShownValue{out}, item->value);
        if (chain->rbnext != nullptr) out << L' ';
    }
    return out.str();
}

/// A file of records: the n-th one has the span that at(n) gives.
class Archive : public headless::RecordArchive {
public:
    void read(AcDbDatabase& db, headless::SourceSpan span, const Visit& visit) const override {
        GroupFiler filer(db);
        const auto tags = filer.tagsOf(records.at(span.offset));
        ++reads;
        visit(tags, filer);
    }

    /// Makes the object one that was read from that record.
    void put(AcDbObjectId id, Groups groups) {
        records.push_back(std::move(groups));
        headless::SourceSpan span;
        span.offset = records.size() - 1;
        span.length = 1;
        Residence::setSource(*Residence::peek(id), span);
    }

    std::vector<Groups> records;
    mutable int reads = 0;
};

/// A database that was read from such a file, with an application "APP" and one "Other".
class DataTest : public CoreTest {
protected:
    DataTest() {
        db.keepSource(nullptr, {}, &archive);
        addRecord<AcDbRegAppTableRecord>(db.regAppTableId(), L"APP");
        addRecord<AcDbRegAppTableRecord>(db.regAppTableId(), L"Other");
    }

    Archive archive;
};

} // namespace datatest
