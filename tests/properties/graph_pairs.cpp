#include "properties/graph_pairs.h"

#include <algorithm>
#include <array>
#include <ostream>

#include <rapidcheck.h>

namespace dependency::test {

namespace {

namespace gen = rc::gen;
using Texts = std::vector<std::string>;

// What a line is about, and what it says. The '#' of an ID becomes a number that no other line has.
struct Line {
    std::string head;
    std::string attributes;

    [[nodiscard]] std::string text(std::size_t number) const {
        std::string text = head + attributes;
        if (const auto mark = text.find('#'); mark != text.npos) {
            text.replace(mark, 1, std::to_string(number));
        }
        return text + '\n';
    }
};

rc::Gen<std::string> quoted(const Texts& texts) {
    return gen::map(gen::elementOf(texts),
                    [](const std::string& text) { return '"' + text + '"'; });
}

rc::Gen<std::string> oneOf(const Texts& texts) {
    return gen::elementOf(texts);
}

rc::Gen<std::string> nodeAttributes() {
    return gen::exec([] {
        std::string text = *oneOf(
            {" [", " [", " [", " [type=external ", " [type=lib:Library ", " [type=External "});
        text += *oneOf({"", "", "", "name=a ", "name=A ", "name=b ", "name=I ", "name=i ",
                        "name=\u0130 ", "name=\u0131x "});
        text += *oneOf({"", "", "size=1", "size=2", "size=1 owner=x", "owner=x size=1",
                        "checksum=1", "checksum=1 Checksum=2", "Checksum=2 checksum=1",
                        "timestamp=1", "\"\"=1 a:b=2"});
        return text + "]";
    });
}

rc::Gen<std::string> dependencyAttributes() {
    return gen::exec([] {
        const Texts names{"\"\"", "x", "y", "xy", "yx"};
        std::string text = *oneOf(
            {" [type=use", " [type=use", " [type=use:Use", " [type=use:usex", " [type=call"});
        text += *oneOf({" id=a#", " id=b#", " id=B#", " id=c#"});
        text += " from=" + *oneOf(names);
        text += " to=" + *oneOf(names);
        return text + *oneOf({"]", "]", " fromType=block]", " toType=block]"});
    });
}

// A line that the right graph keeps, changes, loses or gains.
struct LinePair {
    Line lines[2];
    bool on[2];
};

rc::Gen<LinePair> linePairs(const rc::Gen<std::string>& heads,
                            const rc::Gen<std::string>& attributes) {
    return gen::exec([=] {
        const std::string head = *heads;
        const std::string before = *attributes;
        const int fate = *gen::element(0, 1, 2, 3, 4, 5, 6, 7, 8, 9);
        return LinePair{.lines = {{head, before}, {head, fate < 3 ? *attributes : before}},
                        .on = {fate != 3, fate != 4}};
    });
}

rc::Gen<std::string> edges(const Texts& ids) {
    return gen::exec([ids] { return *quoted(ids) + " -> " + *quoted(ids); });
}

// A dependency or, rarely, a node on either side, with one matching key.
rc::Gen<LinePair> lineWithOneKey() {
    return gen::exec([] {
        const std::string key = *oneOf({"aabc", "abab", "cabc"});
        LinePair pair{.lines = {}, .on = {true, true}};
        for (Line& line : pair.lines) {
            const auto cut = *gen::element<std::size_t>(1, 1, 2, 2, 3, 3, 4, 5);
            line = cut > key.size()
                       ? Line{'"' + key + '"', *nodeAttributes()}
                       : Line{'"' + key.substr(0, cut) + "\" -> \"" + key.substr(cut) + '"',
                              *dependencyAttributes()};
        }
        return pair;
    });
}

rc::Gen<LinePair> anyLine(const Texts& ids) {
    const auto graphAttributes = oneOf({" [license=MIT]", " [license=BSD]", " [timestamp=x]",
                                        " [\"Analysis time\"=x]", " [owner=x license=MIT]"});
    const auto times = oneOf({" 2024-05-06 07:08:09", " 2023-01-02 03:04:05"});
    return gen::weightedOneOf<LinePair>({
        {1, linePairs(oneOf({"graph"}), graphAttributes)},
        {1, linePairs(oneOf({"@"}), times)},
        {8, linePairs(quoted(ids), nodeAttributes())},
        {16, linePairs(edges(ids), dependencyAttributes())},
    });
}

// Of the lines of the left graph the right one keeps many, in the same or in the reverse order.
rc::Gen<GraphPair> pairsOf(const rc::Gen<std::vector<LinePair>>& lines) {
    return gen::map(gen::pair(lines, gen::arbitrary<bool>()), [](const auto& generated) {
        std::array<Texts, 2> texts;
        const auto& [pairs, reverse] = generated;
        for (std::size_t i = 0; i < pairs.size(); ++i) {
            for (std::size_t side = 0; side < 2; ++side) {
                if (pairs[i].on[side]) {
                    texts[side].push_back(pairs[i].lines[side].text(i));
                }
            }
        }
        if (reverse) {
            std::ranges::reverse(texts[1]);
        }
        const auto concatenated = [](const Texts& parts) {
            std::string text;
            for (const auto& part : parts) {
                text += part;
            }
            return text;
        };
        return GraphPair{concatenated(texts[0]), concatenated(texts[1])};
    });
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const GraphPair& pair) {
    return out << "left:\n" << pair.left << "right:\n" << pair.right;
}

rc::Gen<GraphPair> distinctPairs() {
    return pairsOf(gen::container<std::vector<LinePair>>(
        anyLine({"/", "/a", "/A", "/aa", "/ab", "/b", "/ba", "/\u00e4"})));
}

rc::Gen<GraphPair> collidingPairs() {
    const auto line = gen::weightedOneOf<LinePair>(
        {{2, anyLine({"a", "c", "ca", "ab", "aab", "bc", "abc", "b", "bab", "d", "e"})},
         {2, lineWithOneKey()},
         {1, anyLine({"", "a", "aa"})}});
    // Few lines often, since few of the large graphs can be compared at all.
    const auto counts = gen::element<std::size_t>(1, 2, 2, 3, 3, 3, 4, 5, 8, 16, 32);
    return pairsOf(gen::join(gen::map(counts, [line](std::size_t count) {
        return gen::container<std::vector<LinePair>>(count, line);
    })));
}

}  // namespace dependency::test
