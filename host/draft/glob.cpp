#include "draft/glob.h"

#include <fnmatch.h>

#include <algorithm>

namespace depcompare {

bool matchesGlob(const std::string& glob, const std::string& text) {
    return fnmatch(glob.c_str(), text.c_str(), FNM_NOESCAPE) == 0;
}

bool matchesAnyGlob(const std::vector<std::string>& globs, const std::string& text) {
    return std::ranges::any_of(globs,
                               [&](const std::string& glob) { return matchesGlob(glob, text); });
}

}  // namespace depcompare
