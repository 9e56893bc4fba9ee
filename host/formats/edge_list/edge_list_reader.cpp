#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "draft/graph_sink.h"
#include "formats/edge_data.h"
#include "formats/first_row.h"
#include "formats/formats.h"
#include "formats/line_reader.h"
#include "input/input_error.h"

namespace depcompare {

namespace {

/// Returns: where the version of a Go module begins, at its `@`; the size for any other word.
std::size_t versionOfModule(std::string_view word) {
    const std::size_t at = word.rfind('@');
    if (at == std::string_view::npos || at == 0) {
        return word.size();
    }
    const std::string_view module = word.substr(0, at);
    std::string_view version = word.substr(at + 1);
    if (module != "go" && module != "toolchain") {
        if (!version.starts_with('v')) {
            return word.size();
        }
        version.remove_prefix(1);
    } else if (version.starts_with("go")) {
        version.remove_prefix(2);
    }
    const bool hasNumber =
        !version.empty() && std::isdigit(static_cast<unsigned char>(version.front())) != 0;
    return hasNumber ? at : word.size();
}

/// Returns: a word that only other notations have: an arrow, a branch of a tree, the name of what make
///          makes, a quoted text; nothing for a line of a list.
std::string_view foreignWord(const std::vector<std::string_view>& words) {
    constexpr std::string_view lines = "\xE2\x94";  // how characters that draw lines begin
    const auto isForeign = [&](std::string_view word) {
        return word.find_first_not_of("-=<>|+\\`:") == word.npos || word.starts_with(lines) ||
               word.starts_with('"');
    };
    if (!words.empty() && words[0].ends_with(':') && !words[0].ends_with("::")) {
        return words[0];
    }
    const auto found = std::ranges::find_if(words, isForeign);
    return found == words.end() ? std::string_view() : *found;
}

/// The data of an edge as networkx writes them: `{'weight': 1, 'type': "it's"}`.
class PythonDictionary {
  public:
    PythonDictionary(std::string_view text, const LineReader& lines) : rest_(text), lines_(lines) {}

    /// Calls `take` with the key and the value of each item; texts are without quotation marks.
    template <class Take>
    void forItems(const Take& take) {
        expect('{');
        for (skipBlanks(); !rest_.starts_with('}'); skipBlanks()) {
            const std::string key = value(":");
            expect(':');
            skipBlanks();
            take(key, value(",}"));
            skipBlanks();
            if (!rest_.starts_with('}')) {
                expect(',');
            }
        }
        expect('}');
        skipBlanks();
        if (!rest_.empty() && !rest_.starts_with('#')) {
            fail();
        }
    }

  private:
    [[noreturn]] void fail() const { lines_.fail("data that are not a dictionary of Python"); }

    void skipBlanks() {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size()));
    }

    void expect(char letter) {
        if (!rest_.starts_with(letter)) {
            fail();
        }
        rest_.remove_prefix(1);
    }

    /// Takes a text, or anything else as far as one of `ends` that is not inside brackets.
    std::string value(std::string_view ends) {
        if (rest_.starts_with('\'') || rest_.starts_with('"')) {
            return text();
        }
        std::string whole;
        std::size_t depth = 0;
        while (!rest_.empty() && (depth != 0 || ends.find(rest_.front()) == ends.npos)) {
            const char letter = rest_.front();
            if (letter == '\'' || letter == '"') {
                whole += text();
                continue;
            }
            const bool closes = std::string_view(")]}").find(letter) != std::string_view::npos;
            depth += std::string_view("([{").find(letter) != std::string_view::npos ? 1 : 0;
            if (closes && depth == 0) {
                fail();
            }
            depth -= closes ? 1 : 0;
            whole += letter;
            rest_.remove_prefix(1);
        }
        return whole;
    }

    std::string text() {
        const char quote = rest_.front();
        rest_.remove_prefix(1);
        std::string text;
        while (!rest_.starts_with(quote)) {
            if (rest_.starts_with('\\')) {
                rest_.remove_prefix(1);
                text += escaped();
            } else if (!rest_.empty()) {
                text += rest_.front();
            }
            if (rest_.empty()) {
                fail();
            }
            rest_.remove_prefix(1);
        }
        rest_.remove_prefix(1);
        return text;
    }

