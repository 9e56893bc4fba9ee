#pragma once
// The whole path from bytes to reports, held against what is true of every comparison.
#include <string>
#include <string_view>

namespace depcompare::fuzz {

/// Compares the two documents that the bytes stand for (see `path_case.h`), writes reports, and does the
/// same with the sides swapped and with the left document and itself.
///
/// Requires: registered messages.
/// Returns:  the rule that does not hold, then both documents; nothing if all do, or if the documents
///           are refused as they may be.
[[nodiscard]] std::string brokenRule(std::string_view bytes);

}  // namespace depcompare::fuzz
