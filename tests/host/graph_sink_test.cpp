#include "draft/graph_sink.h"

#include <gtest/gtest.h>

#include "input/input_error.h"

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
    const auto umlauts = [](int count) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += "\u00E4";
        }
        return text;
    };
    const std::string id = "x" + umlauts(100);
    EXPECT_EQ(problemOf([&](GraphSink& sink) {
                  sink.addNode(id);
                  sink.addNode(id);
              }),
              "in:7: second node with the ID \"x" + umlauts(29) + "..." + umlauts(30) + "\"");
}

}  // namespace
}  // namespace depcompare
