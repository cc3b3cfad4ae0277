#include "db/resbuf.h"

#include <algorithm>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "db/database.h"
#include "db/state.h"

namespace headless {
namespace {

struct CodeRange {
    short first;
    short last;
    ValueKind kind;
};

// The kinds of values by group code.
constexpr CodeRange kGroupCodes[] = {
    {-5, -5, ValueKind::kName},       {-4, -4, ValueKind::kText},
    {-3, -3, ValueKind::kNothing},    {-2, -1, ValueKind::kName},
    {0, 4, ValueKind::kText},         {5, 5, ValueKind::kHandle},
    {6, 9, ValueKind::kText},         {10, 17, ValueKind::kPoint},
    {18, 59, ValueKind::kReal},       {60, 79, ValueKind::kInt16},
    {90, 99, ValueKind::kInt32},      {100, 102, ValueKind::kText},
    {105, 105, ValueKind::kHandle},   {110, 112, ValueKind::kPoint},
    {113, 149, ValueKind::kReal},     {160, 169, ValueKind::kInt64},
    {170, 179, ValueKind::kInt16},    {210, 210, ValueKind::kPoint},
    {211, 239, ValueKind::kReal},     {270, 299, ValueKind::kInt16},
    {300, 309, ValueKind::kText},     {310, 319, ValueKind::kBinary},
    {320, 329, ValueKind::kHandle},   {330, 369, ValueKind::kName},
    {370, 389, ValueKind::kInt16},    {390, 399, ValueKind::kHandle},
    {400, 409, ValueKind::kInt16},    {410, 419, ValueKind::kText},
    {420, 429, ValueKind::kInt32},    {430, 439, ValueKind::kText},
    {440, 459, ValueKind::kInt32},    {460, 469, ValueKind::kReal},
    {470, 479, ValueKind::kText},     {480, 481, ValueKind::kHandle},
    {999, 1003, ValueKind::kText},    {1004, 1004, ValueKind::kBinary},
    {1005, 1005, ValueKind::kHandle}, {1006, 1009, ValueKind::kText},
    {1010, 1013, ValueKind::kPoint},  {1014, 1059, ValueKind::kReal},
    {1060, 1070, ValueKind::kInt16},  {1071, 1071, ValueKind::kInt32},
};

} // namespace

ValueKind valueKind(int type) noexcept {
    switch (type) {
    case RTREAL:
    case RTANG:
    case RTORINT:
        return ValueKind::kReal;
    case RTPOINT:
    case RT3DPOINT:
        return ValueKind::kPoint;
    case RTSHORT:
        return ValueKind::kInt16;
    case RTLONG:
        return ValueKind::kInt32;
    case RTSTR:
    case RTDXF0:
        return ValueKind::kText;
    case RTENAME:
    case RTPICKS:
        return ValueKind::kName;
    default:
        break;
    }
    for (const CodeRange& range : kGroupCodes) {
        if (type >= range.first && type <= range.last) return range.kind;
    }
    return ValueKind::kNothing;
}

namespace {

// Handles of files are texts in lists too.
bool ownsText(int type) {
    const ValueKind kind = valueKind(type);
    return kind == ValueKind::kText || kind == ValueKind::kHandle;
}

bool isListMark(int type) {
    constexpr int kMarks[] = {RTLB, RTLE, RTDOTE, RTNIL, RTT, RTVOID, -3};
    return std::find(std::begin(kMarks), std::end(kMarks), type) != std::end(kMarks);
}

/// Copies a point of two or three coordinates that a caller's list points to.
void setPoint(resbuf& buffer, const ads_real* point, int type) {
    if (point == nullptr) return;
    const int count = type == RTPOINT ? 2 : 3;
    std::copy_n(point, count, buffer.resval.rpoint);
}

void setBinary(resbuf& buffer, const ads_binary& chunk) {
    const auto size = static_cast<std::size_t>(std::max<short>(chunk.clen, 0));
    buffer.resval.rbinary.clen = static_cast<short>(size);
    buffer.resval.rbinary.buf = static_cast<char*>(std::malloc(std::max<std::size_t>(size, 1)));
    if (size > 0) std::memcpy(buffer.resval.rbinary.buf, chunk.buf, size);
}

/// The next value of a caller's list.
struct Arguments {
    va_list list;

