// What each format makes of its particular cases; the numbers of whole samples are checked apart.
#include "formats/formats.h"

#include <string>

#include <gtest/gtest.h>

#include "formats/csv/csv_writer.h"
#include "formats/load_graphs.h"
#include "host_texts.h"
#include "input/input_error.h"

namespace depcompare {
namespace {

using test::expectRead;

std::string readAs(const std::string& format, const std::string& file) {
    try {
        auto loaded =
            loadGraph(Input::fromText("in", file), {.format = format}, [](std::string_view) {});
        return test::textOf(loaded);
    } catch (const InputError& error) {
        return error.what();
    }
}

TEST(Formats, tablesOfEdges) {
    const std::string edge = "a \"a\" [file]\nb \"b\" [file]\n0000000 a -> b [depends]\n";
    expectRead({
        {"comments, empty lines, carriage returns, a mark, other names and order",
         "\xEF\xBB\xBF# x\r\n\r\nTO,\"From\"\r\nb,a\r\n", edge},
        {"quotation marks, separators and line breaks",
         "source,target\n\"a \"\"b\"\"\",\"c,\r\nd\"\n",
         "a \"b\" \"a \"b\"\" [file]\nc,\r\nd \"c,\r\nd\" [file]\n"
         "0000000 a \"b\" -> c,\r\nd [depends]\n"},
        {"types and components", "source,type,target,upstream_component\na,t,b,p\na,,b,\n",
         "a \"a\" [file]\nb \"b\" [file]\n0000000 a -> b [depends]\n0000001 a/p -> b [t]\n"},
        {"rows without a target describe", "from,to,type,name,size\na,,lib,A,7\n\"#a\",,,,\n",
         "#a \"#a\" [file]\na \"A\" [lib] size=7\n"},
        {"tabs", "source\ttarget\na\tb\n", edge},
        {"a quotation mark too many", "source,target\na,b\"c\n",
         "in:2: quotation mark inside a field that does not begin with one"},
        {"text behind a field", "source,target\n\"a\"b,c\n", "in:2: text after a quoted field"},
        {"no end", "source,target\n\"a,b\nc", "in:3: quoted field without an end"},
        {"too few fields", "source,target,type\na,b\n", "in:2: 2 fields, but 3 in the first line"},
        {"no source", "source,target\n,b\n", "in:2: row without a source"},
    });
    EXPECT_EQ(readAs("csv", "a,b\n"), edge);
    EXPECT_EQ(readAs("csv", "a,b,c,d\n"),
              "in:1: no header with \"source\" and \"target\", or \"from\" and \"to\", and not two "
              "or three fields");
    EXPECT_EQ(readAs("csv", "a,\xFF\n"),
              "in:1: not UTF-8; convert the file, for example with iconv");
    EXPECT_EQ(
        test::load("source,target,size\na,b,7\n").warnings,
        std::vector<std::string>{"dependencies have no properties; ignored columns: \"size\""});
}

TEST(Formats, whatIsWrittenAsATableIsReadAgain) {
    const std::string table =
        "source,target,type,upstream_component,downstream_component,upstream_component_type,"
        "downstream_component_type\r\n"
        "\"#\",,file,,,,\r\n"
        "a,\"b\n\"\"\",t,p,q,r,s\r\n"
        "lib,,archive,,,,\r\n";
    const LoadedGraph loaded = test::load(table);
    EXPECT_EQ(test::written([&](Output& output) { writeCSV(*loaded.graph, output); }), table);
}

TEST(Formats, listsOfEdges) {
    expectRead({
        {"pairs, equal ones being nodes", "a b # c\n\n# x\n\tc   c\n",
         "a \"a\" [file]\nb \"b\" [file]\nc \"c\" [file]\n0000000 a -> b [depends]\n"},
        {"modules of Go", "m a.b/c@v1.2\n",
         "a.b/c \"a.b/c\" [file] version=v1.2\nm \"m\" [file]\n0000000 m -> a.b/c [depends]\n"},
        {"a module in two versions", "m c@v1\nc@v1 c@v2\n",
         "c@v1 \"c\" [file] version=v1\nc@v2 \"c\" [file] version=v2\nm \"m\" [file]\n"
         "0000000 c@v1 -> c@v2 [depends]\n0000001 m -> c@v1 [depends]\n"},
        {"one pair of words may be anything", "hello world\n",
         "in: cannot detect the format from content or file name; use --input-format"},
    });
    EXPECT_EQ(readAs("list", "a b t\na a\na a u"),
              "a \"a\" [file]\nb \"b\" [file]\n0000000 a -> b [t]\n0000001 a -> a [u]\n");
    EXPECT_EQ(readAs("list", "a b\n\na b c d\n"),
              "in:3: 4 words on a line of an edge list, expected 2 or 3");
}

TEST(Formats, membersOfTheirOwnTellFormatsOfJsonApart) {
    expectRead({
        {"node-link, whose graph is empty",
         R"({"directed": true, "graph": {"k": 1}, "nodes": [{"id": 0, "name": "a", "n": 2},
             {"id": "b", "type": "lib"}], "edges": [{"source": 0, "target": "b", "type": "t"}]})",
         "k=1\na \"a\" [file] n=2\nb \"b\" [lib]\n0000000 a -> b [t]\n"},
        {"undirected node-link",
         R"({"directed": false, "nodes": [{"id": 1}, {"id": 2}],
             "links": [{"source": 1, "target": 2}]})",
         "in:2: undirected edge between \"1\" and \"2\""},
        {"positions without IDs",
         R"({"nodes": [{"name": "a"}], "links": [{"source": 0, "target": 0}]})",
         "in:1: node without \"id\""},
        {"a foreign graph", R"({"graph": {"vertices": [1], "arcs": []}})",
         "in:1: not JSON Graph Format: no nodes and no edges, but \"vertices\", \"arcs\""},
        {"projects of nx",
         R"({"graph": {"nodes": {"p": {"name": "p", "type": "app", "data": {"root": "r"}}},
             "dependencies": {"p": [{"source": "p", "target": "npm:x", "type": "static"}]}}})",
         "npm:x \"npm:x\" [file]\np \"p\" [file] root=r type=app\n"
         "0000000 p -> npm:x [static]\n"},
        {"packages of Conan, direct dependencies only",
         R"({"graph": {"nodes": {
             "0": {"ref": "conanfile", "name": null, "label": "conanfile.py", "dependencies":
                   {"1": {"direct": "True", "build": "False"}, "2": {"direct": false}}},
             "1": {"ref": "a/1#r", "name": "a", "context": "host", "version": "1",
                   "dependencies": {"2": {"direct": true, "build": true}}},
             "2": {"ref": "a/2#r", "name": "a", "context": "build", "version": "2"}}}})",
         "a (build) \"a\" [file] context=build ref=a/2#r version=2\n"
         "a (host) \"a\" [file] context=host ref=a/1#r version=1\n"
         "conanfile.py \"conanfile.py\" [file] ref=conanfile\n"
         "0000001 a (host) -> a (build) [tool_requires]\n"
         "0000000 conanfile.py -> a (host) [requires]\n"},
        {"a list that holds another thing", R"({"a.js": ["b.js"], "c.js": [1]})",
         "in: cannot detect the format from content or file name; use --input-format"},
        {"external imports of esbuild",
         R"({"inputs": {"a.js": {"bytes": 3, "imports": [
             {"path": "fs", "kind": "require-call", "external": true}]}}, "outputs": {}})",
         "a.js \"a.js\" [file] bytes=3\nfs \"fs\" [external]\n0000000 a.js -> fs [require-call]\n"},
        {"cargo without dependencies",
         R"({"packages": [{"id": "a", "name": "a", "manifest_path": "/x"}], "resolve": null})",
         "in:1: no dependencies under \"resolve\"; run cargo metadata without --no-deps"},
        {"npm: missing and optional packages",
         R"({"name": "n", "dependencies": {"a": {"version": "1", "dependencies": {"o": {}}},
             "m": {"missing": true, "required": "^2"}}})",
         "a \"a\" [file] version=1\nm \"m\" [missing]\nn \"n\" [file]\n"
         "0000000 n -> a [depends]\n0000001 n -> m [depends]\n"},
        {"a first lock file", R"({"lockfileVersion": 1, "dependencies": {"a": {"version": "1"}}})",
         "in:1: no \"packages\", as in lockfileVersion 1; npm install --package-lock-only "
         "--lockfile-version 3 writes the file anew"},
        {"npm: packages in packages, and links",
         R"({"lockfileVersion": 3, "packages": {"": {"name": "n", "dependencies": {"a": "", "b": ""},
                                                     "optionalDependencies": {"o": ""}},
             "node_modules/a": {"version": "1", "dependencies": {"b": ""}, "dev": true},
             "node_modules/a/node_modules/b": {"version": "2"},
             "node_modules/b": {"resolved": "packages/b", "link": true},
             "packages/b": {"version": "3", "peerDependencies": {"a": ""}}}})",
         "a \"a\" [file] dev=true version=1\nb \"b\" [file] version=2\nn \"n\" [file]\n"
         "packages/b \"packages/b\" [file] version=3\n0000000 a -> b [depends]\n"
         "0000001 n -> a [depends]\n0000002 n -> packages/b [depends]\n"
         "0000003 packages/b -> a [peer]\n"},
        {"pipdeptree --json-tree",
         R"([{"key": "a", "package_name": "A", "installed_version": "1", "dependencies": [
              {"key": "b", "package_name": "b", "installed_version": "2", "dependencies": []}]}])",
         "a \"A\" [file] version=1\nb \"b\" [file] version=2\n0000000 a -> b [depends]\n"},
    });
    EXPECT_EQ(test::load(R"({"graph": {"nodes": {"a": {}}, "x": {}}, "y": 1})").warnings,
              (std::vector<std::string>{"ignored members that this format does not have: \"y\"",
                                        "ignored members of the graph that this format does not "
                                        "have: \"x\""}));
}

