#pragma once
// Changes the IDs of nodes as the command line asks, so that those of two files meet.
#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "draft/graph_draft.h"

namespace re2 {
class RE2;
}

namespace depcompare {

/// One `s/PATTERN/TEXT/`, with any character in place of `/`, and after the last one `g` for every
/// match instead of the first one, and `i` for matches in either letter case.
class IdReplacement {
  public:
    /// The pattern and, in the text, `\1` are those of RE2, which needs linear time.
    ///
    /// Throws: `std::invalid_argument` with one line.
    explicit IdReplacement(std::string_view text);

    void apply(std::string& id) const;

  private:
    std::shared_ptr<const re2::RE2> pattern_;
    std::string text_;
    bool everyMatch_ = false;
};

/// Changes that are made one after the other, in this order.
struct IdEdits {
    std::vector<std::string> prefixes = {};  ///< folders; the first one that fits is taken off
    bool withoutVersion = false;
    std::vector<IdReplacement> replacements = {};
};

/// A node whose name was its ID keeps that so.
///
/// Throws: `InputError` for two nodes that would have one ID, and an ID that contains the mark of IDs.
void editNodeIDs(std::array<GraphDraft, 2>& drafts, const IdEdits& edits);

/// Returns: a package URL, or an ID as Maven, Gradle, Go, Cargo, npm and Conan write them, without the
///          version in it; any other text as it is.
[[nodiscard]] std::string withoutVersion(std::string_view id);

/// Returns: a package URL without its version and qualifiers.
[[nodiscard]] std::string barePackageURL(std::string_view packageURL);

}  // namespace depcompare