    /// Returns: what the letter after a backslash means.
    [[nodiscard]] char escaped() const {
        constexpr std::pair<char, char> meanings[] = {{'n', '\n'},  {'t', '\t'},  {'r', '\r'},
                                                      {'\\', '\\'}, {'\'', '\''}, {'"', '"'}};
        for (const auto& [letter, meaning] : meanings) {
            if (rest_.starts_with(letter)) {
                return meaning;
            }
        }
        lines_.fail("escape sequence in the data of an edge");
    }

    std::string_view rest_;
    const LineReader& lines_;
};

/// Returns: whether there are more than a source and a target, as networkx writes it.
bool hasDictionary(const std::vector<std::string_view>& words) {
    return words.size() > 2 && words[2].starts_with('{');
}

class EdgeListReader final : LineGraphReader {
  public:
    explicit EdgeListReader(Input& input) : LineGraphReader(input) {}

    GraphDraft read() {
        return readLines([this](std::string_view line) { readLine(line); },
                         [this] {
                             data_.warnOfIgnored("data");
                             firstRow_.warnOfHeader(sink_);
                         });
    }

  private:
    void readLine(std::string_view line) {
        const auto words = wordsOf(line);
        if (words.empty()) {
            return;
        }
        const bool hasData = hasDictionary(words);
        if (words.size() != 2 && words.size() != 3 && !hasData) {
            lines_.fail(
                fmt::format("{} words on a line of an edge list, expected 2 or 3", words.size()));
        }
        if (const auto word = foreignWord(hasData ? std::vector{words[0], words[1]} : words);
            !word.empty()) {
            lines_.fail(fmt::format("{} is not a word of an edge list, which has names and blanks",
                                    inQuotes(word)));
        }
        if (!std::exchange(hasRows_, true) && nameEnds(words[0], words[1])) {
            return;
        }
        firstRow_.take(words[0], words[1]);
        addNode(words[0]);
        addNode(words[1]);
        // To tsort, a pair of equal words is an item without a neighbour.
        if (words.size() == 2 && words[0] == words[1]) {
            return;
        }
        const std::size_t edge = sink_.addEdge(words[0], words[1]);
        if (hasData) {
            PythonDictionary(line.substr(static_cast<std::size_t>(words[2].data() - line.data())),
                             lines_)
                .forItems([&](const std::string& name, const std::string& value) {
                    data_.set(edge, name, value, name);
                });
        } else if (words.size() == 3) {
            data_.setUnnamed(edge, words[2]);
        }
    }

    void addNode(std::string_view word) {
        const auto node = sink_.addNewNode(word);
        const std::size_t at = versionOfModule(word);
        if (node && at < word.size()) {
            sink_.setName(*node, word.substr(0, at));
            sink_.setProperty(*node, "version", word.substr(at + 1));
            sink_.addIdCandidate(*node, word.substr(0, at));
        }
    }

    NamedEdgeData data_{sink_};
    FirstRow firstRow_;
    bool hasRows_ = false;
};

}  // namespace

bool looksLikeEdgeList(std::string_view firstBytes) {
    std::size_t pairs = 0;
    bool areModules = true;
    bool hasData = false;
    for (const std::string_view line : wholeLines(firstBytes)) {
        const auto words = wordsOf(line);
        if (!words.empty() && words.size() != 2 && !hasDictionary(words)) {
            return false;
        }
        if (!hasDictionary(words) && !foreignWord(words).empty()) {
            return false;
        }
        if (!words.empty()) {
            ++pairs;
            hasData |= hasDictionary(words);
            areModules = areModules && versionOfModule(words[1]) != words[1].size();
        }
    }
    // Any two words are a pair, so that one line alone says too little.
    return pairs > 1 || (pairs == 1 && (areModules || hasData));
}

GraphDraft readEdgeList(Input& input) {
    return EdgeListReader(input).read();
}

}  // namespace depcompare
