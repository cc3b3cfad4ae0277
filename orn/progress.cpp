#include "progress.h"

#include <iostream>

namespace orn {

void Progress::operator()(double done) {
    if (done <= 0.0) begun_ = Clock::now();
    const bool long_ = Clock::now() - begun_ > std::chrono::seconds(1);
    const int percent = static_cast<int>(done * 100.0);
    if (long_ && percent != shown_ && done < 1.0) {
        shown_ = percent;
        std::cerr << '\r' << what_ << ": " << percent << " %" << std::flush;
    } else if (shown_ >= 0 && done >= 1.0) {
        shown_ = -1;
        std::cerr << '\r' << what_ << ": done \n";
    }
}

} // namespace orn
