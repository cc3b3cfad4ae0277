// The keywords that a prompt accepts.
//
// A list such as L"Close Undo eXit" names them, separated by blanks. The capital letters are what a
// user must type at least: C, CL, ... for Close, X or EX, ... for eXit. "LTYPE,LT" gives the
// shortest form after a comma. A second list after an underscore (L"Ja Nein _Yes No") gives the
// same keywords in the language-independent form that commands receive.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace headless {

class Keywords {
public:
    Keywords() = default;
    explicit Keywords(std::wstring_view list);

    bool isEmpty() const { return keywords_.empty(); }
    /// The keywords in full, as a user may type them.
    [[nodiscard]] std::vector<std::wstring> names() const;

    /// The keyword that `input` stands for, in the form that commands receive; the first of the
    /// list where several fit. An input that starts with an underscore names the
    /// language-independent form.
    [[nodiscard]] std::optional<std::wstring> match(std::wstring_view input) const;

private:
    struct Keyword {
        std::wstring local;
        std::wstring global;
    };
    std::vector<Keyword> keywords_;
};

} // namespace headless
