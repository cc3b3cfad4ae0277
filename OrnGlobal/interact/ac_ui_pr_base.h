// What the prompts have in common: a message, keywords, and how asking ended.
//
// A caller makes a prompt, configures it, calls go() and reads the status and the result.
#pragma once

#include <acestext.h>
#include <afxwin.h>

class AFX_EXT_CLASS AcUiPrBase {
public:
    // How go() ended.
    static constexpr int kCancelled = 0; ///< Cancelled, or failed.
    static constexpr int kNone = 1;      ///< Enter alone, where that is allowed.
    static constexpr int kKeyWord = 2;   ///< keyWordPicked() tells which.
    static constexpr int kNormal = 3;

    /// The keywords that are taken, in the form of acedInitGet.
    virtual const wchar_t* keyWords() const;
    virtual Acad::ErrorStatus setKeyWords(const wchar_t* keyWords);
    /// What is asked, without the line end before it and the colon after it.
    virtual const wchar_t* message() const;
    virtual Acad::ErrorStatus setMessage(const wchar_t* message);
    virtual const wchar_t* keyWordPicked() const;
    /// With regard to case.
    virtual bool isKeyWordPicked(const wchar_t* keyWord);
    /// Asks the user.
    virtual int go() = 0;
    virtual ~AcUiPrBase();

protected:
    AcUiPrBase(const wchar_t* msg, const wchar_t* keyWords);

    /// The message as it is printed.
    CString promptText() const;
    /// Notes the keyword that the host has just been given. kKeyWord.
    int takeKeyWord();

private:
    CString keyWords_;
    CString message_;
    CString picked_;
};
