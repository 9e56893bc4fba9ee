#include <gtest/gtest.h>

#include "formats/cyclonedx/cyclonedx_reader.h"
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
        {"lists become texts that ignore their order",
         R"({"components": [{"bom-ref": "r", "name": "n",
               "licenses": [{"license": {"id": "MIT"}}, {"expression": "A OR B"},
                            {"license": {"name": "mine"}}],
               "hashes": [{"alg": "SHA-1", "content": "12"}],
               "properties": [{"name": "k:b", "value": "2"}, {"name": "k:b", "value": "1"}],
               "supplier": {"url": ["u"], "name": "x"}}], "specVersion": "1.4"})",
         "specVersion=1.4\nr \"n\" [file] SHA-1=12 k:b=1, 2 licenses=A OR B, MIT, mine "
         "supplier={\"name\":\"x\",\"url\":[\"u\"]}\n"},
        {"without a reference, by the URL, then name and version; equals are one",
         R"({"specVersion": "1.5", "components": [{"name": "a", "purl": "pkg:t/a@1?x=y"},
               {"name": "b", "version": "1"}, {"name": "b", "version": "1"}, {"name": "c"}]})",
         "specVersion=1.5\nb@1 \"b\" [file] version=1\nc \"c\" [file]\n"
         "pkg:t/a \"a\" [file] purl=pkg:t/a@1?x=y\n"},
        {"dependencies, declared before what they join",
         R"({"specVersion": "1.6", "dependencies": [
               {"ref": "b", "dependsOn": ["a", "x"], "provides": ["a"]}, {"ref": "a"}],
             "components": [{"bom-ref": "a", "name": "a"}, {"bom-ref": "b", "name": "b"}]})",
         "specVersion=1.6\na \"a\" [file]\nb \"b\" [file]\nx \"x\" [file]\n"
         "0000000 b -> a [depends]\n0000001 b -> x [depends]\n0000002 b -> a [provides]\n"},
    });
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

TEST(DependencyCruiserReader, modulesThatWereVisitedAreFiles) {
    expectRead({
        {"kinds of modules",
         R"({"modules": [{"source": "a.js", "followable": true, "valid": true, "orphan": false},
               {"source": "fs", "coreModule": true}, {"source": "x", "couldNotResolve": true},
               {"source": "p", "followable": false, "dependencyTypes": ["npm-dev"]},
               {"source": "q", "matchesDoNotFollow": true, "dependencyTypes": ["local"]}]})",
         "a.js \"a.js\" [file]\nfs \"fs\" [core]\np \"p\" [npm]\nq \"q\" [external]\n"
         "x \"x\" [unresolved]\n"},
        {"properties, and totals of the run",
         R"({"modules": [{"source": "a", "valid": false, "orphan": true, "checksum": "7",
                          "rules": [{"name": "r"}], "dependents": ["b"]}],
             "summary": {"totalCruised": 1, "optionsUsed": {"args": "x"}}})",
         "totalCruised=1\na \"a\" [file] checksum=7 orphan=true rules=[{\"name\":\"r\"}] "
         "valid=false\n"},
    });
    const std::pair<std::string, std::string> typesOfDependencies[] = {
        {R"(["local", "import"])", "import"},
        {R"(["npm-dev", "aliased-tsconfig", "require"])", "require"},
        {R"(["type-only", "local", "import"])", "import type-only"},
        {R"(["core"])", "depends"},
        {"[]", "depends"},
    };
    for (const auto& [types, expected] : typesOfDependencies) {
        EXPECT_EQ(test::read(R"({"modules": [{"source": "a", "dependencies": [{"resolved": "a",
                           "module": "./a", "dependencyTypes": )" +
                             types + "}]}]}"),
                  "a \"a\" [file]\n0000000 a/./a -> a [" + expected + "]\n");
    }
}

TEST(JGFReader, bothVersionsGiveTheSameGraph) {
    const std::string expected =
        "k=v\nlabel=L\na \"A\" [lib] n=1 p={\"q\":[2]} type=t\nb \"b\" [file]\n"
        "0000000 a/f:g -> b [call]\n0000001 a -> b [depends]\n0000002 a -> b [use]\n";
    const std::string a = R"("label": "A", "metadata": {"type": "lib", "n": 1, "p": {"q": [2]},
                             "properties": {"type": "t"}})";
    const std::string rest =
        R"("edges": [{"source": "a", "target": "b", "relation": "call", "metadata": {"type": "x",
                      "upstream_component": "f", "upstream_component_type": "g", "weight": 2}},
                     {"source": "a", "target": "b", "directed": true},
                     {"source": "a", "target": "b", "metadata": {"type": "use"}}],
           "label": "L", "metadata": {"k": "v", "label": "L"}}})";
    expectRead({
        {"version 1", R"({"graph": {"nodes": [{"id": "a", )" + a + R"(}, {"id": "b"}], )" + rest,
         expected},
        {"version 2",
         R"({"graph": {"directed": true, "nodes": {"a": {)" + a + R"(}, "b": {}}, )" + rest,
         expected},
        {"the only one of several", R"({"graphs": [{"edges": [], "nodes": {"[]": {}, "": null}}]})",
         " \"\" [file]\n[] \"[]\" [file]\n"},
        {"exact numbers",
         R"({"graph": {"metadata": {"a": 1.50, "b": 123456789012345678901234567890, "c": true,
                                    "d": null, "e": -7}}})",
         "a=1.50\nb=123456789012345678901234567890\nc=true\nd=null\ne=-7\n"},
    });
}

}  // namespace
}  // namespace depcompare
