#pragma once
// A graph parsed by libcgraph.
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include <cgraph.h>

#include "input/input.h"

namespace depcompare {

/// The names that the library forgets: it takes a name that begins with % for a generated one.
using ForgottenNames = std::unordered_map<const void*, std::string>;

/// Holds the graph, and the lock without which the library must not be used.
class DotGraph {
  public:
    /// Throws: `InputError` for whatever the library reports, for no or several graphs in the file,
    ///         text that is not UTF-8, and more edges than the limit.
    explicit DotGraph(Input& input);

    [[nodiscard]] Agraph_t* get() const noexcept { return graph_.get(); }
    /// Returns: the name that the file gives to the node; valid as long as this graph.
    [[nodiscard]] std::string_view nameOf(Agnode_t* node) const;

  private:
    struct Close {
        void operator()(Agraph_t* graph) const { agclose(graph); }
    };

    std::unique_lock<std::mutex> lock_;
    std::unique_ptr<Agraph_t, Close> graph_;
    ForgottenNames forgotten_;
};

}  // namespace depcompare
