// How a layer keeps its per-session state: the newest living instance is the current one.
#pragma once

namespace headless {

/// Base of a layer's state class. Constructing a State makes it current, destroying it makes the
/// one before it current again; states may be destroyed in any order. Below them all stands one
/// process-wide state that is in no chain, so code works without a session.
///
/// A layer defines its `current()` in its own library, so that all modules share one chain.
template <class State>
class SessionState {
public:
    SessionState(const SessionState&) = delete;
    SessionState& operator=(const SessionState&) = delete;

protected:
    /// The process-wide state.
    SessionState() = default;

    /// A session's state, which takes the place of `newest`.
    explicit SessionState(State*& newest) : newest_(&newest), previous_(newest) {
        newest = static_cast<State*>(this);
    }

    ~SessionState() {
        if (newest_ != nullptr) *linkToThis() = previous_;
    }

private:
    /// The pointer by which the chain reaches this state.
    State** linkToThis() {
        State** link = newest_;
        while (*link != this) {
            link = &static_cast<SessionState*>(*link)->previous_;
        }
        return link;
    }

    State** newest_ = nullptr;
    State* previous_ = nullptr;
};

} // namespace headless
