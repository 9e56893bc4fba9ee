#pragma once
// How inputs are read.
#include <string>
#include <vector>

#include "draft/edit_ids.h"
#include "draft/leave_out.h"
#include "input/limits.h"

namespace depcompare {

struct ReadOptions {
    std::string format = "auto";              ///< "auto", or one of `inputFormats()`
    std::string nodeID = "auto";              ///< "auto", "id", "name", or the key of a property
    std::vector<std::string> fileTypes = {};  ///< types that make a node a file, besides `file`
    bool emptyInputs = false;                 ///< whether an empty input is an empty graph
    bool requireFiles = false;                ///< whether nodes without a file are refused
    IdEdits idEdits = {};
    Selection selection = {};
    Limits limits = {};
};

}  // namespace depcompare
