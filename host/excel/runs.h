// Properties of all rows or all columns of a sheet, kept where they change.
#pragma once

#include <map>

namespace headless::excel {

/// A value for each of the numbers 1 to `count`; neighbours with the same value share one entry.
template <class Value>
class Runs {
public:
    explicit Runs(int count) : end_(count + 1) { starts_.emplace(1, Value{}); }

    [[nodiscard]] const Value& at(int index) const {
        return std::prev(starts_.upper_bound(index))->second;
    }

    /// Changes the values of [first, last].
    template <class Change>
    void change(int first, int last, Change change) {
        if (unchanged(first, last, change)) return;
        const auto from = split(first);
        const auto to = split(last + 1);
        for (auto run = from; run != to; ++run)
            change(run->second);
        join(first, last);
    }

    /// Makes room for `count` values before `at`; the last ones go. The new ones equal those
    /// before.
    void insert(int at, int count) {
        std::map<int, Value> moved;
        const Value before = this->at(at > 1 ? at - 1 : 1);
        for (const auto& [start, value] : starts_) {
            if (start < at) moved.emplace(start, value);
        }
        moved.insert_or_assign(at, before);
        const int next = at + count;
        if (next < end_) moved.insert_or_assign(next, this->at(at));
        for (const auto& [start, value] : starts_) {
            if (start > at && start + count < end_) moved.insert_or_assign(start + count, value);
        }
        starts_ = std::move(moved);
    }

    /// Takes [at, at + count) out; the end is filled with what a fresh sheet has.
    void remove(int at, int count) {
        std::map<int, Value> moved;
        for (const auto& [start, value] : starts_) {
            if (start < at) moved.emplace(start, value);
        }
        if (at + count < end_) moved.insert_or_assign(at, this->at(at + count));
        for (const auto& [start, value] : starts_) {
            if (start > at + count) moved.insert_or_assign(start - count, value);
        }
        moved.insert_or_assign(end_ - count, Value{});
        starts_ = std::move(moved);
    }

    /// Calls `visit(first, last, value)` for each run that is not as in a fresh sheet.
    template <class Visit>
    void forEach(Visit visit) const {
        for (auto run = starts_.begin(); run != starts_.end(); ++run) {
            const auto next = std::next(run);
            const int last = (next == starts_.end() ? end_ : next->first) - 1;
            if (!(run->second == Value{})) visit(run->first, last, run->second);
        }
    }

private:
    using Iterator = typename std::map<int, Value>::iterator;

    /// True when one run holds all of it and has the values already: nothing needs cutting then.
    template <class Change>
    bool unchanged(int first, int last, Change change) const {
        const auto next = starts_.upper_bound(first);
        if (next != starts_.end() && next->first <= last) return false;
        Value value = std::prev(next)->second;
        change(value);
        return value == std::prev(next)->second;
    }

    /// The run that starts at `index`, cut out of the one that holds it.
    Iterator split(int index) {
        if (index >= end_) return starts_.end();
        const auto holder = std::prev(starts_.upper_bound(index));
        if (holder->first == index) return holder;
        return starts_.emplace_hint(std::next(holder), index, holder->second);
    }

    /// Joins equal neighbours among the runs of [first, last] and those beside them.
    void join(int first, int last) {
        auto run = std::prev(starts_.upper_bound(first));
        if (run != starts_.begin()) --run;
        for (auto next = std::next(run); next != starts_.end() && next->first <= last + 1;) {
            if (next->second == run->second) {
                next = starts_.erase(next);
            } else {
                run = next++;
            }
        }
    }

    std::map<int, Value> starts_;
    int end_;
};

} // namespace headless::excel
