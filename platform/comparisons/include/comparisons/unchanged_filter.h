#pragma once

namespace comparisons {

/// Hides what did not change.
struct UnchangedFilter {
    friend bool operator==(const UnchangedFilter&, const UnchangedFilter&) = default;
};

}  // namespace comparisons
