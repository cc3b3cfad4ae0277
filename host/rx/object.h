// Runtime classes: every object of the platform knows its class, and classes can be found by name.
#pragma once

#include <cstddef>
#include <type_traits>

#include "rx/error_status.h"
#include "rx/types.h"

class AcRxClass;

/// The root of the platform's classes.
class AcRxObject {
public:
    virtual ~AcRxObject() = default;

    static AcRxClass* desc();
    virtual AcRxClass* isA() const;

    /// True when this object's class is `kind` or derives from it.
    bool isKindOf(const AcRxClass* kind) const;

    /// A copy that the caller deletes; null for classes whose objects cannot be copied.
    virtual AcRxObject* clone() const { return nullptr; }

    static AcRxObject* cast(const AcRxObject* object) { return const_cast<AcRxObject*>(object); }

protected:
    AcRxObject() = default;
    AcRxObject(const AcRxObject&) = default;
    AcRxObject& operator=(const AcRxObject&) = default;
};

/// The description of a class: its names, its parent and how to make an object of it.
class AcRxClass : public AcRxObject {
public:
    using Factory = AcRxObject* (*)();
    /// Gives one object of the class the state of another.
    using StateCopier = void (*)(AcRxObject& to, const AcRxObject& from);

    /// Describes a class and enters it in the dictionary of classes; the texts must outlive it.
    /// @param dxfName  the name in drawing files, or null for classes that never stand there.
    /// @param factory  null for a class that has no objects of its own.
    /// @param copier   null for a class whose objects cannot take another's state.
    AcRxClass(const ACHAR* name, AcRxClass* parent, Factory factory, const char* dxfName,
              StateCopier copier = nullptr);
    ~AcRxClass() override;
    AcRxClass(const AcRxClass&) = delete;
    AcRxClass& operator=(const AcRxClass&) = delete;

    static AcRxClass* desc();
    AcRxClass* isA() const override { return desc(); }

    const ACHAR* name() const { return name_; }
    AcRxClass* myParent() const { return parent_; }
    bool isDerivedFrom(const AcRxClass* ancestor) const;

    /// A new object of the class, or null when it is abstract.
    AcRxObject* create() const { return factory_ == nullptr ? nullptr : factory_(); }

    StateCopier stateCopier() const { return stateCopier_; }

    /// The name that drawing files use, in their own letters; null when there is none.
    const char* dxfNameBytes() const { return dxfName_; }
    const ACHAR* dxfName() const;

private:
    const ACHAR* name_;
    AcRxClass* parent_;
    Factory factory_;
    const char* dxfName_;
    StateCopier stateCopier_;
};

namespace headless {

/// Copies the state of objects of the class by assignment; null when they cannot be assigned.
template <class T>
constexpr AcRxClass::StateCopier stateCopierOf() {
    if constexpr (std::is_copy_assignable_v<T>) {
        return [](AcRxObject& to, const AcRxObject& from) {
            static_cast<T&>(to) = static_cast<const T&>(from);
        };
    } else {
        return nullptr;
    }
}

} // namespace headless

#include "rx/object_members.h"
