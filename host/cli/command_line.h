#pragma once
// From words to options; the table of options says which there are.
#include <string>
#include <variant>

#include "cli/options.h"

namespace depcompare {

/// A text to print instead of comparing.
struct Information {
    std::string text;
};

/// Throws: `UsageError` with one line.
[[nodiscard]] std::variant<Options, Information> parseCommandLine(int argc,
                                                                  const char* const* argv);

}  // namespace depcompare
