// The platform's growable array.
//
// Indices and lengths are `int`. The logical length counts the elements in use; the physical
// length is the room that has been allocated for them.
#pragma once

#include <algorithm>
#include <cassert>
#include <climits>
#include <memory>
#include <type_traits>
#include <utility>

// The platform lets a caller name how elements move to new storage. Elements move here as their
// own type says, which is right for both kinds, so the two only complete the array's type.
template <class T>
struct AcArrayMemCopyReallocator {};
template <class T>
struct AcArrayObjectCopyReallocator {};

template <class T, class R = AcArrayObjectCopyReallocator<T>>
class AcArray {
public:
    using Type = T;
    using value_type = T;
    using iterator = T*;
    using const_iterator = const T*;

    explicit AcArray(int initPhysicalLength = 0, int initGrowLength = 8) {
        setGrowLength(initGrowLength);
        setPhysicalLength(initPhysicalLength);
    }
    AcArray(const AcArray& src) : mGrow(src.mGrow) { append(src); }
    AcArray(AcArray&& src) noexcept { swapWith(src); }
    ~AcArray() = default;

    AcArray& operator=(const AcArray& src) {
        if (this == &src) return *this;
        setLogicalLength(0);
        return append(src);
    }
    AcArray& operator=(AcArray&& src) noexcept {
        swapWith(src);
        return *this;
    }

    bool operator==(const AcArray& other) const {
        return std::equal(begin(), end(), other.begin(), other.end());
    }

    T& operator[](int index) { return at(index); }
    const T& operator[](int index) const { return at(index); }
    T& at(int index) {
        assert(isValid(index) && "the index is within the logical length");
        return mItems[static_cast<std::size_t>(index)];
    }
    const T& at(int index) const {
        assert(isValid(index) && "the index is within the logical length");
        return mItems[static_cast<std::size_t>(index)];
    }
    AcArray& setAt(int index, const T& value) {
        at(index) = value;
        return *this;
    }
    AcArray& setAll(const T& value) {
        const T copy = value;
        std::fill(begin(), end(), copy);
        return *this;
    }
    T& first() { return at(0); }
    const T& first() const { return at(0); }
    T& last() { return at(mLength - 1); }
    const T& last() const { return at(mLength - 1); }

    /// Adds one element at the end and returns its index.
    int append(const T& value) {
        if (mLength < mCapacity) {
            mItems[static_cast<std::size_t>(mLength)] = value;
        } else {
            T copy = value; // The value may live in the storage about to be replaced.
            grow(mLength + 1);
            mItems[static_cast<std::size_t>(mLength)] = std::move(copy);
        }
        return mLength++;
    }
    int append(T&& value) { return appendMove(value); }
    /// Like append, but moves from `value`.
    int appendMove(T& value) {
        T taken = std::move(value);
        grow(mLength + 1);
        mItems[static_cast<std::size_t>(mLength)] = std::move(taken);
        return mLength++;
    }
    AcArray& append(const AcArray& other) {
        const int count = other.mLength;
        reserve(mLength + count);
        std::copy_n(other.begin(), count, end());
        mLength += count;
        return *this;
    }

    AcArray& insertAt(int index, const T& value) {
        assert(index >= 0 && index <= mLength && "an insertion is at an element or at the end");
        append(value);
        std::rotate(begin() + index, end() - 1, end());
        return *this;
    }
    AcArray& removeAt(int index) { return removeSubArray(index, index); }
    AcArray& removeFirst() { return removeAt(0); }
    AcArray& removeLast() { return removeAt(mLength - 1); }
    AcArray& removeAll() { return setLogicalLength(0); }
    /// Removes the elements from `startIndex` to `endIndex`, both included.
    AcArray& removeSubArray(int startIndex, int endIndex) {
        assert(isValid(startIndex) && isValid(endIndex) && startIndex <= endIndex);
        std::move(begin() + endIndex + 1, end(), begin() + startIndex);
        return setLogicalLength(mLength - (endIndex - startIndex + 1));
    }
    /// Removes the first element equal to `value` from index `start` on; false when none is.
    bool remove(const T& value, int start = 0) {
        const int index = findFrom(value, start);
        if (index < 0) return false;
        removeAt(index);
        return true;
    }

