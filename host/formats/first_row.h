#pragma once
// The first row of a table: a header, or data like the rest.
#include <cstddef>
#include <string>
#include <string_view>

#include "draft/graph_sink.h"

namespace depcompare {

/// Notices a first row that may be a header which no reader knows.
class FirstRow {
  public:
    void take(std::string_view source, std::string_view target);
    /// Warns of a first row whose texts no other row has, of at least two others.
    void warnOfHeader(GraphSink& sink) const;

  private:
    std::string source_;
    std::string target_;
    std::size_t rows_ = 0;
    bool isRelated_ = false;
};

/// Returns: whether these are the names of the columns of sources and targets, in any letter case.
[[nodiscard]] bool nameEnds(std::string_view source, std::string_view target);

/// Returns: the text in lower case (ASCII), without spaces around it.
[[nodiscard]] std::string normalized(std::string_view name);

}  // namespace depcompare
