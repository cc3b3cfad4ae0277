// What was found wrong with a drawing while it was read, and what was done about it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace headless {

/// One repair or oddity.
struct DxfFinding {
    std::uint64_t place = 0;  // line, counted from 1; in binary files the byte's offset
    std::uint64_t handle = 0; // of the object concerned, 0 when there is none
    std::string text;         // plain words
};

/// The findings of one reading in the order they were made. A thoroughly broken file has millions;
/// only the first ones are kept, the rest is counted.
class DxfReadReport {
public:
    static constexpr std::size_t kKept = 1000;

    void add(std::uint64_t place, std::uint64_t handle, std::string_view text);
    /// Places are offsets rather than lines.
    void setBinary(bool binary) { binary_ = binary; }
    bool binary() const { return binary_; }

    /// Nothing is noted while it lives: for a look at what is read again later.
    class Pause {
    public:
        explicit Pause(DxfReadReport& report) : report_(report) { ++report_.paused_; }
        ~Pause() { --report_.paused_; }
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        DxfReadReport& report_;
    };

    const std::vector<DxfFinding>& findings() const { return findings_; }
    /// All findings, those not kept too.
    std::size_t count() const { return count_; }
    bool full() const { return findings_.size() >= kKept; }

    /// "line 12: object 2F: text", as shown to people.
    std::string describe(const DxfFinding& finding) const;
    /// "line 12" or "byte 12".
    std::string place(std::uint64_t place) const;

private:
    std::vector<DxfFinding> findings_;
    std::size_t count_ = 0;
    int paused_ = 0;
    bool binary_ = false;
};

/// A handle as drawings write it: capital hexadecimal digits.
std::string handleText(std::uint64_t handle);

/// Text from a file for a message: control characters and bytes beyond ASCII replaced by '?', cut
/// after 40 characters.
std::string quote(std::string_view text);

} // namespace headless
