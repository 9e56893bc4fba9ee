#pragma once
// The part of the command line that says how inputs are read.
#include <CLI/CLI.hpp>

#include "draft/read_options.h"

namespace depcompare {

/// Adds the options. `--list-formats` ends the parsing as `--version` does.
///
/// Lifetime: `options` must live as long as `app`.
void addReadingOptions(CLI::App& app, ReadOptions& options);

}  // namespace depcompare
