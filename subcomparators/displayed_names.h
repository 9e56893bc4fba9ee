#pragma once
// The localized names of property keys.
#include <map>
#include <string>
#include <vector>

namespace dependency::comparisons {

/// Looks up each distinct key once.
///
/// Lifetime: names are of the global locale at the time of their look-up, so one object serves one
///           comparison.
class DisplayedNames {
  public:
    explicit DisplayedNames(std::vector<std::string> prefixes) : prefixes_(std::move(prefixes)) {}

    /// Returns: the message for `key` after the first prefix that has one, else the key itself; valid
    ///          as long as this object.
    [[nodiscard]] const std::u16string& operator[](const std::u16string& key);

    /// Those of graph properties, and those of node properties.
    [[nodiscard]] static DisplayedNames ofGraphs();
    [[nodiscard]] static DisplayedNames ofNodes();

  private:
    std::vector<std::string> prefixes_;
    // Ordered, since keys come from files and could be chosen so that their hashes collide.
    std::map<std::u16string, std::u16string> names_;
};

}  // namespace dependency::comparisons
