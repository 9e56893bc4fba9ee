#pragma once
// Takes what it is given, unchecked.
#include <string_view>

#include <dependency/graph/graph.h>

namespace dependency::graph {

class GraphBuilder {
  public:
    static std::shared_ptr<const Type> type(std::u16string_view id, std::u16string_view name);
    static std::shared_ptr<const Component> component(std::u16string_view name,
                                                      const std::shared_ptr<const Type>& type);
    std::shared_ptr<Node> addNode(std::u16string id, std::u16string name,
                                  const std::shared_ptr<const Type>& type,
                                  std::vector<Property> properties = {});
    std::shared_ptr<Dependency> addDependency(std::u16string id,
                                              const std::shared_ptr<Node>& upstream,
                                              const std::shared_ptr<Node>& downstream,
                                              const std::shared_ptr<const Type>& type,
                                              const std::shared_ptr<const Component>& from,
                                              const std::shared_ptr<const Component>& to);
    void setProperty(std::u16string_view key, std::u16string value);
    void setTimeStamp(const boost::posix_time::ptime& timeStamp);
    [[nodiscard]] std::shared_ptr<const Graph> finish();

  private:
    std::shared_ptr<Graph> graph_ = std::make_shared<Graph>();
};

}  // namespace dependency::graph
