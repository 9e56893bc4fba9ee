#include "draft/choose_node_ids.h"

#include "draft/edit_ids.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

TEST(NodeIDs, ofPackagesMayLoseTheirVersion) {
    const std::pair<const char*, const char*> cases[] = {
        {"pkg:deb/debian/a@1?arch=x#sub", "pkg:deb/debian/a?arch=x#sub"},
        {"a@1.2.3", "a"},
        {"@s/a@1.2.3-rc.1+b", "@s/a"},
        {"@s/a", "@s/a"},
        {"g.org/a/v2@v2.0.1", "g.org/a/v2"},
        {"toolchain@go1.21", "toolchain"},
        {"registry+https://g.org/index#a@1.0", "registry+https://g.org/index#a"},
        {"path+file:///x/a#0.1.0", "path+file:///x/a"},
        {"a 1.0.1 (registry+https://x)", "a (registry+https://x)"},
        {"g.h:a:1.0", "g.h:a"},
        {"g.h:a:jar:tests:1.0-SNAPSHOT:test", "g.h:a:jar:tests:test"},
        {"g.h:a", "g.h:a"},
        {"zlib/1.3.1", "zlib"},
        {"zlib/1#abc (host)", "zlib (host)"},
        {"zlib/1.3@me/stable#abc", "zlib@me/stable"},
        {"src/1.txt", "src/1.txt"},
        {"src/a@2/b.js", "src/a@2/b.js"},
        {"//a/b:c", "//a/b:c"},
    };
    for (const auto& [id, expected] : cases) {
        EXPECT_EQ(withoutVersion(id), expected);
    }
}

TEST(NodeIDs, neitherNamesNorEditsMakeTheMarkOfIDs) {
    const std::string file = R"({"graph": {"nodes": {"a": {"label": "\u0001"}}}})";
    for (const char* options : {"--node-id name", "--id-replace s/a/\u0001/"}) {
        EXPECT_EQ(test::read(file, test::optionsOf(std::string(options) + " l r").reading),
                  "in: node ID \"\u0001\" contains the character U+0001");
    }
}

TEST(NodeIDs, positionsAndAddressesAreRecognized) {
    const std::pair<std::vector<std::string_view>, bool> cases[] = {
        {{"n0", "n1", "n12"}, true},
        {{"0x55af", "0x7F"}, true},
        {{"Node0x1", "Node0x2"}, true},
        {{"node1", "Node1"}, false},
        {{"header_0", "header_3"}, true},
        {{"n0", "main"}, false},
        {{"0x"}, false},
        {{}, false},
    };
    for (const auto& [ids, expected] : cases) {
        EXPECT_EQ(lookPositional(ids), expected) << (ids.empty() ? "" : ids[0]);
    }
}

}  // namespace
}  // namespace depcompare
