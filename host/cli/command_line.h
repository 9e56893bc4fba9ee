#pragma once
// From words to options.
#include <stdexcept>
#include <string>
#include <variant>

#include "cli/options.h"

namespace depcompare {

class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A text that was asked for instead of a comparison.
struct Information {
    std::string text;
};

/// Throws: `UsageError` with one line.
[[nodiscard]] std::variant<Options, Information> parseCommandLine(int argc,
                                                                  const char* const* argv);

}  // namespace depcompare
