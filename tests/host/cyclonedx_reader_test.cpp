#include "formats/cyclonedx/cyclonedx_reader.h"

#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

using test::expectRead;

TEST(CycloneDXReader, everyComponentIsAFile) {
    expectRead({
        {"of all kinds, nested and described ones too",
         R"({"bomFormat": "CycloneDX", "specVersion": "1.6",
             "metadata": {"component": {"bom-ref": "m", "name": "main"}},
             "components": [
               {"bom-ref": "r", "group": "g", "name": "n", "version": "2", "type": "library",
                "scope": "optional", "components": [{"bom-ref": "i", "name": "inner"}]}],
             "services": [{"bom-ref": "s", "name": "web"}]})",
         "bomFormat=CycloneDX\nspecVersion=1.6\n"
         "i \"inner\" [file]\nm \"main\" [file]\n"
         "r \"g/n\" [file] scope=optional type=library version=2\ns \"web\" [service]\n"},
        {"lists become texts whose order says nothing",
         R"({"components": [{"bom-ref": "r", "name": "n",
               "licenses": [{"license": {"id": "MIT"}}, {"expression": "A OR B"},
                            {"license": {"name": "mine"}}],
               "hashes": [{"alg": "SHA-1", "content": "12"}],
               "properties": [{"name": "k:b", "value": "2"}, {"name": "k:b", "value": "1"}],
               "supplier": {"url": ["u"], "name": "x"}}], "specVersion": "1.4"})",
         "specVersion=1.4\nr \"n\" [file] SHA-1=12 k:b=1, 2 licenses=A OR B, MIT, mine "
         "supplier={\"name\":\"x\",\"url\":[\"u\"]}\n"},
        {"without a reference the URL tells, then name and version; equals are one",
         R"({"specVersion": "1.5", "components": [{"name": "a", "purl": "pkg:t/a@1?x=y"},
               {"name": "b", "version": "1"}, {"name": "b", "version": "1"}, {"name": "c"}]})",
         "specVersion=1.5\nb@1 \"b\" [file] version=1\nc \"c\" [file]\n"
         "pkg:t/a \"a\" [file] purl=pkg:t/a@1?x=y\n"},
    });
}

TEST(CycloneDXReader, dependenciesAreEdgesBetweenReferences) {
    const std::string file =
        R"({"specVersion": "1.6", "dependencies": [
              {"ref": "b", "dependsOn": ["a", "x"], "provides": ["a"]}, {"ref": "a"}],
            "components": [{"bom-ref": "a", "name": "a"}, {"bom-ref": "b", "name": "b"}]})";
    expectRead({{"declared behind them", file,
                 "specVersion=1.6\na \"a\" [file]\nb \"b\" [file]\nx \"x\" [file]\n"
                 "0000000 b -> a [depends]\n0000001 b -> x [depends]\n"
                 "0000002 b -> a [provides]\n"}});
    EXPECT_EQ(test::load(file).warnings,
              std::vector<std::string>{"the node \"x\" stands in edges only; it was added"});
}

TEST(CycloneDXReader, whatCannotBeReadIsRefusedInOneLine) {
    expectRead({
        {"a second component",
         "{\"bomFormat\": \"CycloneDX\", \"components\": [\n"
         "{\"bom-ref\": \"a\"},\n{\"bom-ref\": \"a\"}]}",
         "in:3: second node with the ID \"a\""},
        {"no name at all", R"({"bomFormat": "CycloneDX", "components": [{}]})",
         "in:1: a component without bom-ref, purl and name"},
        {"a dependency of nothing", R"({"bomFormat": "CycloneDX", "dependencies": [{}]})",
         "in:1: a dependency without \"ref\""},
    });
    EXPECT_EQ(test::load(R"({"specVersion": "1.7"})").warnings,
              std::vector<std::string>{"CycloneDX \"1.7\" is read as if it were 1.4 to 1.6"});
}

TEST(CycloneDXReader, aPackageIsItsURLWithoutVersionAndQualifiers) {
    const std::pair<const char*, const char*> cases[] = {
        {"pkg:npm/a@1.2.3", "pkg:npm/a"},
        {"pkg:npm/%40s/a@1", "pkg:npm/%40s/a"},
        {"pkg:npm/@s/a@1", "pkg:npm/@s/a"},
        {"pkg:deb/debian/a@1?arch=amd64&x=/@", "pkg:deb/debian/a"},
        {"pkg:golang/g.org/a@v1#sub/b@c", "pkg:golang/g.org/a#sub/b@c"},
    };
    for (const auto& [url, expected] : cases) {
        EXPECT_EQ(withoutVersion(url), expected);
    }
}

}  // namespace
}  // namespace depcompare
