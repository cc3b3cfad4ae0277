// Members of objects that are no part of their state: see AcDbObject::operator=.
#pragma once

#include <optional>

namespace headless {

/// Something computed from the state and kept until that changes, in place: whoever asks all
/// objects of a drawing waits for memory, once more for every pointer on the way. A copy begins
/// without it, and so does an object that takes another state over.
template <class T>
class Derived {
public:
    Derived() = default;
    Derived(const Derived& /*other*/) {}
    Derived& operator=(const Derived& /*other*/) {
        reset();
        return *this;
    }
    ~Derived() = default;

    void reset() { value_.reset(); }
    void emplace(const T& value) { value_ = value; }
    explicit operator bool() const { return value_.has_value(); }
    const T& operator*() const { return *value_; }

private:
    std::optional<T> value_;
};

/// A container that only ever grows, like the list of all entities that were added to a block: what
/// is undone stays in it, erased. It belongs to the object, whatever state that has.
template <class Container>
class Lasting : public Container {
public:
    Lasting() = default;
    Lasting(const Lasting& /*other*/) : Container() {}
    Lasting& operator=(const Lasting& /*other*/) { return *this; }
    ~Lasting() = default;
};

} // namespace headless
