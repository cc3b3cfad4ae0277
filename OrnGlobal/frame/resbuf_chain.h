// Lists of result buffers that are freed with their scope. Inside the library and its neighbours
// only.
#pragma once

#include <memory>

#include <acutads.h>
#include <adsdef.h>

namespace frame {

struct ReleaseChain {
    void operator()(resbuf* chain) const noexcept { acutRelRb(chain); }
};

/// A list that the host would have its caller free with acutRelRb.
using ResbufChain = std::unique_ptr<resbuf, ReleaseChain>;

} // namespace frame
