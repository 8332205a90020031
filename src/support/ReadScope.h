#pragma once

#include <cstdint>

namespace px {

// A stretch of work on one thread (building one menu) during which files that are kept in
// memory and checked against the disk before use (the settings file, the listings of the
// artwork folders) are checked once, at their first use, and trusted for the rest of it. Work
// started after the scope ends checks again, so it sees what other processes changed since.
// Scopes nest: an inner scope is part of the outer one.
class ReadScope {
  public:
    ReadScope();
    ~ReadScope();
    ReadScope(const ReadScope&) = delete;
    ReadScope& operator=(const ReadScope&) = delete;

    // The number of the scope open on this thread, 0 when none is. No number is used twice.
    static std::uint64_t current();
    // Whether a check made in the scope numbered `checkedIn` still holds on this thread.
    static bool holds(std::uint64_t checkedIn) { return checkedIn != 0 && checkedIn == current(); }

  private:
    bool m_outermost;
};

} // namespace px
