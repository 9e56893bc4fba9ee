#pragma once
// A graph as libcgraph parses it.
#include <memory>
#include <mutex>

#include <cgraph.h>

#include "readers/input.h"

namespace depcompare {

/// Holds the graph, and the lock without which the library must not be used.
class DotGraph {
  public:
    /// Throws: `InputError` for whatever the library complains of, no or several graphs in the file,
    ///         text that is not UTF-8, and more edges than the limit.
    explicit DotGraph(Input& input);

    [[nodiscard]] Agraph_t* get() const noexcept { return graph_.get(); }

  private:
    struct Close {
        void operator()(Agraph_t* graph) const { agclose(graph); }
    };

    std::unique_lock<std::mutex> lock_;
    std::unique_ptr<Agraph_t, Close> graph_;
};

}  // namespace depcompare
