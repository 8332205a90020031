#pragma once

#include <cstdint>

namespace px {

// What a compression job tells its owner: that it started, how many of its steps are done, and
// how it ended when it did not complete. The last progress report (done == total) comes once the
// archive is complete.
struct CompressReport {
    enum class Kind { Started, Progress, Failed, Cancelled };
    Kind kind = Kind::Started;
    std::int64_t done = 0;
    std::int64_t total = 0;

    bool isComplete() const { return kind == Kind::Progress && total > 0 && done == total; }
    bool operator==(const CompressReport&) const = default;
};

} // namespace px
