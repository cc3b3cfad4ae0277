// What prompts have in common: asking, and finding what an answer means.
#pragma once

#include <optional>
#include <string>

#include "ed/input_queue.h"
#include "ed/keywords.h"
#include "rx/types.h"

namespace headless {

/// What acedInitGet sets for the next prompt.
struct PromptRules {
    int flags = 0; // RSG_...
    Keywords keywords;

    bool has(int flag) const { return (flags & flag) != 0; }
};

/// Prints the prompt, takes the next answer and shows it on the command line as typed; prints
/// nothing for a command run by another one while CMDECHO is 0. Clicks and keys have been acted
/// out: a click answers with its point.
/// @param prompt  null for none.
/// @param word    a blank ends the answer.
[[nodiscard]] InputAnswer ask(const ACHAR* prompt, bool word);

/// The rules of acedInitGet for this prompt; the next one starts without any.
[[nodiscard]] PromptRules takeRules();

/// RTCAN, which it says on the command line, when the answer ends the prompt: Escape, or no more
/// input.
[[nodiscard]] std::optional<int> cancellation(const InputAnswer& answer);

/// RTKWORD when the answer is one of the keywords, which acedInitGet's caller may then read.
[[nodiscard]] std::optional<int> keywordOf(const InputAnswer& answer, const PromptRules& rules);
/// Keeps a keyword, or other text, for acedGetInput. RTKWORD.
int giveText(std::wstring text);

/// An answer as it would be typed; Escape and the end of input have no text.
[[nodiscard]] std::wstring shownText(const InputAnswer& answer);

/// The point that was given, in user coordinates; nothing for what is none.
/// @param base  what relative coordinates start from, or null for LASTPOINT.
[[nodiscard]] std::optional<AcGePoint3d> pointOf(const InputAnswer& answer, const double* base);

/// While it lives, these keywords are what the prompt that waits offers.
class OfferedKeywords {
public:
    explicit OfferedKeywords(const Keywords& keywords);
    ~OfferedKeywords();
    OfferedKeywords(const OfferedKeywords&) = delete;
    OfferedKeywords& operator=(const OfferedKeywords&) = delete;

private:
    const Keywords* former_;
};

/// A point as the answer to a prompt.
struct PointAnswer {
    int result; // RTNORM, or what else acedGetPoint returns
    AcGePoint3d point;
    std::optional<KeyModifiers> clicked;
};
/// Asks until there is a point, see acedGetPoint.
[[nodiscard]] PointAnswer askPoint(const ACHAR* prompt, const PromptRules& rules,
                                   const double* base);

} // namespace headless
