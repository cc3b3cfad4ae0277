#include "interact/ac_ui_pr_string.h"

#include <aced.h>

AcUiPrString::AcUiPrString(const wchar_t* msg, bool allowSpaces)
    : AcUiPrBase(msg, L""), allowSpaces_(allowSpaces) {}

AcUiPrString::~AcUiPrString() = default;

const wchar_t* AcUiPrString::keyWords() const { return L""; }

Acad::ErrorStatus AcUiPrString::setKeyWords(const wchar_t* /*keyWords*/) {
    return Acad::eNotApplicable;
}

bool AcUiPrString::isKeyWordPicked(const wchar_t* /*keyWord*/) { return false; }

const wchar_t* AcUiPrString::keyWordPicked() { return nullptr; }

const wchar_t* AcUiPrString::value() const { return value_; }

int AcUiPrString::go() {
    wchar_t text[512] = {};
    if (acedGetString(allowSpaces_ ? 1 : 0, promptText(), text, std::size(text)) != RTNORM)
        return kCancelled;
    value_ = text;
    return kNormal;
}
