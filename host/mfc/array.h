// MFC's growing arrays.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>
#include <utility>

#include "mfc/exception.h"
#include "mfc/string.h"

/// An array that grows by one element at a time or to any index.
///
/// Elements live side by side. An index outside 0 .. GetSize() - 1 raises CInvalidArgException. An
/// array is not copied by assignment but with Copy() or Append().
///
/// @tparam T    element; new ones begin as T().
/// @tparam ARG  how elements are passed in: T, or the default const T&.
template <class T, class ARG = const T&>
class CArray : public CObject {
public:
    CArray() = default;
    ~CArray() override { RemoveAll(); }

    [[nodiscard]] INT_PTR GetSize() const { return size_; }
    [[nodiscard]] INT_PTR GetCount() const { return size_; }
    [[nodiscard]] BOOL IsEmpty() const { return size_ == 0 ? TRUE : FALSE; }
    /// The last valid index, -1 when there is none.
    [[nodiscard]] INT_PTR GetUpperBound() const { return size_ - 1; }

    /// Makes the array `size` elements long; `growBy` elements are added at a time from then on, a
    /// share of the size for 0, what it was for -1.
    void SetSize(INT_PTR size, INT_PTR growBy = -1) {
        if (size < 0) AfxThrowInvalidArgException();
        if (growBy >= 0) growBy_ = growBy;
        if (size < size_) {
            std::destroy(data_ + size, data_ + size_);
        } else {
            reserve(size);
            std::uninitialized_value_construct(data_ + size_, data_ + size);
        }
        size_ = size;
        if (size == 0) FreeExtra();
    }
    void FreeExtra() {
        if (capacity_ != size_) moveTo(size_);
    }
    void RemoveAll() { SetSize(0); }

    [[nodiscard]] const T& GetAt(INT_PTR index) const { return data_[checked(index)]; }
    [[nodiscard]] T& GetAt(INT_PTR index) { return data_[checked(index)]; }
    void SetAt(INT_PTR index, ARG element) { data_[checked(index)] = element; }
    [[nodiscard]] const T& ElementAt(INT_PTR index) const { return data_[checked(index)]; }
    [[nodiscard]] T& ElementAt(INT_PTR index) { return data_[checked(index)]; }
    [[nodiscard]] const T& operator[](INT_PTR index) const { return data_[checked(index)]; }
    [[nodiscard]] T& operator[](INT_PTR index) { return data_[checked(index)]; }
    /// The elements side by side; null for an empty array.
    [[nodiscard]] const T* GetData() const { return data_; }
    [[nodiscard]] T* GetData() { return data_; }

    /// Sets an element; the array grows when there is none at `index`.
    void SetAtGrow(INT_PTR index, ARG element) {
        if (index < 0) AfxThrowInvalidArgException();
        T value = element; // The array may move away from under its own element.
        if (index >= size_) SetSize(index + 1);
        data_[index] = std::move(value);
    }
    /// Adds an element at the end and returns its index.
    INT_PTR Add(ARG element) {
        if (size_ < capacity_) {
            std::construct_at(data_ + size_, element);
        } else {
            T value = element;
            reserve(size_ + 1);
            std::construct_at(data_ + size_, std::move(value));
        }
        return size_++;
    }
    /// Adds all of another array and returns the index of the first added.
    INT_PTR Append(const CArray& other) {
        const INT_PTR first = size_;
        const INT_PTR count = other.size_;
        reserve(size_ + count);
        std::uninitialized_copy_n(other.data_, count, data_ + size_);
        size_ += count;
        return first;
    }
    void Copy(const CArray& other) {
        if (this == &other) return;
        RemoveAll();
        Append(other);
    }

    /// Inserts `count` times an element before `index`; beyond the end the array grows to `index`.
    void InsertAt(INT_PTR index, ARG element, INT_PTR count = 1) {
        if (index < 0 || count <= 0) AfxThrowInvalidArgException();
        const T value = element;
        const INT_PTR oldSize = size_;
        SetSize(std::max(index, oldSize) + count);
        if (index < oldSize) std::rotate(data_ + index, data_ + oldSize, data_ + size_);
        std::fill_n(data_ + index, count, value);
    }
    void InsertAt(INT_PTR index, const CArray* other) {
        if (other == nullptr || index < 0) AfxThrowInvalidArgException();
        const INT_PTR oldSize = size_;
        if (index > oldSize) SetSize(index);
        Append(*other);
        if (index < oldSize) std::rotate(data_ + index, data_ + oldSize, data_ + size_);
    }
    void RemoveAt(INT_PTR index, INT_PTR count = 1) {
        if (index < 0 || count < 0 || index > size_ || count > size_ - index) {
            AfxThrowInvalidArgException();
        }
        std::move(data_ + index + count, data_ + size_, data_ + index);
        std::destroy(data_ + size_ - count, data_ + size_);
        size_ -= count;
    }

private:
    INT_PTR checked(INT_PTR index) const {
        if (index < 0 || index >= size_) AfxThrowInvalidArgException();
        return index;
    }

    void reserve(INT_PTR size) {
        if (size <= capacity_) return;
        // By halves, so that adding one by one stays linear.
        const INT_PTR growth = growBy_ > 0 ? growBy_ : std::max<INT_PTR>(4, capacity_ / 2);
        moveTo(std::max(size, capacity_ + growth));
    }

    void moveTo(INT_PTR capacity) {
        T* fresh = nullptr;
        if (capacity != 0) {
            fresh = allocate(capacity);
            std::uninitialized_move_n(data_, size_, fresh);
            std::destroy_n(data_, size_);
        }
        std::free(data_);
        data_ = fresh;
        capacity_ = capacity;
    }

    static T* allocate(INT_PTR capacity) {
        static_assert(alignof(T) <= alignof(std::max_align_t));
        const auto count = static_cast<std::size_t>(capacity);
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) AfxThrowMemoryException();
        void* block = std::malloc(count * sizeof(T));
        if (block == nullptr) AfxThrowMemoryException();
        return static_cast<T*>(block);
    }

    T* data_ = nullptr;
    INT_PTR size_ = 0;
    INT_PTR capacity_ = 0;
    INT_PTR growBy_ = 0;
};

/// An array of strings.
class CStringArray : public CArray<CString, const CString&> {};

using CUIntArray = CArray<UINT, UINT>;
using CWordArray = CArray<WORD, WORD>;
using CDWordArray = CArray<DWORD, DWORD>;
using CByteArray = CArray<BYTE, BYTE>;
using CPtrArray = CArray<void*, void*>;
