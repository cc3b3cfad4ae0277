// Asks for a text. It takes no keywords.
#pragma once

#include "interact/ac_ui_pr_base.h"

class AFX_EXT_CLASS AcUiPrString : public AcUiPrBase {
public:
    /// @param allowSpaces  blanks belong to the text, Enter ends it.
    AcUiPrString(const wchar_t* msg, bool allowSpaces);
    ~AcUiPrString() override;

    /// Empty.
    const wchar_t* keyWords() const override;
    /// Keeps nothing: eNotApplicable.
    Acad::ErrorStatus setKeyWords(const wchar_t* keyWords) override;
    /// False.
    bool isKeyWordPicked(const wchar_t* keyWord) override;
    int go() override;
    using AcUiPrBase::keyWordPicked;
    /// Null; the constant one of the base is empty.
    virtual const wchar_t* keyWordPicked();

    const wchar_t* value() const;

private:
    bool allowSpaces_;
    CString value_;
};
