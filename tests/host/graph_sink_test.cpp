#include "readers/graph_sink.h"

#include <gtest/gtest.h>

#include "readers/input_error.h"

namespace depcompare {
namespace {

std::string problemOf(const std::function<void(GraphSink&)>& feed) {
    try {
        GraphSink sink("in", {}, [] { return std::size_t{7}; });
        feed(sink);
        static_cast<void>(sink.finish());
    } catch (const InputError& error) {
        return error.what();
    }
    return "";
}

// XML cannot hold the character; other formats can.
TEST(GraphSink, theMarkOfNodeIDsIsRefusedInIDs) {
    const std::string id("a\u0001b");
    const std::string expected = "in:7: the node ID \"" + id + "\" contains the character U+0001";
    EXPECT_EQ(problemOf([&](GraphSink& sink) { sink.addNode(id); }), expected);
    EXPECT_EQ(problemOf([&](GraphSink& sink) {
                  sink.addNode("a");
                  sink.addEdge("a", id);
              }),
              expected);
    EXPECT_EQ(problemOf([&](GraphSink& sink) { sink.setName(sink.addNode("a"), id); }), "");
}

TEST(GraphSink, aLongIDIsQuotedWithoutItsMiddle) {
    std::string umlauts;
    for (int i = 0; i < 100; ++i) {
        umlauts += "\u00E4";
    }
    const std::string id = "x" + umlauts;
    const std::string problem = problemOf([&](GraphSink& sink) {
        sink.addNode(id);
        sink.addNode(id);
    });
    std::string head = "x";
    std::string tail;
    for (int i = 0; i < 29; ++i) {
        head += "\u00E4";
    }
    for (int i = 0; i < 30; ++i) {
        tail += "\u00E4";
    }
    EXPECT_EQ(problem, "in:7: second node with the ID \"" + head + "..." + tail + "\"");
}

}  // namespace
}  // namespace depcompare
