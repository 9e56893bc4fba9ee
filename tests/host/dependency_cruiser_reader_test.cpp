#include "formats/dependency_cruiser/dependency_cruiser_reader.h"

#include <gtest/gtest.h>

#include "host_texts.h"

namespace depcompare {
namespace {

using test::expectRead;

TEST(DependencyCruiserReader, modulesThatWereLookedIntoAreFiles) {
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
}

TEST(DependencyCruiserReader, theTypeOfADependencyIsHowItIsNeeded) {
    const auto file = [](const std::string& types) {
        return R"({"modules": [{"source": "a", "dependencies": [{"resolved": "a", "module": "./a",
                   "dependencyTypes": )" +
               types + "}]}]}";
    };
    const std::pair<const char*, const char*> cases[] = {
        {R"(["local", "import"])", "import"},
        {R"(["npm-dev", "aliased-tsconfig", "require"])", "require"},
        {R"(["type-only", "local", "import"])", "import type-only"},
        {R"(["core"])", "depends"},
        {"[]", "depends"},
    };
    for (const auto& [types, expected] : cases) {
        EXPECT_EQ(test::read(file(types)),
                  "a \"a\" [file]\n0000000 a/./a -> a [" + std::string(expected) + "]\n");
    }
}

TEST(DependencyCruiserReader, whatCannotBeReadIsRefusedInOneLine) {
    expectRead({
        {"a module without a name", R"({"modules": [{}]})", "in:1: a module without \"source\""},
        {"a dependency without an end", R"({"modules": [{"source": "a", "dependencies": [{}]}]})",
         "in:1: a dependency of \"a\" without \"resolved\""},
        {"cut off", "{\"modules\": [\n{\"source\": \"a\"},",
         "in:2: not well-formed JSON: syntax error while parsing value - unexpected end of input; "
         "expected '[', '{', or a literal"},
        {"not UTF-8", "{\"modules\": [\n{\"source\": \"\xFF\"}]}",
         "in:2: not well-formed JSON: syntax error while parsing value - invalid string: "
         "ill-formed UTF-8 byte"},
    });
}

TEST(DependencyCruiserReader, limitsHoldForJsonToo) {
    const std::string file = R"({"modules": [{"source": "a"}, {"source": "b", "k": "12345678",
        "l": [[[1]]], "dependencies": [{"resolved": "a"}, {"resolved": "a"}]}]})";
    const std::pair<Limits, const char*> cases[] = {
        {{.textBytes = 7}, "in:2: a text of more than 7 bytes (--max-text-bytes)"},
        {{.nestingDepth = 5}, "in:2: values nested deeper than 5 (--max-nesting)"},
    };
    for (const auto& [limits, expected] : cases) {
        EXPECT_EQ(test::read(file, limits), expected);
    }
    const std::string endless = "{\"modules\": [{\"unused\": \"" + std::string(100'000, 'x');
    EXPECT_EQ(test::read(endless, {.textBytes = 7}),
              "in:1: a text of more than 7 bytes (--max-text-bytes)");
}

}  // namespace
}  // namespace depcompare
