// MFC's hash maps.
#pragma once

#include <string_view>
#include <unordered_map>

#include "mfc/exception.h"
#include "mfc/position.h"
#include "mfc/string.h"

/// The hash of a key; a program may specialise it for its own keys.
template <class ARG_KEY>
UINT HashKey(ARG_KEY key) {
    return static_cast<UINT>(std::hash<std::remove_cvref_t<ARG_KEY>>{}(key));
}
template <>
inline UINT HashKey<LPCWSTR>(LPCWSTR key) {
    return static_cast<UINT>(std::hash<std::wstring_view>{}(key));
}

/// Values by keys, in no order. Changing the map ends an iteration over it.
///
/// @tparam ARG_KEY    how keys are passed in; hashed by HashKey<ARG_KEY>, compared by KEY's ==.
/// @tparam ARG_VALUE  how values are passed in.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class CMap : public CObject {
public:
    CMap() = default;
    explicit CMap(INT_PTR /*blockSize*/) {}

    [[nodiscard]] INT_PTR GetCount() const { return static_cast<INT_PTR>(pairs_.size()); }
    [[nodiscard]] INT_PTR GetSize() const { return GetCount(); }
    [[nodiscard]] BOOL IsEmpty() const { return pairs_.empty() ? TRUE : FALSE; }

    /// Copies the value of a key; FALSE and untouched when there is none.
    BOOL Lookup(ARG_KEY key, VALUE& value) const {
        const auto found = pairs_.find(KEY(key));
        if (found == pairs_.end()) return FALSE;
        value = found->second;
        return TRUE;
    }
    /// The value of a key, made when there is none.
    VALUE& operator[](ARG_KEY key) { return pairs_[KEY(key)]; }
    void SetAt(ARG_KEY key, ARG_VALUE value) { pairs_[KEY(key)] = value; }
    BOOL RemoveKey(ARG_KEY key) { return pairs_.erase(KEY(key)) != 0 ? TRUE : FALSE; }
    void RemoveAll() { pairs_.clear(); }
    /// Makes room for about so many keys.
    void InitHashTable(UINT size, BOOL /*allocateNow*/ = TRUE) { pairs_.reserve(size); }

    [[nodiscard]] POSITION GetStartPosition() const {
        return pairs_.empty() ? nullptr : position(*pairs_.begin());
    }
    /// Copies the pair at a position, which moves on.
    void GetNextAssoc(POSITION& at, KEY& key, VALUE& value) const {
        if (at == nullptr) AfxThrowInvalidArgException();
        auto found = pairs_.find(reinterpret_cast<const Stored*>(at)->first);
        key = found->first;
        value = found->second;
        ++found;
        at = found == pairs_.end() ? nullptr : position(*found);
    }

private:
    struct Hash {
        std::size_t operator()(const KEY& key) const { return HashKey<ARG_KEY>(key); }
    };
    using Pairs = std::unordered_map<KEY, VALUE, Hash>;
    using Stored = typename Pairs::value_type;

    static POSITION position(const Stored& pair) {
        return reinterpret_cast<POSITION>(const_cast<Stored*>(&pair));
    }

    Pairs pairs_;
};

class CMapStringToString : public CMap<CString, LPCTSTR, CString, LPCTSTR> {};
class CMapStringToPtr : public CMap<CString, LPCTSTR, void*, void*> {};
