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
/// @param operation  void(); sets up anew whatever it needs, input too.
/// @param check      void(const std::string& call): the call that failed; empty in the last run.
/// @return           how many calls could fail.
template <class Operation, class Check>
int failEachCall(headless::Session& session, Operation operation, Check check) {
    constexpr int kMost = 100'000; // An operation that asks again for ever never gets there.
    for (int nth = 1; nth <= kMost; ++nth) {
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
        if (failed.empty() || !leftovers.empty() || testing::Test::HasFailure()) return nth - 1;
    }
    ADD_FAILURE() << "the operation does not end";
    return kMost;
}

} // namespace test_support