TEST(Formats, bothFormsOfCycloneDXAndSpdxGiveOneKindOfGraph) {
    const std::string cyclonedx =
        "bomFormat=CycloneDX\nspecVersion=1.5\ntimestamp=2024-05-06T07:08:09Z\nversion=1\n"
        "@ 2024-05-06 07:08:09\n"
        "m \"main\" [file] type=application\n"
        "pkg:npm/a \"g/a\" [file] MD5=12 k=v licenses=MIT, X OR Y purl=pkg:npm/a@1 type=library "
        "version=1\n"
        "s \"web\" [service]\n0000000 m -> pkg:npm/a [depends]\n";
    expectRead({
        {"XML",
         R"(<?xml version="1.0"?><bom xmlns="http://cyclonedx.org/schema/bom/1.5" version="1">
            <metadata><timestamp>2024-05-06T07:08:09Z</timestamp>
              <component type="application" bom-ref="m"><name>main</name></component></metadata>
            <components><component type="library" bom-ref="a"><group>g</group><name>a</name>
              <version>1</version><hashes><hash alg="MD5">12</hash></hashes>
              <licenses><license><id>MIT</id></license><expression>X OR Y</expression></licenses>
              <purl>pkg:npm/a@1</purl><properties><property name="k">v</property></properties>
              </component></components>
            <services><service bom-ref="s"><name>web</name></service></services>
            <dependencies><dependency ref="m"><dependency ref="a"/></dependency></dependencies>
            </bom>)",
         cyclonedx},
        {"JSON",
         R"({"bomFormat": "CycloneDX", "specVersion": "1.5", "version": 1,
             "metadata": {"timestamp": "2024-05-06T07:08:09Z",
                          "component": {"type": "application", "bom-ref": "m", "name": "main"}},
             "components": [{"type": "library", "bom-ref": "a", "group": "g", "name": "a",
               "version": "1", "hashes": [{"alg": "MD5", "content": "12"}], "purl": "pkg:npm/a@1",
               "licenses": [{"license": {"id": "MIT"}}, {"expression": "X OR Y"}],
               "properties": [{"name": "k", "value": "v"}]}],
             "services": [{"bom-ref": "s", "name": "web"}],
             "dependencies": [{"ref": "m", "dependsOn": ["a"]}]})",
         cyclonedx},
        {"SPDX, as GitHub wraps it",
         R"({"sbom": {"SPDXID": "SPDXRef-DOCUMENT", "spdxVersion": "SPDX-2.3", "packages": [
              {"SPDXID": "SPDXRef-a", "name": "a", "versionInfo": "1", "supplier": "NOASSERTION",
               "externalRefs": [{"referenceType": "purl", "referenceLocator": "pkg:npm/a@1"}]},
              {"SPDXID": "SPDXRef-b", "name": "b"}],
             "files": [{"SPDXID": "SPDXRef-f", "fileName": "./f",
                        "checksums": [{"algorithm": "SHA1", "checksumValue": "12"}]}],
             "relationships": [
              {"spdxElementId": "SPDXRef-a", "relatedSpdxElement": "SPDXRef-b",
               "relationshipType": "DEV_DEPENDENCY_OF"},
              {"spdxElementId": "SPDXRef-a", "relatedSpdxElement": "SPDXRef-f",
               "relationshipType": "CONTAINS"},
              {"spdxElementId": "SPDXRef-a", "relatedSpdxElement": "NONE",
               "relationshipType": "DEPENDS_ON"}]}})",
         "spdxVersion=SPDX-2.3\n./f \"./f\" [file] SHA1=12\n"
         "SPDXRef-DOCUMENT \"SPDXRef-DOCUMENT\" [document]\nb \"b\" [file]\n"
         "pkg:npm/a \"a\" [file] purl=pkg:npm/a@1 version=1\n"
         "0000001 b -> pkg:npm/a [DEV_DEPENDENCY]\n0000000 pkg:npm/a -> ./f [CONTAINS]\n"},
        {"SPDX 3", R"({"spdxVersion": "SPDX-3.0"})",
         "in:1: \"SPDX-3.0\" is not SPDX 2; only SPDX 2 in JSON is read"},
        {"no bill of materials", "<x xmlns='http://cyclonedx.org/schema/bom/1.5'>\n<bom/></x>",
         "in:1: not CycloneDX: the root element is \"x\""},
    });
}

