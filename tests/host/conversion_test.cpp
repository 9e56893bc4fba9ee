// Whatever can be read can be written, and reading that gives the same graph.
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "formats/jgf/jgf_writer.h"
#include "formats/load_graphs.h"
#include "host_texts.h"

namespace depcompare {
namespace {

std::string jgfOf(const LoadedGraph& loaded) {
    return test::written([&](Output& output) { writeJGF(*loaded.graph, output); });
}

void expectLossless(const LoadedGraph& loaded, const std::string& about) {
    const std::string written = jgfOf(loaded);
    const LoadedGraph again = test::load(written);
    // Of files this large no difference should be printed.
    EXPECT_TRUE(test::textOf(again) == test::textOf(loaded)) << about;
    EXPECT_TRUE(jgfOf(again) == written) << about;
}

TEST(Conversion, everySampleSurvivesIt) {
    std::size_t files = 0;
    for (const char* folder : {EXAMPLES, TEST_DATA}) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
            const std::string name = entry.path().filename().string();
            if (entry.is_regular_file() && !name.starts_with("true_numbers") &&
                !name.ends_with(".md") && entry.path().parent_path().filename() != "embed") {
                ++files;
                expectLossless(loadGraph(Input::open(entry.path().string()),
                                         {.selection = {.keepsBuildData = true}}, [](auto) {}),
                               name);
            }
        }
    }
    EXPECT_GE(files, 30U);
}

TEST(Conversion, oddTextsSurviveIt) {
    for (const char* file : {
             R"({"graph": {"nodes": {"\u0000\"\\\n\u20ac\ud83d\ude00": {"label": "",
                 "metadata": {"type": "", "properties": {"type": "t", "properties": "p", "": ""}}},
                 "file": {"metadata": {"type": "file"}}},
                 "edges": [{"source": "file", "target": "file", "relation": ""}],
                 "metadata": {"label": "x", "timestamp": "2024-05-06", "nodes": "y"}}})",
             "<graphml><graph><node id=' '><data key='properties'>{}</data>"
             "<data key='label'>&#xD;</data></node></graph></graphml>"}) {
        expectLossless(test::load(file), file);
    }
}

}  // namespace
}  // namespace depcompare
