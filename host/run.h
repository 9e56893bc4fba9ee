#pragma once
// The whole program, called by `main`.

namespace depcompare {

/// Compares the graphs that the command line names and writes the report, or one line on standard
/// error if anything fails.
///
/// Returns: the exit status: 0 no visible difference, 1 some, 2 an error.
[[nodiscard]] int run(int argc, const char* const* argv) noexcept;

}  // namespace depcompare
