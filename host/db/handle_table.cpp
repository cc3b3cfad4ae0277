#include "db/handle_table.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <utility>

namespace headless {
namespace {

constexpr std::size_t kFirstChunk = 256;
constexpr std::size_t kLargestChunk = 32768;
// Handles below this times the number of stubs, or below the floor, go to the plain list: at most
// 32 bytes a stub are spent on gaps.
constexpr std::size_t kSparsity = 4;
constexpr std::size_t kDenseFloor = 4096;

} // namespace

AcDbStub& HandleTable::findOrMake(Adesk::UInt64 handle) {
    if (AcDbStub* const known = find(handle); known != nullptr) return *known;
    return allocate(handle);
}

AcDbStub& HandleTable::make() {
    while (find(seed_) != nullptr)
        ++seed_;
    return allocate(seed_);
}

AcDbStub*& HandleTable::place(Adesk::UInt64 handle) {
    if (handle < dense_.size() && dense_[handle] != nullptr) return dense_[handle];
    return sparse_[handle];
}

void HandleTable::exchange(AcDbStub& a, AcDbStub& b) {
    std::swap(place(a.handle), place(b.handle));
    std::swap(a.handle, b.handle);
}

void HandleTable::raiseSeed(Adesk::UInt64 seed) {
    // The numbers beyond are left unused, so that a file naming the greatest handle of all does not
    // end the supply.
    constexpr Adesk::UInt64 kGreatestSeed = std::numeric_limits<Adesk::UInt64>::max() >> 1;
    if (seed > seed_ && seed <= kGreatestSeed) seed_ = seed;
}

AcDbStub* HandleTable::findSparse(Adesk::UInt64 handle) const {
    const auto found = sparse_.find(handle);
    return found == sparse_.end() ? nullptr : found->second;
}

AcDbStub& HandleTable::allocate(Adesk::UInt64 handle) {
    if (chunks_.empty() || chunks_.back().used == chunks_.back().capacity) {
        const std::size_t capacity =
            chunks_.empty() ? kFirstChunk : std::min(chunks_.back().capacity * 2, kLargestChunk);
        chunks_.push_back({std::make_unique<AcDbStub[]>(capacity), capacity, 0});
    }
    Chunk& chunk = chunks_.back();
    AcDbStub& stub = chunk.stubs[chunk.used++];
    stub.database = database_;
    stub.handle = handle;
    ++size_;

    if (handle < std::max(size_ * kSparsity, kDenseFloor)) {
        if (handle >= dense_.size())
            dense_.resize(std::max<std::size_t>(handle + 1, dense_.size() + dense_.size() / 2));
        dense_[handle] = &stub;
    } else {
        sparse_.emplace(handle, &stub);
    }
    raiseSeed(handle + 1);
    return stub;
}

bool HandleTable::owns(const AcDbStub* stub) const {
    return std::any_of(chunks_.begin(), chunks_.end(), [&](const Chunk& chunk) {
        const AcDbStub* const first = chunk.stubs.get();
        return !std::less<>{}(stub, first) && std::less<>{}(stub, first + chunk.used) &&
               (reinterpret_cast<std::uintptr_t>(stub) - reinterpret_cast<std::uintptr_t>(first)) %
                       sizeof(AcDbStub) ==
                   0;
    });
}

} // namespace headless
