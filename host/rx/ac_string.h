// The platform's plain wide string.
#pragma once

#include <string>
#include <string_view>

#include "rx/types.h"

class AcString {
public:
    AcString() = default;
    AcString(const ACHAR* text) : text_(text == nullptr ? L"" : text) {}
    explicit AcString(std::wstring_view text) : text_(text) {}
    explicit AcString(ACHAR character) : text_(1, character) {}
    AcString(const ACHAR* text, unsigned int length) : text_(text, length) {}

    AcString& operator=(const ACHAR* text) { return assign(text); }
    AcString& assign(const ACHAR* text) {
        text_ = text == nullptr ? L"" : text;
        return *this;
    }

    const ACHAR* kwszPtr() const { return text_.c_str(); }
    const ACHAR* kACharPtr() const { return text_.c_str(); }
    const ACHAR* kTCharPtr() const { return text_.c_str(); }
    operator const ACHAR*() const { return text_.c_str(); }

    bool isEmpty() const { return text_.empty(); }
    unsigned int length() const { return static_cast<unsigned int>(text_.size()); }
    unsigned int tcharLength() const { return length(); }
    void setEmpty() { text_.clear(); }

    AcString& append(const ACHAR* text) { return *this += text; }
    AcString& operator+=(const ACHAR* text) {
        if (text != nullptr) text_ += text;
        return *this;
    }
    AcString& operator+=(ACHAR character) {
        text_ += character;
        return *this;
    }
    friend AcString operator+(AcString left, const ACHAR* right) { return left += right; }

    /// Negative, zero or positive by the order of codes.
    int compare(const ACHAR* other) const {
        return std::wstring_view(text_).compare(other == nullptr ? L"" : other);
    }
    friend bool operator==(const AcString& left, const AcString& right) {
        return left.text_ == right.text_;
    }
    friend bool operator==(const AcString& left, const ACHAR* right) {
        return left.compare(right) == 0;
    }
    friend bool operator<(const AcString& left, const AcString& right) {
        return left.text_ < right.text_;
    }

    /// Index of the first place of the character or text, -1 when there is none.
    int find(ACHAR character) const { return index(text_.find(character)); }
    int find(const ACHAR* text) const { return index(text_.find(text)); }
    int findRev(ACHAR character) const { return index(text_.rfind(character)); }

    /// From a start index to the end, or `count` characters.
    AcString substr(int start, int count) const {
        const auto from = static_cast<std::size_t>(start);
        if (start < 0 || count < 0 || from >= text_.size()) return {};
        return AcString(std::wstring_view(text_).substr(from, static_cast<std::size_t>(count)));
    }
    AcString substr(int count) const { return substr(0, count); }
    AcString left(unsigned int count) const { return substr(0, static_cast<int>(count)); }
    AcString mid(unsigned int start, unsigned int count) const {
        return substr(static_cast<int>(start), static_cast<int>(count));
    }

private:
    static int index(std::size_t found) {
        return found == std::wstring::npos ? -1 : static_cast<int>(found);
    }

    std::wstring text_;
};
