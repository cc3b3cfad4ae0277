#include "win/code_page_table.h"

#include <map>
#include <mutex>
#include <string>

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

namespace headless {
namespace {

using ConverterPtr = std::unique_ptr<UConverter, decltype(&ucnv_close)>;

ConverterPtr open(const std::string& name) {
    UErrorCode error = U_ZERO_ERROR;
    ConverterPtr converter(ucnv_open(name.c_str(), &error), &ucnv_close);
    if (U_FAILURE(error)) converter.reset();
    return converter;
}

/// ICU's converter for a Windows code page number; null when it has none.
ConverterPtr openConverter(unsigned codePage) {
    // Names that pick Windows' own table where ICU knows several under one number.
    static const std::map<unsigned, const char*> kNamed = {
        {874, "windows-874-2000"}, {932, "ibm-943_P15A-2003"}, {936, "windows-936-2000"},
        {949, "windows-949-2000"}, {950, "windows-950-2000"},  {1252, "ibm-5348_P100-1997"},
        {10000, "macos-0_2-10.2"}, {20127, "us-ascii"},        {28591, "iso-8859-1"},
    };
    if (const auto named = kNamed.find(codePage); named != kNamed.end()) return open(named->second);
    constexpr unsigned kIsoBase = 28590;
    if (codePage > kIsoBase && codePage <= kIsoBase + 15) {
        return open("iso-8859-" + std::to_string(codePage - kIsoBase));
    }
    for (const char* family : {"windows-", "ibm-"}) {
        if (ConverterPtr converter = open(family + std::to_string(codePage))) return converter;
    }
    return {nullptr, &ucnv_close};
}

/// Characters of the basic plane that are text by themselves, in order.
std::vector<char16_t> basicPlane() {
    std::vector<char16_t> units;
    units.reserve(0x10000 - 0x800);
    for (unsigned unit = 0; unit < 0xFFFF; ++unit) {
        if (!U16_IS_SURROGATE(unit)) units.push_back(static_cast<char16_t>(unit));
    }
    return units;
}

/// Half-width arrows and shapes that ICU's table of 936 takes by way of its neighbours and
/// Windows' does not.
bool refusedByWindows(unsigned codePage, char16_t unit) {
    return codePage == 936 && unit >= 0xFFE8 && unit <= 0xFFEE;
}

} // namespace

const CodePageTable* CodePageTable::find(unsigned codePage) {
    static std::mutex mutex;
    static std::map<unsigned, std::unique_ptr<CodePageTable>> tables;
    const std::lock_guard lock(mutex);
    const auto [entry, isNew] = tables.try_emplace(codePage);
    if (isNew) entry->second = build(codePage);
    return entry->second.get();
}

std::unique_ptr<CodePageTable> CodePageTable::build(unsigned codePage) {
    const ConverterPtr converter = openConverter(codePage);
    if (!converter || ucnv_getMaxCharSize(converter.get()) > 2) return nullptr;
    return std::unique_ptr<CodePageTable>(new CodePageTable(codePage, converter.get()));
}

CodePageTable::CodePageTable(unsigned codePage, UConverter* converter)
    : codes_(0x10000), kind_(0x10000, Kind::none) {
    UErrorCode error = U_ZERO_ERROR;
    UBool starters[256] = {};
    ucnv_getStarters(converter, starters, &error);
    if (U_SUCCESS(error)) std::copy(std::begin(starters), std::end(starters), lead_.begin());
    twoByte_ = ucnv_getMaxCharSize(converter) == 2;
    if (codePage == 936) laxByte_ = 0xFF;

    readSingles(converter);
    if (twoByte_) readPairs(converter);
    readCodes(codePage, converter);
}

void CodePageTable::readSingles(UConverter* converter) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        // IBM's converters permute some controls; Windows keeps all of ASCII in place.
        if (byte < 0x80) {
            single_[byte] = static_cast<char16_t>(byte);
            continue;
        }
        const char source = static_cast<char>(byte);
        char16_t target[4];
        UErrorCode error = U_ZERO_ERROR;
        ucnv_resetToUnicode(converter);
        const int32_t length = ucnv_toUChars(converter, target, 4, &source, 1, &error);
        const bool isText = U_SUCCESS(error) && length == 1 && target[0] != 0xFFFD;
        single_[byte] = isText && !lead_[byte] ? target[0] : kInvalid;
    }
}

void CodePageTable::readPairs(UConverter* converter) {
    pairs_.assign(0x10000, kInvalid);
    // Two fillers after each pair bring the converter back into step when it refuses a trail byte
    // or takes it for a lead byte.
    constexpr unsigned kStride = 4;
    std::vector<char> source(256 * kStride, 'A');
    std::vector<char16_t> target(source.size());
    std::vector<int32_t> offsets(source.size());
    for (unsigned lead = 0; lead < 256; ++lead) {
        if (!lead_[lead]) continue;
        for (unsigned trail = 0; trail < 256; ++trail) {
            source[trail * kStride] = static_cast<char>(lead);
            source[trail * kStride + 1] = static_cast<char>(trail);
        }
        const char* from = source.data();
        char16_t* to = target.data();
        UErrorCode error = U_ZERO_ERROR;
        ucnv_resetToUnicode(converter);
        ucnv_toUnicode(converter, &to, to + target.size(), &from, from + source.size(),
                       offsets.data(), true, &error);
        const auto count = static_cast<std::size_t>(to - target.data());
        for (std::size_t i = 0; i + 1 < count; ++i) {
            const auto offset = static_cast<unsigned>(offsets[i]);
            const auto next = static_cast<unsigned>(offsets[i + 1]);
            const bool wholePair = offset % kStride == 0 && next == offset + 2;
            if (wholePair && target[i] != 0xFFFD) {
                pairs_[lead * 256U + offset / kStride] = target[i];
            }
        }
    }
}

void CodePageTable::readCodes(unsigned codePage, UConverter* converter) {
    const std::vector<char16_t> units = basicPlane();
    std::vector<char> target(units.size() * 2);
    std::vector<int32_t> offsets(target.size());

    UErrorCode error = U_ZERO_ERROR;
    ucnv_setFallback(converter, true);
    ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_SKIP, nullptr, nullptr, nullptr, &error);
    const char16_t* from = units.data();
    char* to = target.data();
    ucnv_fromUnicode(converter, &to, to + target.size(), &from, from + units.size(), offsets.data(),
                     true, &error);

    const auto count = static_cast<std::size_t>(to - target.data());
    for (std::size_t i = 0; i < count;) {
        const char16_t unit = units[static_cast<std::size_t>(offsets[i])];
        unsigned bytes = static_cast<unsigned char>(target[i]);
        std::size_t length = 1;
        if (i + 1 < count && offsets[i + 1] == offsets[i]) {
            bytes = bytes << 8 | static_cast<unsigned char>(target[i + 1]);
            length = 2;
        }
        if (!refusedByWindows(codePage, unit)) take(unit, bytes);
        i += length;
    }
    for (unsigned byte = 0; byte < 0x80; ++byte)
        take(static_cast<char16_t>(byte), byte);
}

void CodePageTable::take(char16_t unit, unsigned bytes) {
    const char16_t back = bytes < 256 ? single(static_cast<unsigned char>(bytes))
                                      : pair(static_cast<unsigned char>(bytes >> 8),
                                             static_cast<unsigned char>(bytes & 0xFF));
    codes_[unit] = static_cast<std::uint16_t>(bytes);
    kind_[unit] = back == unit ? Kind::exact : Kind::bestFit;
}

} // namespace headless
