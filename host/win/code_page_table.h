// The tables of a one- or two-byte code page, made once from ICU's converter.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

struct UConverter;

namespace headless {

/// Both directions of one code page, a lookup per character.
class CodePageTable {
public:
    /// The table of a page, built at its first use and kept for the process; null when ICU has no
    /// converter of at most two bytes a character for it. Safe to call from several threads.
    static const CodePageTable* find(unsigned codePage);

    static constexpr char16_t kInvalid = 0xFFFF;

    [[nodiscard]] bool isLead(unsigned char byte) const { return lead_[byte]; }
    [[nodiscard]] bool twoByte() const { return twoByte_; }

    /// Text of a single byte; kInvalid when there is none.
    [[nodiscard]] char16_t single(unsigned char byte) const { return single_[byte]; }
    /// Text of a lead and a trail byte; kInvalid when there is none.
    [[nodiscard]] char16_t pair(unsigned char lead, unsigned char trail) const {
        return pairs_[lead * 256U + trail];
    }
    /// False for bytes that only the lenient conversion takes.
    [[nodiscard]] bool strictlyValid(unsigned char byte) const { return byte != laxByte_; }

    /// Bytes of a character of the basic plane: one byte below 256, else lead and trail.
    struct Code {
        std::uint16_t bytes;
        bool exact; ///< False for a best fit.
    };
    [[nodiscard]] std::optional<Code> code(char16_t unit) const {
        if (kind_[unit] == Kind::none) return std::nullopt;
        return Code{codes_[unit], kind_[unit] == Kind::exact};
    }

private:
    enum class Kind : std::uint8_t { none, exact, bestFit };

    CodePageTable(unsigned codePage, UConverter* converter);
    static std::unique_ptr<CodePageTable> build(unsigned codePage);
    void readSingles(UConverter* converter);
    void readPairs(UConverter* converter);
    void readCodes(unsigned codePage, UConverter* converter);
    void take(char16_t unit, unsigned bytes);

    std::array<bool, 256> lead_{};
    std::array<char16_t, 256> single_{};
    std::vector<char16_t> pairs_;
    std::vector<std::uint16_t> codes_;
    std::vector<Kind> kind_;
    bool twoByte_ = false;
    int laxByte_ = -1;
};

} // namespace headless
