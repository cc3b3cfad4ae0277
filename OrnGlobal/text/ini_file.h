// Typed access to a settings (INI) file of the caller's choice.
#pragma once

#include <afxwin.h>

/// One settings file. Nothing is kept here: every call goes to the file, so it sees what others
/// wrote. The rules of names, quotes and blanks are those of the platform's private profiles.
class AFX_EXT_CLASS CIniFile {
public:
    /// @param file  full path of the file, which need not exist.
    CIniFile(wchar_t const* file);

    // Readers answer false and leave `value` alone when the key, its section or the file is missing
    // - or when the key's text is "NotExist", which is how a missing key is told. Texts that are no
    // numbers read as 0.

    /// @param bufferLength  room for the text and its end; a longer text is cut to it. So is the
    ///                      word that tells of a missing key: below 9 one reads as a part of it.
    bool GetValueOfKey(wchar_t const* section, wchar_t const* key, CString& value,
                       int bufferLength) const;
    bool GetValueOfKey(wchar_t const* section, wchar_t const* key, int& value) const;
    /// The low 8 bits of the number.
    bool GetValueOfKey(wchar_t const* section, wchar_t const* key, unsigned char& value) const;
    /// True for the number 1 only.
    bool GetValueOfKey(wchar_t const* section, wchar_t const* key, bool& value) const;
    bool GetValueOfKey(wchar_t const* section, wchar_t const* key, double& value) const;

    // Writers answer whether the file was written. Without a file name they tell the user so.

    bool SetValueOfKey(wchar_t const* section, wchar_t const* key, wchar_t const* value);
    bool SetValueOfKey(wchar_t const* section, wchar_t const* key, int value);
    bool SetValueOfKey(wchar_t const* section, wchar_t const* key, unsigned char value);
    /// Writes 1 or 0.
    bool SetValueOfKey(wchar_t const* section, wchar_t const* key, bool value);
    /// Writes exactly that many decimals, half to even.
    bool SetValueOfKey(wchar_t const* section, wchar_t const* key, double value, int decimals);

    bool DeleteKey(wchar_t const* section, wchar_t const* key);

private:
    bool write(wchar_t const* section, wchar_t const* key, wchar_t const* text);

    CString m_strFile;
};
