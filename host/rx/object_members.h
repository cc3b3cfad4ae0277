// The macros by which a class takes part in the runtime class system.
#pragma once

#define ACRX_DECLARE_MEMBERS(CLASS)                                                                \
    static AcRxClass* desc();                                                                      \
    AcRxClass* isA() const override;                                                               \
    static CLASS* cast(const AcRxObject* object) {                                                 \
        return object != nullptr && object->isKindOf(CLASS::desc())                                \
                   ? static_cast<CLASS*>(const_cast<AcRxObject*>(object))                          \
                   : nullptr;                                                                      \
    }                                                                                              \
    static CLASS* cast(AcRxObject* object) { return cast(static_cast<const AcRxObject*>(object)); }

// `desc()` makes the description on first use, so the order in which files are initialised does not
// matter; the `registered` object makes sure that it is made when the library is loaded.
#define HEADLESS_RX_DEFINE(CLASS, PARENT, FACTORY, DXFNAME)                                        \
    AcRxClass* CLASS::desc() {                                                                     \
        static AcRxClass description(L"" #CLASS, PARENT::desc(), FACTORY, DXFNAME,                 \
                                     headless::stateCopierOf<CLASS>());                            \
        return &description;                                                                       \
    }                                                                                              \
    AcRxClass* CLASS::isA() const { return CLASS::desc(); }                                        \
    namespace {                                                                                    \
    [[maybe_unused]] const AcRxClass* const registered##CLASS = CLASS::desc();                     \
    }

/// A class without objects of its own.
#define ACRX_NO_CONS_DEFINE_MEMBERS(CLASS, PARENT)                                                 \
    HEADLESS_RX_DEFINE(CLASS, PARENT, nullptr, nullptr)

/// A class whose objects do not stand in drawing files by a name of their own.
#define ACRX_CONS_DEFINE_MEMBERS(CLASS, PARENT, VERSION)                                           \
    HEADLESS_RX_DEFINE(                                                                            \
        CLASS, PARENT, []() -> AcRxObject* { return new CLASS; }, nullptr)

/// A class whose objects stand in drawing files under DXFNAME.
#define HEADLESS_DXF_DEFINE_MEMBERS(CLASS, PARENT, DXFNAME)                                        \
    HEADLESS_RX_DEFINE(                                                                            \
        CLASS, PARENT, []() -> AcRxObject* { return new CLASS; }, DXFNAME)                         \
    static_assert(std::is_copy_assignable_v<CLASS>, "copied by clones and by undo");
