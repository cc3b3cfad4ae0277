// Says on standard error how far long work has come.
#pragma once

#include <chrono>
#include <string>

namespace orn {

/// Called now and then with the part that is done, 0 to 1. Silent for work of less than a second;
/// then a line that is written over until all is done.
class Progress {
public:
    explicit Progress(std::string what) : what_(std::move(what)) {}

    void operator()(double done);

private:
    using Clock = std::chrono::steady_clock;

    std::string what_;
    Clock::time_point begun_ = Clock::now();
    int shown_ = -1; // percent, -1 while silent
};

} // namespace orn
