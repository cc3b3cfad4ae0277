#include "rx/object.h"

#include "rx/class_dictionary.h"

AcRxClass* AcRxObject::desc() {
    static AcRxClass description(L"AcRxObject", nullptr, nullptr, nullptr);
    return &description;
}

AcRxClass* AcRxObject::isA() const { return desc(); }

bool AcRxObject::isKindOf(const AcRxClass* kind) const { return isA()->isDerivedFrom(kind); }

AcRxClass::AcRxClass(const ACHAR* name, AcRxClass* parent, Factory factory, const char* dxfName,
                     StateCopier copier)
    : name_(name), parent_(parent), factory_(factory), dxfName_(dxfName), stateCopier_(copier) {
    headless::ClassDictionary::instance().add(*this);
}

AcRxClass::~AcRxClass() { headless::ClassDictionary::instance().remove(*this); }

AcRxClass* AcRxClass::desc() {
    static AcRxClass description(L"AcRxClass", AcRxObject::desc(), nullptr, nullptr);
    return &description;
}

bool AcRxClass::isDerivedFrom(const AcRxClass* ancestor) const {
    for (const AcRxClass* c = this; c != nullptr; c = c->parent_)
        if (c == ancestor) return true;
    return false;
}

const ACHAR* AcRxClass::dxfName() const {
    return dxfName_ == nullptr ? nullptr : headless::ClassDictionary::instance().wideDxfName(*this);
}
