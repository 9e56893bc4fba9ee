// What an input may cost: of eight times the size it takes at most 24 times the time, if only to be refused.
// In proportion would be eight times; an input that no longer fits the processor's caches was seen to take
// up to 18 times. A quadratic cost takes 64 times.
#include <ctime>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iostream>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include <depcompare/messages/messages.h>
#include <fmt/format.h>
#include <gtest/gtest.h>

#include "formats/load_graphs.h"
#include "host_texts.h"
#include "input/input.h"
#include "input/input_error.h"
#include "presentation/report.h"
#include "reports/json/json_report.h"
#include "reports/markdown/markdown_report.h"
#include "reports/page/page_report.h"
#include "reports/text/text_report.h"

namespace depcompare {
namespace {

/// Returns: the pattern as a document of a size: what is in parentheses is repeated that often, `$` being
///          the number of the time, `^` the next one, `&` the size, each after a prefix; `%` is as many x.
std::string document(std::string_view pattern, std::size_t size, const std::string& prefix) {
    std::string text;
    const auto add = [&](std::string_view part, std::size_t time) {
        for (const char letter : part) {
            if (letter == '%') {
                text.append(size, 'x');
            } else if (const auto place = std::string_view("$^&").find(letter);
                       place != part.npos) {
                text += prefix + std::to_string(std::array{time, time + 1, size}[place]);
            } else {
                text += letter;
            }
        }
    };
    while (!pattern.empty()) {
        const std::size_t begin = std::min(pattern.find('('), pattern.size());
        add(pattern.substr(0, begin), 0);
        pattern.remove_prefix(begin);
        if (!pattern.empty()) {
            const std::size_t end = pattern.find(')');
            for (std::size_t time = 0; time < size; ++time) {
                add(pattern.substr(1, end - 1), time);
            }
            pattern.remove_prefix(end + 1);
        }
    }
    return text;
}

/// What a document is for: reading it, or comparing it with itself under other IDs, with all reports.
enum class End { read, refused, reported };

struct Case {
    const char* what;
    const char* format;
    End end;
    std::size_t size;
    std::string pattern;
    std::size_t growth = 8;  // with which a document grows about eightfold
};

double cpuSeconds() {
    std::timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void writeReports(std::array<LoadedGraph, 2> inputs) {
    const Report report = makeReport(std::move(inputs), {"old", "new"}, {});
    const std::string all = test::written([&](Output& output) {
        writeJsonReport(report, output);
        writeTextReport(report, {}, output);
        writeMarkdownReport(report, mostMarkdownBytes, output);
        writePage(report, output);
    });
    EXPECT_NE(all, "");
}

double secondsOf(const Case& tried, std::size_t size) {
    const std::string left = document(tried.pattern, size, "a");
    const std::string right = document(tried.pattern, tried.end == End::reported ? size : 1, "b");
    const double before = cpuSeconds();
    try {
        auto loaded = loadGraphs({Input::fromText("old", left), Input::fromText("new", right)},
                                 {.format = tried.format}, [](std::string_view) {});
        EXPECT_NE(tried.end, End::refused) << tried.format << ": " << tried.what;
        if (tried.end == End::reported) {
            writeReports(std::move(loaded));
        }
    } catch (const InputError& error) {
        EXPECT_EQ(tried.end, End::refused)
            << tried.format << ": " << tried.what << ": " << error.what();
    }
    return cpuSeconds() - before;
}

// Other processes only add to the time: the least of some tries counts.
void expectProportion(const Case& tried) {
    constexpr double most = 24;
    constexpr double little = 0.01;
    double once = std::numeric_limits<double>::infinity();
    double more = once;
    for (int tries = 0; tries < 5; ++tries) {
        once = std::min(once, secondsOf(tried, tried.size));
        more = std::min(more, secondsOf(tried, tried.growth * tried.size));
        if (more <= most * once + little || testing::Test::HasFailure()) {
            break;
        }
    }
    std::cout << fmt::format("{:20}{:30}{:9.3f} s{:9.3f} s", tried.format, tried.what, once, more)
              << std::endl;
    EXPECT_LE(more, most * once + little) << tried.format << ": " << tried.what;
}

TEST(Cost, ofEachFormatIsInProportionToItsRecordsAndToTheLengthOfAText) {
    const std::pair<const char*, std::string> formats[] = {
        {"graphml",
         "<graphml><graph>(<node id='$'><data key='k$'>$</data></node>"
         "<edge source='$' target='$'/>\n)</graph></graphml>"},
        {"cyclonedx",
         R"j({"specVersion":"1.5","components":[({"bom-ref":"$","name":"$",)j"
         R"j("purl":"pkg:t/$@1","properties":[{"name":"k$","value":"$"}]},){"name":"n"}]})j"},
        {"cyclonedx",
         "<bom xmlns='http://cyclonedx.org/schema/bom/1.5'><components>(<component "
         "bom-ref='$'><name>$</name><purl>pkg:t/$@1</purl></component>\n)"
         "</components></bom>"},
        {"spdx",
         R"j({"spdxVersion":"SPDX-2.3","packages":[({"SPDXID":"$","name":"$","externalRefs":)j"
         R"j([{"referenceType":"purl","referenceLocator":"pkg:t/$@1"}]},){"SPDXID":"n","name":"n"}]})j"},
        {"dependency-cruiser", R"j({"modules":[({"source":"$","dependencies":[{"resolved":"$",)j"
                               R"j("dependencyTypes":["$"]}]},){"source":"n"}]})j"},
        {"esbuild", R"j({"inputs":{("$":{"bytes":1,"imports":[{"path":"$","kind":"k$"}]},))j"
                    R"j("n":{"imports":[]}},"outputs":{}})j"},
        {"nx", R"j({"graph":{"nodes":{("$":{"name":"$","type":"lib","data":{"root":"$"}},))j"
               R"j("n":{"name":"n","type":"lib","data":{}}},"dependencies":{}}})j"},
        {"npm-ls", R"j({"name":"n","dependencies":{("$":{"version":"$"},)"n":{}}})j"},
        {"package-lock", R"j({"lockfileVersion":3,"packages":{("node_modules/$":{"version":"$",)j"
                         R"j("dependencies":{"$":"1"}},)"":{"name":"n"}}})j"},
        {"cargo",
         R"j({"version":1,"packages":[({"name":"$","version":"$","id":"$"},))j"
         R"j({"name":"n","version":"1","id":"n"}],"resolve":{"nodes":[{"id":"n","deps":[]}]}})j"},
        {"pipdeptree", R"j([({"package":{"key":"$","package_name":"$","installed_version":"$"},)j"
                       R"j("dependencies":[]},){"package":{"key":"n"},"dependencies":[]}])j"},
        {"conan",
         R"j({"graph":{"nodes":{("$":{"ref":"$/1","name":"$","version":"$","dependencies":{}},))j"
         R"j("n":{"ref":"n/1","name":"n","dependencies":{}}}}})j"},
        {"maven-json",
         R"j({"groupId":"g","artifactId":"r","version":"1","children":[({"groupId":"g",)j"
         R"j("artifactId":"$","version":"$"},){"groupId":"g","artifactId":"n","version":"1"}]})j"},
        {"maven-tree", "g:r:jar:1\n(+- g:$:jar:$:compile\n)"},
        {"gradle", "Root project 'r'\n\nc - d.\n(+--- g:$:$\n)"},
        {"node-link",
         R"j({"directed":true,"nodes":[({"id":"$","k$":"$"},){"id":"n"}],"links":[]})j"},
        {"jgf", R"j({"graph":{"nodes":{("$":{"label":"$","metadata":{"k$":"$"}},)"n":{}}}})j"},
        {"madge", R"j({("$":["$"],)"n":[]})j"},
        {"dot", "digraph {\n(\"$\" [k$=\"$\"]; \"$\" -> \"$\" [k$=1]\n)}"},
        {"csv", "source,target,type\n($,\"$\",$\n)"},
        {"tsv", "source\ttarget\ttype\n($\t$\t$\n)"},
        {"list", "($ $ {'k$': '$'}\n)"},
    };
    for (const auto& [format, pattern] : formats) {
        expectProportion({"records", format, End::read, 10'000, pattern});
        std::string one = pattern;
        std::erase_if(one, [](char letter) { return letter == '(' || letter == ')'; });
        std::ranges::replace(one, '$', '%');
        expectProportion({"long texts", format, End::read, 300'000, one});
    }
}

TEST(Cost, ofHostileTextsIsInProportion) {
    const std::string jgf = R"j({"graph":{"nodes":{"a":{"metadata":{"x":)j";
    const Case cases[] = {
        {"comment", "graphml", End::read, 1'000'000, "<!--%--><graphml><graph/></graphml>"},
        {"processing instruction", "graphml", End::read, 1'000'000,
         "<?p %?><graphml><graph/></graphml>"},
        {"name of an element", "graphml", End::read, 1'000'000, "<graphml><graph/><%/></graphml>"},
        {"attribute without an end", "graphml", End::refused, 1'000'000, "<graphml a='%"},
        {"attributes of one element", "graphml", End::read, 10'000,
         "<graphml ($='' )><graph/></graphml>"},
        {"declared attributes", "graphml", End::refused, 10'000,
         "<!DOCTYPE graphml [(<!ATTLIST node $ CDATA 'x'>)]><graphml/>"},
        {"defaults of nodes", "graphml", End::refused, 3'000,
         "<graphml>(<key id='$' for='node'><default>x</default></key>)<graph>(<node "
         "id='$'/>)</graph></graphml>"},
        {"elements in elements", "graphml", End::refused, 100'000, "<graphml>(<a>)"},
        {"ignored elements", "graphml", End::read, 100'000,
         "<graphml><graph>(<hyperedge/>)</graph></graphml>"},
        {"escapes", "jgf", End::read, 100'000, jgf + R"j("(\u0041)"}}}}})j"},
        {"number", "jgf", End::read, 100'000, jgf + "1(1)}}}}}"},
        {"blanks", "jgf", End::read, 1'000'000, jgf + "( )1}}}}}"},
        {"text without an end", "jgf", End::refused, 1'000'000, jgf + "\"%"},
        {"members of one object", "jgf", End::read, 1'000, jgf + R"j(1(, "$": 1)}}}}})j"},
        {"ignored members", "jgf", End::read, 50'000, R"j({("$": 1, )"graph": {}})j"},
        {"values in values", "jgf", End::refused, 100'000, jgf + "([)"},
        {"comment", "dot", End::read, 1'000'000, "digraph { /*%*/ a }"},
        {"line for the preprocessor", "dot", End::read, 1'000'000, "digraph {\n#%\n a }"},
        {"markup", "dot", End::read, 1'000'000, "digraph { a [label=<%>] }"},
        {"number", "dot", End::read, 100'000, "digraph { 1(1) }"},
        {"escapes", "dot", End::read, 500'000, "digraph { \"(\\\")\" }"},
        {"joined texts", "dot", End::read, 100'000, "digraph { \"\"( + \"x\") }"},
        {"text without an end", "dot", End::refused, 1'000'000, "digraph { \"%"},
        {"attributes of one node", "dot", End::read, 1'000, "digraph { a [($=1 )] }"},
        {"defaults of nodes", "dot", End::refused, 3'000, "digraph { node [($=1 )] (n$ )}"},
        {"defaults in subgraphs", "dot", End::read, 5'000,
         "digraph { (subgraph $ { node [$=1] n$ }\n)}"},
        {"edges between groups", "dot", End::refused, 1'000, "digraph { {(a$ )} -> {(b$ )} }"},
        {"graphs in graphs", "dot", End::refused, 100'000, "digraph {({)"},
        {"cell of many lines", "csv", End::read, 300'000, "source,target\na,\"(x\n)\"\n"},
        {"columns", "csv", End::read, 50'000, "source,target(,$)\na,b(,1)\n"},
        {"data of one edge", "list", End::read, 50'000, "a b {('$': 1, )}\n"},
    };
    for (const Case& tried : cases) {
        expectProportion(tried);
    }
}

TEST(Cost, ofReportsIsInProportionForGraphsOfAllShapes) {
    messages::registerMessages();
    std::string deep;
    for (int file = 0; file < 50; ++file) {
        deep += fmt::format("$/(d/){}.c hub\n", file);
    }
    const Case cases[] = {
        {"star, outwards", "list", End::reported, 1'000, "(hub $\n)"},
        {"star, inwards", "list", End::reported, 1'000, "($ hub\n)"},
        {"pairs", "list", End::reported, 1'000, "($/x $/y\n)"},
        {"chain", "list", End::reported, 1'000, "($ ^\n)"},
        {"cycle", "list", End::reported, 1'000, "($ ^\n)& $\n"},
        {"clique", "dot", End::reported, 30, "digraph { {($ )} -> {($ )} }", 3},
        {"dependencies of one pair", "csv", End::reported, 2'000, "source,target,type\n(u,v,$\n)"},
        {"files alone", "madge", End::reported, 2'000, R"j({("$": [],)"": []})j"},
        {"properties of one file", "graphml", End::reported, 1'000,
         "<graphml><graph><node id='n'>(<data key='$'>1</data>)</node></graph></graphml>"},
        {"folders in folders", "list", End::reported, 1'000, deep},
        {"long texts", "graphml", End::reported, 50'000,
         "<graphml><graph><data key='k'>%$</data><node id='x%$'/><node id='y%'><data key='k'>%$"
         "</data><data key='%'>$</data></node><edge source='y%' target='x%$'><data key='type'>%$"
         "</data><data key='upstream_component'>%$</data></edge></graph></graphml>"},
    };
    for (const Case& tried : cases) {
        expectProportion(tried);
    }
}

}  // namespace
}  // namespace depcompare
