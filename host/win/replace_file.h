// Replacing a file as a whole, so that a crash leaves the old contents or the new, never a mixture.
#pragma once

#include <sys/stat.h>

#include <string>
#include <string_view>

namespace headless {

/// What the new contents outlive once they are in place. A file that was there stays whole in
/// either case until the new one takes its name; only a file system that orders names before
/// contents could lose it with kProcess, when the power fails.
enum class Durability {
    kProcess, ///< The process, however it ends: the system has the bytes.
    kPower,   ///< A loss of power: the disk has the bytes, for which the call waits.
};

/// Writes a file beside the target and renames it over the target, which keeps its permissions, its
/// owner where that is allowed, and the links that lead to it. A file without any permission to
/// write is refused even to those whom the system would let write. A process killed in the middle
/// leaves its own file, ".headless-<process>-<number>", beside the target.
///
/// @param status  what the file system says of the new file.
/// @return        0, or the error number, with the old file as it was and nothing left beside it.
[[nodiscard]] int replaceFile(const std::string& path, std::string_view bytes,
                              Durability durability, struct stat& status);

/// Makes what is in the file now outlive a loss of power. Returns 0 or the error number.
int syncFile(const std::string& path);

} // namespace headless
