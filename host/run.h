#pragma once
// The whole program behind `main`.

namespace depcompare {

/// Compares what the command line names and writes the report. Trouble of any kind ends in one line
/// on standard error.
///
/// Returns: the exit status: 0 no difference, 1 some, 2 trouble.
[[nodiscard]] int run(int argc, const char* const* argv) noexcept;

}  // namespace depcompare
