#include "db/object_id.h"

#include <charconv>
#include <string_view>

#include "db/object.h"

const AcDbObjectId AcDbObjectId::kNull;

namespace {

constexpr std::size_t kMaxDigits = 16;

/// Hexadecimal digits up to the first other character, at most as many as fit 64 bits.
template <class Character>
Adesk::UInt64 fromHexadecimal(const Character* text) {
    if (text == nullptr) return 0;
    char digits[kMaxDigits];
    std::size_t count = 0;
    while (count < kMaxDigits && text[count] > 0 && text[count] < 128) {
        digits[count] = static_cast<char>(text[count]);
        ++count;
    }
    Adesk::UInt64 value = 0;
    std::from_chars(digits, digits + count, value, 16);
    return value;
}

} // namespace

AcDbHandle::AcDbHandle(const ACHAR* hexadecimal) : value_(fromHexadecimal(hexadecimal)) {}
AcDbHandle::AcDbHandle(const char* hexadecimal) : value_(fromHexadecimal(hexadecimal)) {}

bool AcDbHandle::getIntoAsciiBuffer(ACHAR* buffer) const {
    return getIntoAsciiBuffer(buffer, kMaxDigits + 1);
}

bool AcDbHandle::getIntoAsciiBuffer(ACHAR* buffer, std::size_t size) const {
    if (buffer == nullptr) return false;
    std::size_t digits = 1;
    for (Adesk::UInt64 rest = value_ >> 4; rest != 0; rest >>= 4)
        ++digits;
    if (digits >= size) return false;
    buffer[digits] = L'\0';
    Adesk::UInt64 rest = value_;
    while (digits > 0) {
        buffer[--digits] = L"0123456789ABCDEF"[rest & 0xF];
        rest >>= 4;
    }
    return true;
}

AcRxClass* AcDbObjectId::objectClass() const {
    return isResident() ? stub_->object->isA() : nullptr;
}

bool AcDbObjectId::isEffectivelyErased() const {
    // An owner's chain in a damaged file may run in a circle.
    constexpr int kDeepest = 64;
    AcDbObjectId id = *this;
    for (int depth = 0; depth < kDeepest && id.isResident(); ++depth) {
        if (id.isErased()) return true;
        id = id.stub_->object->ownerId();
    }
    return !isResident();
}