TEST(Formats, treesOfBuildTools) {
    expectRead({
        {"Maven: what a verbose tree leaves out counts with the chosen version",
         "g:m:jar:1\n+- g:a:jar:2:compile\n|  \\- (g:b:jar:tests:1:test - omitted for conflict "
         "with 3)\n\\- g:b:jar:tests:3:test (optional)\n",
         "g:a \"g:a\" [file] type=jar version=2\n"
         "g:b \"g:b\" [file] classifier=tests type=jar version=3\n"
         "g:m \"g:m\" [file] type=jar version=1\n0000001 g:a -> g:b [test]\n"
         "0000000 g:m -> g:a [compile]\n0000002 g:m -> g:b [test optional]\n"},
        {"Maven: a build that failed",
         "[INFO] g:m:jar:1\n[INFO] \\- g:a:jar:2:compile\n[ERROR] no\n",
         "in:3: the build failed: \"[ERROR] no\""},
        {"Maven: no branch", "g:m:jar:1\n\\- g:a:jar:2:compile\nwhat\n",
         "in:3: not a line of mvn dependency:tree: \"what\""},
        {"Maven: a branch without a parent", "g:m:jar:1\n|  \\- g:a:jar:2:compile\n",
         "in:2: branch without a parent"},
        {"Gradle: chosen versions, other modules, projects and failures",
         "Project ':app'\n\nrun - x\n+--- g:a -> 2\n+--- g:b:1 -> g:c:3\n+--- g:d:1 -> project :d\n"
         "\\--- project :e (*)\n\ntest\n\\--- g:f:1 FAILED\n",
         "g:a \"g:a\" [file] version=2\ng:c \"g:c\" [file] version=3\n"
         "g:f \"g:f\" [unresolved] version=1\nproject :app \":app\" [file]\n"
         "project :d \"project :d\" [file]\nproject :e \"project :e\" [file]\n"
         "0000000 project :app -> g:a [run]\n0000001 project :app -> g:c [run]\n"
         "0000002 project :app -> project :d [run]\n0000003 project :app -> project :e [run]\n"
         "0000004 project :app -> g:f [test]\n"},
        {"Gradle: a branch without a parent", "Root project 'r'\nc\n|    \\--- g:a:1\n+--- g:a:1\n",
         "in:3: branch without a project, a configuration or a parent"},
    });
}

TEST(Formats, whatPointsToWhatIsMadeOrStandsForSeveralInDot) {
    expectRead({
        {"ninja",
         "digraph ninja {\nnode [fontsize=10, shape=box, height=0.25]\n"
         "\"0x1\" [label=\"a.c\"] \"0x2\" [label=cc] \"0x3\" [label=\"a.o\"]\n"
         "\"0x1\" -> \"0x2\" [arrowhead=none] \"0x2\" -> \"0x3\" }",
         "name=ninja\na.c \"a.c\" [file]\na.o \"a.o\" [file]\ncc \"cc\" [file]\n"
         "0000000 a.o -> cc [depends]\n0000001 cc -> a.c [depends]\n"},
        {"another graph of that name", "digraph ninja { a -> b }",
         "name=ninja\na \"a\" [file]\nb \"b\" [file]\n0000000 a -> b [depends]\n"},
        {"Bazel", R"(digraph mygraph { "//a" -> "//b\n//c" })",
         "in: the node \"//b\\n//c\" stands for several targets; bazel query --nograph:factored "
         "writes them one by one"},
    });
}

}  // namespace
}  // namespace depcompare
