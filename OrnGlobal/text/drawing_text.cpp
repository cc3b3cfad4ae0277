// The drawing-text readers of AcUtDb.
#include "frame/ac_ut_db.h"

#include <adslib.h>
#include <dbents.h>
#include <dbmain.h>
#include <dbmtext.h>

#include "OrnCore/zel_text.h"
#include "frame/object_handle.h"

namespace {

// Characters from 128 to 205 stand in drawing texts behind "%%", as their readers expect them.
constexpr int kBelowMarked = 127;
constexpr int kAboveMarked = 206;

/// Lets a resident object be changed while in scope and leaves it open as it was found.
class WriteWhileInScope {
public:
    explicit WriteWhileInScope(AcDbObject& object) : object_(object) {
        if (!object.objectId().isNull() && !object.isWriteEnabled())
            upgraded_ = object.upgradeOpen() == Acad::eOk;
    }
    ~WriteWhileInScope() {
        if (upgraded_) object_.downgradeOpen();
    }
    WriteWhileInScope(const WriteWhileInScope&) = delete;
    WriteWhileInScope& operator=(const WriteWhileInScope&) = delete;

    /// False when others read the object, so that it has to stay as it is.
    explicit operator bool() const { return object_.isWriteEnabled(); }

private:
    AcDbObject& object_;
    bool upgraded_ = false;
};

template <class TextObject>
void resolveFields(TextObject& object) {
    if (const WriteWhileInScope writable(object); writable) object.convertFieldToText();
}

// The platform hands out copies that their receiver frees.
CString takeText(ACHAR* text) {
    CString copy(text);
    acutDelString(text);
    return copy;
}

template <class TextObject>
CString readFrom(const AcDbObjectId& id, CString (*read)(TextObject*)) {
    TextObject* object = nullptr;
    if (acdbOpenObject(object, id, AcDb::kForRead) != Acad::eOk) return {};
    CString text = read(object);
    object->close();
    return text;
}

} // namespace

CString AcUtDb::convertAcDbTextString(const wchar_t* text, int low, int high) {
    CString converted;
    if (text == nullptr) return converted;
    for (; *text != L'\0'; ++text) {
        const int code = static_cast<int>(*text);
        if (low < code && code < high) converted += L"%%";
        converted += *text;
    }
    return converted;
}

CString AcUtDb::getTextString(AcDbText* text) {
    if (text == nullptr) return {};
    resolveFields(*text);
    return convertAcDbTextString(ZelText::textString(*text), kBelowMarked, kAboveMarked);
}

CString AcUtDb::getTextString(const AcDbObjectId& id) {
    return readFrom<AcDbText>(id, &AcUtDb::getTextString);
}

CString AcUtDb::getMTextContents(AcDbMText* text) {
    if (text == nullptr) return {};
    resolveFields(*text);
    return convertAcDbTextString(takeText(text->contents()), kBelowMarked, kAboveMarked);
}

CString AcUtDb::getMTextContents(const AcDbObjectId& id) {
    return readFrom<AcDbMText>(id, &AcUtDb::getMTextContents);
}

CString AcUtDb::GetMTextData(AcDbMText* text) {
    return text == nullptr ? CString() : takeText(text->text());
}
