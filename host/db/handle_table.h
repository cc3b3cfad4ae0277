// The stubs of a database and how a handle finds its own.
#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

#include "db/object_id.h"

namespace headless {

/// Stubs by handle. Stubs stay where they are for the table's life.
///
/// Handles of real drawings count up with few gaps, so most sit in a plain list; those far beyond
/// the number of stubs, which hostile or very old drawings have, go to a map.
class HandleTable {
public:
    explicit HandleTable(AcDbDatabase* database) : database_(database) {}
    HandleTable(const HandleTable&) = delete;
    HandleTable& operator=(const HandleTable&) = delete;

    AcDbStub* find(Adesk::UInt64 handle) const {
        if (handle < dense_.size() && dense_[handle] != nullptr) return dense_[handle];
        return sparse_.empty() ? nullptr : findSparse(handle);
    }
    /// The stub of that handle, which is not 0, made empty when there is none.
    AcDbStub& findOrMake(Adesk::UInt64 handle);
    /// An empty stub with the next free handle.
    AcDbStub& make();

    /// Gives each of two stubs the other's handle; ids stay what they are.
    void exchange(AcDbStub& a, AcDbStub& b);

    /// The least handle that new stubs may get.
    Adesk::UInt64 seed() const { return seed_; }
    void raiseSeed(Adesk::UInt64 seed);

    std::size_t size() const { return size_; }
    bool owns(const AcDbStub* stub) const;

    /// Calls `visit` with each stub in the order they were made; stubs made meanwhile too.
    template <class Visit>
    void forEach(Visit visit) const {
        for (std::size_t c = 0; c < chunks_.size(); ++c) {
            for (std::size_t i = 0; i < chunks_[c].used; ++i)
                visit(chunks_[c].stubs[i]);
        }
    }

private:
    struct Chunk {
        std::unique_ptr<AcDbStub[]> stubs;
        std::size_t capacity;
        std::size_t used;
    };

    AcDbStub*& place(Adesk::UInt64 handle);
    AcDbStub* findSparse(Adesk::UInt64 handle) const;
    AcDbStub& allocate(Adesk::UInt64 handle);

    AcDbDatabase* database_;
    std::vector<Chunk> chunks_;
    std::vector<AcDbStub*> dense_;
    std::unordered_map<Adesk::UInt64, AcDbStub*> sparse_;
    Adesk::UInt64 seed_ = 1;
    std::size_t size_ = 0;
};

} // namespace headless
