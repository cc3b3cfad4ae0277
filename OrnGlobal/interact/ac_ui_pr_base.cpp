#include "interact/ac_ui_pr_base.h"

#include <aced.h>

AcUiPrBase::AcUiPrBase(const wchar_t* msg, const wchar_t* keyWords)
    : keyWords_(keyWords), message_(msg) {}

AcUiPrBase::~AcUiPrBase() = default;

const wchar_t* AcUiPrBase::keyWords() const { return keyWords_; }

Acad::ErrorStatus AcUiPrBase::setKeyWords(const wchar_t* keyWords) {
    keyWords_ = keyWords;
    return Acad::eOk;
}

const wchar_t* AcUiPrBase::message() const { return message_; }

Acad::ErrorStatus AcUiPrBase::setMessage(const wchar_t* message) {
    message_ = message;
    return Acad::eOk;
}

const wchar_t* AcUiPrBase::keyWordPicked() const { return picked_; }

bool AcUiPrBase::isKeyWordPicked(const wchar_t* keyWord) { return picked_ == keyWord; }

CString AcUiPrBase::promptText() const {
    CString text;
    text.Format(L"\n%s: ", static_cast<const wchar_t*>(message_));
    return text;
}

int AcUiPrBase::takeKeyWord() {
    wchar_t keyWord[512] = {};
    acedGetInput(keyWord, std::size(keyWord));
    picked_ = keyWord;
    return kKeyWord;
}