    [[nodiscard]] bool contains(const T& value, int start = 0) const {
        return findFrom(value, start) >= 0;
    }
    /// Index of the first element equal to `value`, -1 when none is.
    [[nodiscard]] int find(const T& value) const { return findFrom(value, 0); }
    /// The same from index `start` on.
    [[nodiscard]] int findFrom(const T& value, int start) const {
        const_iterator from = begin() + std::clamp(start, 0, mLength);
        const_iterator found = std::find(from, end(), value);
        return found == end() ? -1 : static_cast<int>(found - begin());
    }
    /// The same with the index apart from the answer; `foundAt` is untouched when none is equal.
    bool find(const T& value, int& foundAt, int start = 0) const {
        const int index = findFrom(value, start);
        if (index < 0) return false;
        foundAt = index;
        return true;
    }

    [[nodiscard]] int length() const { return mLength; }
    [[nodiscard]] int logicalLength() const { return mLength; }
    [[nodiscard]] int physicalLength() const { return mCapacity; }
    [[nodiscard]] int growLength() const { return mGrow; }
    [[nodiscard]] bool isEmpty() const { return mLength == 0; }

    /// Lengthens with default elements or drops elements from the end.
    AcArray& setLogicalLength(int length) {
        length = std::max(length, 0);
        grow(length);
        // Storage beyond the old length holds values left by removed elements.
        if (length > mLength) std::fill(begin() + mLength, begin() + length, T{});
        if constexpr (!std::is_trivially_destructible_v<T>) {
            if (length < mLength) std::fill(begin() + length, end(), T{});
        }
        mLength = length;
        return *this;
    }
    /// Allocates room for exactly `length` elements, dropping what no longer fits.
    AcArray& setPhysicalLength(int length) {
        length = std::max(length, 0);
        if (length < mLength) setLogicalLength(length);
        reallocate(length);
        return *this;
    }
    AcArray& setGrowLength(int length) {
        mGrow = std::max(length, 1);
        return *this;
    }

    AcArray& reverse() {
        std::reverse(begin(), end());
        return *this;
    }
    AcArray& swap(int i1, int i2) {
        std::swap(at(i1), at(i2));
        return *this;
    }

    [[nodiscard]] T* asArrayPtr() { return mItems.get(); }
    [[nodiscard]] const T* asArrayPtr() const { return mItems.get(); }
    iterator begin() { return mItems.get(); }
    iterator end() { return mItems.get() + mLength; }
    const_iterator begin() const { return mItems.get(); }
    const_iterator end() const { return mItems.get() + mLength; }

private:
    [[nodiscard]] bool isValid(int index) const { return index >= 0 && index < mLength; }

    void reserve(int length) {
        if (length > mCapacity) reallocate(length);
    }
    void grow(int length) {
        if (length <= mCapacity) return;
        // Doubling keeps a long run of appends linear whatever the grow length.
        const int doubled = mCapacity > INT_MAX / 2 ? INT_MAX : mCapacity * 2;
        const int stepped = mCapacity > INT_MAX - mGrow ? INT_MAX : mCapacity + mGrow;
        reallocate(std::max({length, doubled, stepped}));
    }
    void reallocate(int capacity) {
        if (capacity == mCapacity) return;
        std::unique_ptr<T[]> items;
        if (capacity > 0) items.reset(new T[static_cast<std::size_t>(capacity)]);
        std::move(begin(), end(), items.get());
        mItems = std::move(items);
        mCapacity = capacity;
    }
    void swapWith(AcArray& other) noexcept {
        std::swap(mItems, other.mItems);
        std::swap(mLength, other.mLength);
        std::swap(mCapacity, other.mCapacity);
        std::swap(mGrow, other.mGrow);
    }

    std::unique_ptr<T[]> mItems;
    int mLength = 0;
    int mCapacity = 0;
    int mGrow = 8;
};
