#include "text_cases.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <string_view>

#include <gtest/gtest.h>

namespace depcompare::test {

namespace {

std::string linesOf(const std::string& text) {
    return '\n' + text.substr(0, text.find_last_not_of('\n') + 1) + '\n';
}

bool fits(std::string_view lines, std::string_view expected) {
    constexpr std::string_view gap = "\n...\n";
    while (true) {
        const std::size_t end = expected.find(gap);
        if (!lines.starts_with(expected.substr(0, end))) {
            return false;
        }
        if (end == expected.npos) {
            return lines.size() == expected.size();
        }
        lines.remove_prefix(end);
        // The line break at the end of the gap begins what comes after it.
        expected.remove_prefix(end + gap.size() - 1);
        const std::string_view next = expected.substr(0, expected.find(gap));
        const std::size_t found =
            next.size() == expected.size() ? lines.rfind(next) : lines.find(next);
        if (found == lines.npos) {
            return false;
        }
        lines.remove_prefix(found);
    }
}

}  // namespace

std::vector<TextCase> casesIn(const std::filesystem::path& folder) {
    std::vector<TextCase> cases;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            if (line.starts_with("=== ")) {
                cases.push_back({.about = line.substr(4), .options = {}, .parts = {""}});
            } else if (line == "---") {
                cases.back().parts.emplace_back();
            } else if (line.starts_with("--") && cases.back().parts[0].empty()) {
                cases.back().options += ' ' + line;
            } else {
                cases.back().parts.back() += line + '\n';
            }
        }
    }
    for (TextCase& each : cases) {
        for (std::string& part : each.parts) {
            part.resize(std::max<std::size_t>(part.size(), 1) - 1);
        }
    }
    return cases;
}

void expectResult(const TextCase& example, const std::string& result) {
    const std::string lines = linesOf(result);
    const std::string expected = linesOf(example.parts.back());
    if (!fits(lines, expected)) {
        EXPECT_EQ(lines, expected) << example.about;
    }
}

}  // namespace depcompare::test
