// Runs an operation with a failure at each of its calls of the platform in turn.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "headless/session.h"

namespace test_support {

/// Runs the operation until a run meets no failure: in the n-th run its n-th call that can fail
/// does. After each run nothing may be left behind, and `check` looks at what else matters.
///
/// @param prepare    void(); sets up anew whatever each run needs; nothing fails in it.
/// @param operation  void()
/// @param check      void(const std::string& call): the call that failed; empty in the last run.
/// @return           how many calls could fail.
template <class Prepare, class Operation, class Check>
int failEachCall(headless::Session& session, Prepare prepare, Operation operation, Check check) {
    const bool failedBefore = testing::Test::HasFailure();
    constexpr int kMost = 100'000; // An operation that asks again for ever never gets there.
    for (int nth = 1; nth <= kMost; ++nth) {
        prepare();
        std::string failed;
        int calls = 0;
        session.setFaultHook([&](const char* call) {
            if (++calls != nth) return false;
            failed = call;
            return true;
        });
        operation();
        session.setFaultHook({});
        SCOPED_TRACE("call " + std::to_string(nth) + " fails: " + failed);
        const std::vector<std::string> leftovers = session.leftovers();
        for (const std::string& leftover : leftovers)
            ADD_FAILURE() << "left behind: " << leftover;
        check(failed);
        const bool found = !failedBefore && testing::Test::HasFailure();
        if (failed.empty() || !leftovers.empty() || found) return nth - 1;
    }
    ADD_FAILURE() << "the operation does not end";
    return kMost;
}

/// The same for an operation that sets up what it needs itself.
template <class Operation, class Check>
int failEachCall(headless::Session& session, Operation operation, Check check) {
    return failEachCall(
        session, [] {}, operation, check);
}

} // namespace test_support
