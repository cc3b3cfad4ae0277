// A drawing opened for a subcommand: session, product modules and drawing in one, with every
// complaint on standard error.
#pragma once

#include <filesystem>
#include <memory>

#include "headless/session.h"

namespace orn {

/// Exit statuses of the program.
inline constexpr int kSuccess = 0;
inline constexpr int kFailure = 1;
inline constexpr int kWrongUsage = 2;

class OpenDrawing {
public:
    /// Loads the product's modules and opens the drawing.
    /// @param sink  receives what the command line prints; by default nobody.
    explicit OpenDrawing(const std::filesystem::path& drawing,
                         std::function<void(std::wstring_view)> sink = {});

    /// False when something failed; it has been said on standard error.
    explicit operator bool() const { return opened_; }

    headless::Session& session() { return session_; }
    AcDbDatabase* database() const { return session_.database(); }

    /// Says what message boxes told and what the work left behind. Returns the exit status.
    int finish() const;

private:
    headless::Session session_;
    bool opened_ = false;
};

} // namespace orn
