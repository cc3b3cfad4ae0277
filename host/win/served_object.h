// Objects that answer late-bound calls from a table of their members.
//
//     const MemberTable& Book::members() const {
//         static const MemberTable table{{110, L"Name", reads<&Book::name>},
//                                        {283, L"Save", {}, {}, calls<&Book::save>}};
//         return table;
//     }
#pragma once

#include <initializer_list>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include "win/casing.h"
#include "win/dispatch.h"
#include "win/owned_variant.h"

namespace headless {

/// A call that failed: with a message the platform's exception, without one the bare code.
class AutomationError : public std::runtime_error {
public:
    AutomationError(HRESULT status, const std::string& message)
        : std::runtime_error(message), status_(status) {}
    explicit AutomationError(HRESULT status) : AutomationError(status, {}) {}
    [[nodiscard]] HRESULT status() const { return status_; }

private:
    HRESULT status_;
};

/// The arguments of a call in the order they are written. What is left out, past the end or given
/// as DISP_E_PARAMNOTFOUND, is missing; what refers to a value counts as that value.
class CallArguments {
public:
    /// @param reversed  as automation passes them, the last first.
    explicit CallArguments(std::span<const VARIANTARG> reversed) : reversed_(reversed) {}

    [[nodiscard]] std::size_t count() const { return reversed_.size(); }
    /// Null when missing.
    [[nodiscard]] const VARIANT* find(std::size_t index) const;
    [[nodiscard]] bool has(std::size_t index) const { return find(index) != nullptr; }

    // Converted; the fallback when missing, DISP_E_TYPEMISMATCH or DISP_E_OVERFLOW thrown when it
    // cannot be converted.
    [[nodiscard]] LONG integer(std::size_t index, LONG fallback) const;
    [[nodiscard]] double real(std::size_t index, double fallback) const;
    [[nodiscard]] bool boolean(std::size_t index, bool fallback) const;
    [[nodiscard]] std::wstring text(std::size_t index) const;

private:
    std::span<const VARIANTARG> reversed_;
};

// The same for a single value.
[[nodiscard]] LONG integerOf(const VARIANT& value);
[[nodiscard]] double realOf(const VARIANT& value);
[[nodiscard]] bool booleanOf(const VARIANT& value);
[[nodiscard]] std::wstring textOf(const VARIANT& value);

/// What a VT_BYREF variant refers to when that is a variant, else the variant itself.
[[nodiscard]] const VARIANT& referred(const VARIANT& value);

class ServedObject;

/// One member: what cannot be read, written or called is null.
struct ServedMember {
    DISPID id;
    std::wstring_view name;
    OwnedVariant (*get)(ServedObject&, const CallArguments&) = nullptr;
    void (*put)(ServedObject&, const CallArguments&, const VARIANT&) = nullptr;
    OwnedVariant (*call)(ServedObject&, const CallArguments&) = nullptr;
};

/// The members of a class. Several rows may share a number (two names) or a name (two numbers, of
/// which the first is told).
class MemberTable {
public:
    MemberTable(std::initializer_list<ServedMember> members);

    [[nodiscard]] const ServedMember* find(DISPID id) const;
    [[nodiscard]] const DISPID* find(std::wstring_view name) const;

private:
    std::unordered_map<DISPID, ServedMember> byId_;
    std::unordered_map<std::wstring_view, DISPID, NameHash, NameEqual> byName_;
};

/// Base of objects with a table of members: looks them up and turns errors into the platform's
/// answers.
class ServedObject : public AutomationObject {
public:
    HRESULT GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                          DISPID* ids) override;
    HRESULT Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                   VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

protected:
    [[nodiscard]] virtual const MemberTable& members() const = 0;
    /// Who failed, for exceptions.
    [[nodiscard]] virtual const wchar_t* source() const = 0;
};

/// A new object with one reference, which is the caller's.
template <class Object, class... Arguments>
[[nodiscard]] Object* newServed(Arguments&&... arguments) {
    auto* object = new Object(std::forward<Arguments>(arguments)...);
    object->AddRef();
    return object;
}

// Entries of a member table from member functions: reads<&Class::function> and calls<> take
// functions with or without CallArguments that answer anything a variant can hold or nothing,
// writes<> functions of the value, with CallArguments before it or not.

namespace detail {

template <class>
struct ClassOf;
template <class Class, class Result, class... Parameters>
struct ClassOf<Result (Class::*)(Parameters...)> {
    using Type = Class;
};
template <class Class, class Result, class... Parameters>
struct ClassOf<Result (Class::*)(Parameters...) const> {
    using Type = Class;
};

} // namespace detail

template <auto Function>
OwnedVariant calls(ServedObject& object, const CallArguments& arguments) {
    using Class = typename detail::ClassOf<decltype(Function)>::Type;
    auto& self = static_cast<Class&>(object);
    const auto invoke = [&] {
        if constexpr (std::is_invocable_v<decltype(Function), Class&, const CallArguments&>) {
            return (self.*Function)(arguments);
        } else {
            return (self.*Function)();
        }
    };
    if constexpr (std::is_void_v<decltype(invoke())>) {
        invoke();
        return OwnedVariant(true);
    } else {
        return OwnedVariant(invoke());
    }
}

template <auto Function>
OwnedVariant reads(ServedObject& object, const CallArguments& arguments) {
    return calls<Function>(object, arguments);
}

template <auto Function>
void writes(ServedObject& object, const CallArguments& arguments, const VARIANT& value) {
    using Class = typename detail::ClassOf<decltype(Function)>::Type;
    auto& self = static_cast<Class&>(object);
    if constexpr (std::is_invocable_v<decltype(Function), Class&, const CallArguments&,
                                      const VARIANT&>) {
        (self.*Function)(arguments, value);
    } else {
        (self.*Function)(value);
    }
}

} // namespace headless