    void readInto(resbuf& buffer, int type) {
        switch (valueKind(type)) {
        case ValueKind::kReal:
            buffer.resval.rreal = va_arg(list, double);
            break;
        case ValueKind::kPoint:
            setPoint(buffer, va_arg(list, const ads_real*), type);
            break;
        case ValueKind::kInt16:
            buffer.resval.rint = static_cast<short>(va_arg(list, int));
            break;
        case ValueKind::kInt32:
            buffer.resval.rlong = va_arg(list, int);
            break;
        case ValueKind::kInt64:
            buffer.resval.mnInt64 = va_arg(list, Adesk::Int64);
            break;
        case ValueKind::kText:
        case ValueKind::kHandle:
            buffer.resval.rstring = acutNewString(va_arg(list, const ACHAR*));
            break;
        case ValueKind::kName:
            if (const auto* const name = va_arg(list, const Adesk::IntDbId*); name != nullptr)
                std::copy_n(name, 2, buffer.resval.rlname);
            break;
        case ValueKind::kBinary:
            setBinary(buffer, va_arg(list, ads_binary));
            break;
        case ValueKind::kNothing:
            break;
        }
    }
};

} // namespace
} // namespace headless

resbuf* acutNewRb(int type) {
    auto* const buffer = new resbuf{};
    buffer->restype = static_cast<short>(type);
    ++headless::DbState::current().liveResultBuffers;
    return buffer;
}

int acutRelRb(resbuf* chain) {
    while (chain != nullptr) {
        resbuf* const next = chain->rbnext;
        if (headless::ownsText(chain->restype))
            acutDelString(chain->resval.rstring);
        else if (headless::valueKind(chain->restype) == headless::ValueKind::kBinary)
            std::free(chain->resval.rbinary.buf);
        delete chain;
        --headless::DbState::current().liveResultBuffers;
        chain = next;
    }
    return RTNORM;
}

resbuf* acutBuildList(int type, ...) {
    headless::Arguments arguments;
    va_start(arguments.list, type);
    resbuf* first = nullptr;
    resbuf** link = &first;
    while (type != 0 && type != RTNONE) {
        if (headless::valueKind(type) == headless::ValueKind::kNothing &&
            !headless::isListMark(type)) {
            acutRelRb(first);
            first = nullptr;
            break;
        }
        resbuf* const buffer = acutNewRb(type);
        arguments.readInto(*buffer, type);
        *link = buffer;
        link = &buffer->rbnext;
        type = va_arg(arguments.list, int);
    }
    va_end(arguments.list);
    return first;
}

ACHAR* acutNewString(const ACHAR* text) {
    if (text == nullptr) return nullptr;
    const std::size_t size = (std::wcslen(text) + 1) * sizeof(ACHAR);
    auto* const copy = static_cast<ACHAR*>(std::malloc(size));
    if (copy != nullptr) std::memcpy(copy, text, size);
    return copy;
}

void acutDelString(ACHAR*& text) {
    std::free(text);
    text = nullptr;
}

Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id) {
    if (id.isNull()) return Acad::eNullObjectId;
    name[0] = id.asOldId();
    name[1] = 0;
    return Acad::eOk;
}

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
    AcDbObjectId named;
    named.setFromOldId(name[0]);
    const auto& databases = headless::DbState::current().databases;
    const bool known =
        name[1] == 0 && std::any_of(databases.begin(), databases.end(),
                                    [&](const AcDbDatabase* db) { return db->ownsStub(named); });
    if (!known) return Acad::eInvalidAdsName;
    id = named;
    return Acad::eOk;
}
