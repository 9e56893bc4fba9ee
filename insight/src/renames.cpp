#include <dependency/insight/renames.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <stdexcept>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "folder_tree.h"
#include "id_components.h"

namespace dependency::insight {

namespace {

// How often a true pair shows a kind of evidence. Estimates, the same for all projects.
constexpr double priorShare = 1;      // odds that a file has a partner at all
constexpr double keepsName = 0.6;     // last component
constexpr double keepsEnding = 0.95;  // if it has another last component
constexpr double keepsFolder = 0.5;
constexpr double movesWithOthers = 0.3;
constexpr double keepsProperty = 0.4;
constexpr double keepsDigest = 0.6;
constexpr double keepsNeighbours = 0.9;  // at least half of them, by weight
constexpr double digestChance = 1e-6;    // that other files have one and the same digest
constexpr double surePair = 0.8;
constexpr double likelyPair = 0.5;
constexpr double ambiguityMargin = 0.1;

// Probabilities are told to six places.
constexpr double mostOdds = 1e9;
constexpr double leastChange = 1e-8;
constexpr int mostSteps = 100;

// What makes too many candidates is no index.
constexpr std::size_t mostPairsPerKey = 1'024;
constexpr std::size_t mostNamesakes = 64;
constexpr std::size_t mostLinksOfRareNeighbour = 1'000;
constexpr int mostRounds = 8;

// What makes a folder one that moved as a whole.
constexpr std::size_t fewestMoved = 4;
constexpr double leastShareMoved = 2.0 / 3;

using Text = std::u16string_view;

std::u16string lowered(Text text) {
    std::u16string result(text);
    for (char16_t& c : result) {
        c = c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
    }
    return result;
}

bool looksLikeDigest(Text key) {
    const std::u16string lower = lowered(key);
    for (const Text word : {Text(u"checksum"), Text(u"hash"), Text(u"md5"), Text(u"digest")}) {
        if (lower.ends_with(word)) {
            return true;
        }
    }
    const auto last = lower.find_last_not_of(u"0123456789-_/");
    return last != lower.npos && Text(lower).substr(0, last + 1).ends_with(u"sha");
}

Text endingOf(Text name) {
    const auto dot = name.rfind(u'.');
    return dot == name.npos || dot == 0 ? Text() : name.substr(dot);
}

/// A property that a removed or an added file has.
struct Value {
    Number key = 0;  // in the order of the keys
    BySide<std::size_t> count;
};
using Values = std::map<graph::Property, Value>;

/// What is known of a removed or an added file before any other is looked at.
struct File {
    Number node = 0;
    Number name = 0;
    Number ending = 0;
    Number folder = 0;                         // its place in the tree
    std::vector<Values::iterator> properties;  // by key; digests left out
    std::vector<Values::iterator> digests;     // by key
};

// Returns: the value of the same key, null if there is none.
const Values::iterator* valueOfKey(const std::vector<Values::iterator>& values, Number key) {
    const auto found = std::ranges::lower_bound(
        values, key, {}, [](const auto& value) { return value->second.key; });
    return found != values.end() && (*found)->second.key == key ? &*found : nullptr;
}

/// A removed and an added file, by their places among these.
struct Candidate {
    Number left = 0;
    Number right = 0;
    double odds = 0;

    [[nodiscard]] Number on(Side side) const { return side == Side::left ? left : right; }
    friend bool operator==(const Candidate& a, const Candidate& b) {
        return a.left == b.left && a.right == b.right;
    }
};

/// How alike the neighbours of two files are, rare ones weighing more.
struct Likeness {
    double shared = 0;
    double all = 0;

    [[nodiscard]] double share() const { return all > 0 ? shared / all : 0; }
};

/// Returns: the elements with this key, of those in ascending order of keys.
template <class Element, class Key, class KeyOf>
std::span<const Element> withKey(const std::vector<Element>& sorted, const Key& key, KeyOf keyOf) {
    return {std::ranges::lower_bound(sorted, key, {}, keyOf),
            std::ranges::upper_bound(sorted, key, {}, keyOf)};
}

class RenameFinder {
  public:
    RenameFinder(const LinkGraph& graph, const RenameOptions& options)
        : graph_(graph), options_(options), partner_(graph.nodeCount(), none) {
        if (options.separator.empty()) {
            throw std::invalid_argument("renames need a separator");
        }
        for (Number node = 0; node < graph.nodeCount(); ++node) {
            if (graph.isFile(node, Side::left) && graph.isFile(node, Side::right)) {
                ++commonFiles_;
            }
            commonBefore_.push_back(static_cast<Number>(commonFiles_));
        }
        takeStated();
        forbidden_.insert(options.forbidden.begin(), options.forbidden.end());
    }

    std::vector<Rename> find() {
        readFiles();
        if (!files_.left.empty() && !files_.right.empty()) {
            countValues();
            pairUp();
        }
        moves_.clear();
        for (const Rename& rename : renames_) {
            const auto [left, right] = filesOf(rename.nodes);
            moves_.push_back({.move = moveOf(*left, *right), .files = 1, .paired = 1});
        }
        addMovesUp();
        for (Rename& rename : renames_) {
            rename.evidence = evidenceOf(rename);
        }
        std::ranges::sort(renames_, {}, &Rename::nodes);
        return std::move(renames_);
    }

  private:
    using Count = BySide<std::size_t>;
    /// Folders of either side without the components that both end in.
    using Move = std::pair<Number, Number>;
    struct MoveCount {
        Move move;
        std::size_t files = 0;   // with a partner to which it leads, or that could be by its name
        std::size_t paired = 0;  // those of the first kind
        bool isWhole = false;    // most files of a folder that is gone
    };

    void takeStated() {
        for (const NodePair& pair : options_.stated) {
            if (std::max(pair.left, pair.right) >= graph_.nodeCount() ||
                graph_.edit(pair.left) != Edit::removed || graph_.edit(pair.right) != Edit::added ||
                partner_[pair.left] != none || partner_[pair.right] != none) {
                throw std::invalid_argument("a rename pairs two nodes that are on one side each");
            }
            partner_[pair.left] = pair.right;
            partner_[pair.right] = pair.left;
            renames_.push_back({.nodes = pair, .score = 1, .stated = true, .evidence = {}});
        }
    }

    void readFiles() {
        std::vector<Text> ids;
        for (Number node = 0; node < graph_.nodeCount(); ++node) {
            if (isSearched(node) || partner_[node] != none) {
                ids.push_back(graph_.id(node));
            }
        }
        tree_ = FolderTree(ids, options_.separator);
        std::size_t next = 0;
        for (Number node = 0; node < graph_.nodeCount(); ++node) {
            if (isSearched(node) || partner_[node] != none) {
                const Side side = graph_.has(node, Side::left) ? Side::left : Side::right;
                auto& files = (partner_[node] == none ? files_ : stated_)[side];
                files.push_back(readFile(node, side));
                files.back().folder = tree_.folderOf(next++);
            }
        }
        for (Values* values : {&properties_, &digests_}) {
            Number key = 0;
            for (auto value = values->begin(); value != values->end(); ++value) {
                key +=
                    value != values->begin() && std::prev(value)->first.first != value->first.first
                        ? 1
                        : 0;
                value->second.key = key;
            }
        }
        for (auto* files : {&files_.left, &files_.right, &stated_.left, &stated_.right}) {
            for (File& file : *files) {
                for (auto* values : {&file.properties, &file.digests}) {
                    std::ranges::sort(*values, {},
                                      [](const auto& value) { return value->second.key; });
                }
            }
        }
    }

    // Returns: whether the node is a file without a partner on the other side.
    [[nodiscard]] bool isSearched(Number node) const {
        return graph_.edit(node) != Edit::common && isOpen(node) &&
               (graph_.isFile(node, Side::left) || graph_.isFile(node, Side::right));
    }

    [[nodiscard]] File readFile(Number node, Side side) {
        const auto numberOf = [](auto& numbers, Text text) {
            return numbers.try_emplace(text, static_cast<Number>(numbers.size())).first->second;
        };
        const Text name = lastComponent(graph_.id(node), options_.separator);
        File file{.node = node,
                  .name = numberOf(names_, name),
                  .ending = numberOf(endings_, endingOf(name)),
                  .properties = {},
                  .digests = {}};
        const graph::Node& content = *graph_.node(node, side);
        for (auto& key : content.getPropertyKeys()) {
            std::u16string value = content.getProperty(key);
            const bool isDigest = looksLikeDigest(key);
            graph::Property property(std::move(key), std::move(value));
            (isDigest ? file.digests : file.properties)
                .push_back(
                    (isDigest ? digests_ : properties_).try_emplace(std::move(property)).first);
        }
        return file;
    }

    void countValues() {
        nameCounts_.resize(names_.size());
        endingCounts_.resize(endings_.size());
        placeCounts_.resize(tree_.placeCount());
        below_.resize(tree_.folderCount());
        for (const Side side : sides) {
            for (const File& file : files_[side]) {
                ++endingCounts_[file.ending][side];
                ++placeCounts_[file.folder][side];
                for (const Number folder : tree_.path(file.folder)) {
                    ++below_[folder][side];
                }
                for (const auto& digest : file.digests) {
                    ++digest->second.count[side];
                }
            }
        }
        for (const Side side : sides) {
            for (Number node = 0; node < graph_.nodeCount(); ++node) {
                if (graph_.isFile(node, side)) {
                    ++allFiles_[side];
                    countInAll(node, side);
                }
            }
        }
    }

    // Counts the names and properties that matter, among all files.
    void countInAll(Number node, Side side) {
        const Text name = lastComponent(graph_.id(node), options_.separator);
        if (const auto found = names_.find(name); found != names_.end()) {
            ++nameCounts_[found->second][side];
        }
        const graph::Node& content = *graph_.node(node, side);
        for (auto& key : content.getPropertyKeys()) {
            std::u16string value = content.getProperty(key);
            const auto found = properties_.find({std::move(key), std::move(value)});
            if (found != properties_.end()) {
                ++found->second.count[side];
            }
        }
    }

    // The surest pairs of each round are evidence in the next one; at the end likely ones will do.
    void pairUp() {
        for (int round = 0;; ++round) {
            countMoves();
            weighNodes();
            std::vector<Candidate> candidates = findCandidates();
            rateCandidates(candidates);
            if (round == mostRounds || !accept(candidates, surePair)) {
                accept(candidates, likelyPair);
                return;
            }
        }
    }

    [[nodiscard]] bool isOpen(Number node) const { return partner_[node] == none; }

    // ---- Neighbours

    // Returns: the node as the right side has it, `none` if it has no counterpart there.
    [[nodiscard]] Number onRight(Number node, Side side) const {
        if (graph_.edit(node) == Edit::common) {
            return node;
        }
        const Number partner = !isOpen(node)       ? partner_[node]
                               : countsCompanions_ ? companion_[node]
                                                   : none;
        return side == Side::left || partner == none ? partner : node;
    }

    /// Calls `visit(node, as the right side has it, direction)` for the known neighbours.
    template <class Visit>
    void forEachNeighbour(Number node, Side side, Visit visit) const {
        for (const bool isDownstream : {true, false}) {
            for (const LinkEnd& end : isDownstream ? graph_.from(node) : graph_.into(node)) {
                if (end.state.on(side) && end.node != node) {
                    if (const Number known = onRight(end.node, side); known != none) {
                        visit(end.node, known, isDownstream);
                    }
                }
            }
        }
    }

    [[nodiscard]] double weightOf(Number node, bool isDownstream) const {
        return (isDownstream ? weightAsDownstream_ : weightAsUpstream_)[node];
    }

    // Weights by the number of links on both sides, equal for both names of a pair.
    void weighNodes() {
        const auto weigh = [&](bool isDownstream) {
            const auto degree = [&](Number node) {
                return isDownstream ? graph_.into(node).size() : graph_.from(node).size();
            };
            std::vector<double> weights(graph_.nodeCount());
            for (Number node = 0; node < graph_.nodeCount(); ++node) {
                const std::size_t links =
                    isOpen(node) ? degree(node) : std::max(degree(node), degree(partner_[node]));
                weights[node] = 1 / std::log2(2.0 + static_cast<double>(links));
            }
            return weights;
        };
        weightAsDownstream_ = weigh(true);
        weightAsUpstream_ = weigh(false);
    }

    // Chooses which neighbours are known, and forgets what those before weighed.
    void countCompanions(bool countsCompanions) {
        countsCompanions_ = countsCompanions;
        for (const Side side : sides) {
            totals_[side].assign(graph_.nodeCount(), -1);
            others_[side].clear();
        }
    }

    // Returns: the weight of all known neighbours.
    double totalOf(Number node, Side side) {
        double& total = totals_[side][node];
        if (total < 0) {
            total = 0;
            forEachNeighbour(node, side, [&](Number, Number known, bool isDownstream) {
                total += weightOf(known, isDownstream);
            });
        }
        return total;
    }

    /// How alike a file is to certainly other ones of its own side: to the common ones; to all if
    /// companions count, or else those that moved along would have nothing to be held against.
    ///
    /// Returns: descending.
    std::vector<double> likenessOfOthers(Number node, Side side) {
        std::unordered_map<Number, double> shared;
        forEachNeighbour(node, side, [&](Number near, Number known, bool isDownstream) {
            const auto ends = isDownstream ? graph_.into(near) : graph_.from(near);
            if (ends.size() > mostLinksOfRareNeighbour) {
                return;
            }
            for (const LinkEnd& end : ends) {
                if (end.state.on(side) && end.node != node &&
                    (graph_.edit(end.node) == Edit::common ||
                     (countsCompanions_ && graph_.isFile(end.node, side)))) {
                    shared[end.node] += weightOf(known, isDownstream);
                }
            }
        });
        std::vector<double> all;
        all.reserve(shared.size());
        const double total = totalOf(node, side);
        for (const auto& [other, weight] : shared) {
            all.push_back(weight / (total + totalOf(other, side) - weight));
        }
        std::ranges::sort(all, std::ranges::greater());
        return all;
    }

    Likeness likenessOf(Number left, Number right) {
        std::vector<std::pair<Number, bool>> ofRight;
        forEachNeighbour(right, Side::right, [&](Number, Number known, bool isDownstream) {
            ofRight.emplace_back(known, isDownstream);
        });
        std::ranges::sort(ofRight);
        Likeness likeness;
        forEachNeighbour(left, Side::left, [&](Number, Number known, bool isDownstream) {
            if (std::ranges::binary_search(ofRight, std::pair(known, isDownstream))) {
                likeness.shared += weightOf(known, isDownstream);
            }
        });
        likeness.all = totalOf(left, Side::left) + totalOf(right, Side::right) - likeness.shared;
        return likeness;
    }

    // Returns: how often files that certainly are others are as alike; guessed from the most alike one
    //          if none of them is, with care if there are few.
    [[nodiscard]] double chanceOf(double likeness, Number node, Side side) const {
        const std::vector<double>& others = others_[side].at(node);
        const auto end = std::ranges::upper_bound(others, likeness - 1e-9, std::ranges::greater());
        const double seen =
            1.0 + static_cast<double>(countsCompanions_ ? allFiles_[side] : commonFiles_);
        const double chance = (0.5 + static_cast<double>(end - others.begin())) / seen;
        if (end != others.begin()) {
            return chance;
        }
        const double most = others.empty() ? 0 : others.front();
        return std::max(chance * std::pow(std::max(most / likeness, 0.1), 4), 1 / (seen * seen));
    }

    double neighbourFactor(const File& left, const File& right) {
        if (totalOf(left.node, Side::left) == 0 || totalOf(right.node, Side::right) == 0) {
            return 1;
        }
        const double share = likenessOf(left.node, right.node).share();
        if (share == 0) {
            return 1 - keepsNeighbours;
        }
        const double chance = std::sqrt(chanceOf(share, left.node, Side::left) *
                                        chanceOf(share, right.node, Side::right));
        return std::max(keepsNeighbours * std::min(1.0, 2 * share) / chance, 1 - keepsNeighbours);
    }

    // ---- Names, folders, properties

    // Returns: the factor of one comparison, `chance` being that of other files to agree.
    static double factor(bool isEqual, double keeps, double chance) {
        chance = std::min(chance, 0.99);
        return isEqual ? std::max(1.0, keeps / chance) : (1 - keeps) / (1 - chance);
    }

    // Returns: the share of removed or of added files, whichever is greater.
    [[nodiscard]] double shareOf(const Count& count) const {
        const auto part = [&](Side side) {
            return (0.5 + static_cast<double>(count[side])) /
                   (1.0 + static_cast<double>(files_[side].size()));
        };
        return std::max(part(Side::left), part(Side::right));
    }

    // Returns: the share of the other files of a side, of all of them, likewise.
    [[nodiscard]] double shareOfAll(const Count& count) const {
        const auto part = [&](Side side) {
            return std::max(0.5, static_cast<double>(count[side]) - 0.5) /
                   (1.0 + static_cast<double>(allFiles_[side]));
        };
        return std::max(part(Side::left), part(Side::right));
    }

    [[nodiscard]] double nameFactor(const File& left, const File& right) const {
        if (left.name == right.name) {
            return factor(true, keepsName, shareOfAll(nameCounts_[left.name]));
        }
        return (1 - keepsName) * factor(left.ending == right.ending, keepsEnding,
                                        shareOf(endingCounts_[left.ending]));
    }

    [[nodiscard]] double folderFactor(const File& left, const File& right) const {
        const double chance = shareOf(placeCounts_[right.folder]);
        if (left.folder == right.folder) {
            return factor(true, keepsFolder, chance);
        }
        const Move move = moveOf(left, right);
        const std::size_t others = othersThatMoved(move, left, right);
        const double unmoved = 1 - keepsFolder - movesWithOthers;
        if (others == 0) {
            return unmoved;
        }
        // Of the files that left the folder, how many went there, and how many would by chance.
        const double all = std::max<double>(1, static_cast<double>(below_[move.first].left));
        const double share = std::min(1.0, static_cast<double>(others) / all);
        const double there = static_cast<double>(below_[move.second].right) /
                             static_cast<double>(files_.right.size());
        const double odds =
            std::max(unmoved, movesWithOthers * share / std::min(1.0, std::max(there, chance)));
        const MoveCount& count = *find(move);
        const auto paired = static_cast<double>(count.paired);
        return count.isWhole ? std::max(odds, (paired + 0.5) / std::max(1.0, all - paired)) : odds;
    }

    [[nodiscard]] Move moveOf(const File& left, const File& right) const {
        const std::size_t common = tree_.commonEnd(left.folder, right.folder);
        return {tree_.withoutEnd(left.folder, common), tree_.withoutEnd(right.folder, common)};
    }

    // Counts, per move, the files that have a partner with this move, or could by their names.
    void countMoves() {
        std::vector<std::vector<const File*>> namesakes(names_.size());
        for (const File& right : files_.right) {
            if (isOpen(right.node)) {
                namesakes[right.name].push_back(&right);
            }
        }
        const auto forEachNamesake = [&](const File& left, const auto& visit) {
            if (isOpen(left.node) && namesakes[left.name].size() <= mostNamesakes) {
                for (const File* right : namesakes[left.name]) {
                    visit(*right, moveOf(left, *right));
                }
            }
        };
        moves_.clear();
        std::vector<Move> own;
        for (const File& left : files_.left) {
            if (!isOpen(left.node)) {
                const File& right = *fileOf(partner_[left.node], Side::right);
                moves_.push_back({.move = moveOf(left, right), .files = 1, .paired = 1});
            }
            own.clear();
            forEachNamesake(left, [&](const File&, const Move& move) { own.push_back(move); });
            std::ranges::sort(own);
            own.erase(std::unique(own.begin(), own.end()), own.end());
            for (const Move& move : own) {
                moves_.push_back({.move = move, .files = 1});
            }
        }
        addMovesUp();
        for (MoveCount& count : moves_) {
            const auto all = static_cast<double>(below_[count.move.first].left);
            count.isWhole = count.files >= fewestMoved &&
                            static_cast<double>(count.files) >= leastShareMoved * all &&
                            isGone(count.move.first);
        }
        findCompanions(forEachNamesake);
    }

    void addMovesUp() {
        std::ranges::sort(moves_, {}, &MoveCount::move);
        std::size_t count = 0;
        for (const MoveCount& next : moves_) {
            if (count != 0 && moves_[count - 1].move == next.move) {
                moves_[count - 1].files += next.files;
                moves_[count - 1].paired += next.paired;
            } else {
                moves_[count++] = next;
            }
        }
        moves_.resize(count);
    }

    // Returns: whether no file in or below the folder is on both sides.
    [[nodiscard]] bool isGone(Number folder) const {
        const Text path = tree_.text(folder);
        if (path.empty()) {
            return false;
        }
        const std::u16string prefix = std::u16string(path) + options_.separator;
        const auto countUntil = [&](auto isBefore) {
            Number first = 0;
            for (Number last = graph_.nodeCount(); first != last;) {
                const Number middle = first + (last - first) / 2;
                if (isBefore(graph_.id(middle))) {
                    first = middle + 1;
                } else {
                    last = middle;
                }
            }
            return commonBefore_[first];
        };
        return countUntil([&](Text id) { return id < prefix; }) ==
               countUntil([&](Text id) { return id < prefix || id.starts_with(prefix); });
    }

    /// Pairs files below folders that moved as a whole with their namesakes at the same place, if
    /// no such move of either has as many files. It is no more than a guess.
    template <class ForEachNamesake>
    void findCompanions(ForEachNamesake forEachNamesake) {
        struct Best {
            std::size_t files = 0;
            Number node = none;
        };
        std::vector<Best> best(graph_.nodeCount());
        const auto offer = [&](Number node, const Best& offered) {
            if (offered.files > best[node].files) {
                best[node] = offered;
            } else if (offered.files == best[node].files) {
                best[node].node = none;
            }
        };
        for (const File& left : files_.left) {
            forEachNamesake(left, [&](const File& right, const Move& move) {
                if (const MoveCount& count = *find(move); count.isWhole) {
                    offer(left.node, {.files = count.files, .node = right.node});
                    offer(right.node, {.files = count.files, .node = left.node});
                }
            });
        }
        companion_.assign(graph_.nodeCount(), none);
        for (const File& left : files_.left) {
            const Number right = best[left.node].node;
            if (right != none && best[right].node == left.node) {
                companion_[left.node] = right;
                companion_[right] = left.node;
            }
        }
    }

    // Returns: null for a move that `moves_` lacks.
    [[nodiscard]] const MoveCount* find(const Move& move) const {
        const auto found = std::ranges::lower_bound(moves_, move, {}, &MoveCount::move);
        return found != moves_.end() && found->move == move ? &*found : nullptr;
    }

    [[nodiscard]] std::size_t countOf(const Move& move) const {
        const MoveCount* const found = find(move);
        return found == nullptr ? 0 : found->files;
    }

    [[nodiscard]] std::size_t othersThatMoved(const Move& move, const File& left,
                                              const File& right) const {
        const std::size_t all = countOf(move);
        const bool countsItself = left.name == right.name || partner_[left.node] == right.node;
        return all - (countsItself && all != 0 ? 1 : 0);
    }

    // Returns: the key of the digest that proves them to be one, which no file but these has.
    static std::optional<std::u16string> equalDigest(const File& left, const File& right,
                                                     const Count& counted) {
        for (const auto& digest : left.digests) {
            const auto* other = valueOfKey(right.digests, digest->second.key);
            if (other != nullptr && *other == digest && !digest->first.second.empty() &&
                digest->second.count == counted) {
                return digest->first.first;
            }
        }
        return std::nullopt;
    }

    [[nodiscard]] double propertyFactor(const File& left, const File& right) const {
        double odds = equalDigest(left, right, {1, 1}) ? keepsDigest / digestChance : 1;
        for (const auto& value : left.properties) {
            if (const auto* other = valueOfKey(right.properties, value->second.key)) {
                odds *= factor(*other == value, keepsProperty, shareOfAll(value->second.count));
            }
        }
        return odds;
    }

    // ---- Candidates

    std::vector<Candidate> findCandidates() {
        std::vector<Candidate> candidates;
        const auto cross = [&](const std::vector<Number>& left, const std::vector<Number>& right) {
            if (left.size() * right.size() <= mostPairsPerKey) {
                for (const Number a : left) {
                    for (const Number b : right) {
                        candidates.push_back({.left = a, .right = b});
                    }
                }
            }
        };
        const auto crossAll = [&](const auto& index) {
            for (const auto& [key, places] : index) {
                cross(places.left, places.right);
            }
        };
        crossAll(placesByDigest());
        crossAll(placesByNeighbour());
        addNamesakes(candidates, cross);
        std::ranges::sort(candidates, {}, [](const Candidate& candidate) {
            return std::pair(candidate.left, candidate.right);
        });
        candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
        std::erase_if(candidates, [&](const Candidate& candidate) {
            return forbidden_.contains(nodesOf(candidate));
        });
        return candidates;
    }

    [[nodiscard]] NodePair nodesOf(const Candidate& candidate) const {
        return {files_.left[candidate.left].node, files_.right[candidate.right].node};
    }

    template <class Visit>
    void forEachOpen(Visit visit) const {
        for (const Side side : sides) {
            for (Number place = 0; place < files_[side].size(); ++place) {
                if (isOpen(files_[side][place].node)) {
                    visit(side, place, files_[side][place]);
                }
            }
        }
    }

    using Places = BySide<std::vector<Number>>;

    struct Namesake {
        Number name = 0;
        Number folder = 0;
        Side side = Side::left;
        Number place = 0;
    };
    using Namesakes = std::span<const Namesake>;

    // Names that many files have are told apart by the folders that they are in.
    template <class Cross>
    void addNamesakes(std::vector<Candidate>& candidates, Cross cross) const {
        std::vector<Namesake> all;
        forEachOpen([&](Side side, Number place, const File& file) {
            all.push_back({.name = file.name, .folder = file.folder, .side = side, .place = place});
        });
        std::ranges::sort(all, {}, [](const Namesake& namesake) {
            return std::tuple(namesake.name, namesake.folder, namesake.side, namesake.place);
        });
        std::vector<Namesakes> groups;
        split(all, groups, [](const Namesake& a, const Namesake& b) { return a.name == b.name; });
        while (!groups.empty()) {
            const Namesakes group = groups.back();
            groups.pop_back();
            Places places;
            for (const Namesake& namesake : group) {
                places[namesake.side].push_back(namesake.place);
            }
            if (places.left.size() * places.right.size() <= mostPairsPerKey) {
                cross(places.left, places.right);
                continue;
            }
            const auto commonEnd = [&](const Namesake& a, const Namesake& b) {
                return tree_.commonEnd(a.folder, b.folder);
            };
            std::size_t least = none;
            for (std::size_t i = 1; i < group.size(); ++i) {
                least = std::min(least, commonEnd(group[i - 1], group[i]));
            }
            addMoved(candidates, places, least);
            split(group, groups,
                  [&](const Namesake& a, const Namesake& b) { return commonEnd(a, b) != least; });
        }
    }

    /// Divides a list between neighbours that do not belong together.
    template <class Belong>
    static void split(Namesakes list, std::vector<Namesakes>& parts, Belong belong) {
        std::size_t first = 0;
        for (std::size_t i = 1; i <= list.size(); ++i) {
            if (i == list.size() || !belong(list[i - 1], list[i])) {
                parts.push_back(list.subspan(first, i - first));
                first = i;
            }
        }
    }

    // Adds pairs of namesakes whose folders have these last components in common, and no more, if
    // others moved alike.
    void addMoved(std::vector<Candidate>& candidates, const Places& places,
                  std::size_t common) const {
        std::vector<std::pair<Number, Number>> targets;  // folder, place of the file
        for (const Number place : places.right) {
            targets.emplace_back(tree_.withoutEnd(files_.right[place].folder, common), place);
        }
        std::ranges::sort(targets);
        const auto targetOf = [](const auto& target) { return target.first; };
        for (const Number left : places.left) {
            const Number top = tree_.withoutEnd(files_.left[left].folder, common);
            const auto moves =
                withKey(moves_, top, [](const MoveCount& count) { return count.move.first; });
            if (moves.size() < targets.size()) {
                for (const MoveCount& count : moves) {
                    for (const auto& target : withKey(targets, count.move.second, targetOf)) {
                        if (count.files > 1) {
                            candidates.push_back({.left = left, .right = target.second});
                        }
                    }
                }
            } else {
                for (const auto& [to, right] : targets) {
                    if (countOf({top, to}) > 1) {
                        candidates.push_back({.left = left, .right = right});
                    }
                }
            }
        }
    }

    [[nodiscard]] std::map<const Values::value_type*, Places> placesByDigest() const {
        std::map<const Values::value_type*, Places> places;
        forEachOpen([&](Side side, Number place, const File& file) {
            for (const auto& digest : file.digests) {
                places[&*digest][side].push_back(place);
            }
        });
        return places;
    }

    [[nodiscard]] std::unordered_map<std::uint64_t, Places> placesByNeighbour() const {
        std::unordered_map<std::uint64_t, Places> places;
        forEachOpen([&](Side side, Number place, const File& file) {
            forEachNeighbour(file.node, side, [&](Number, Number known, bool isDownstream) {
                places[std::uint64_t{known} * 2 + (isDownstream ? 1 : 0)][side].push_back(place);
            });
        });
        return places;
    }

    // ---- Rating and choice

    void rateCandidates(std::vector<Candidate>& candidates) {
        const double prior =
            priorShare / static_cast<double>(std::max(files_.left.size(), files_.right.size()));
        const auto rate = [&](Candidate& candidate) {
            const File& left = files_.left[candidate.left];
            const File& right = files_.right[candidate.right];
            for (const auto& [side, node] :
                 {std::pair(Side::left, left.node), {Side::right, right.node}}) {
                if (const auto [found, added] = others_[side].try_emplace(node); added) {
                    found->second = likenessOfOthers(node, side);
                }
            }
            candidate.odds = std::max(
                candidate.odds, prior * nameFactor(left, right) * folderFactor(left, right) *
                                    neighbourFactor(left, right) * propertyFactor(left, right));
        };
        countCompanions(false);
        std::ranges::for_each(candidates, rate);
        countCompanions(true);
        for (Candidate& candidate : candidates) {
            const auto [left, right] = nodesOf(candidate);
            if (companion_[left] == right) {
                rate(candidate);
            }
        }
        countCompanions(false);
    }

    /// Takes the pairs of at least this score, greatest first, each file once.
    ///
    /// Returns: whether there was one.
    bool accept(const std::vector<Candidate>& candidates, double least) {
        const BySide<std::vector<double>> scores = scoresOf(candidates);
        std::vector<std::size_t> order;
        for (std::size_t i = 0; i < candidates.size(); ++i) {
            if (scores.left[i] >= least) {
                order.push_back(i);
            }
        }
        std::ranges::sort(order, {}, [&](std::size_t i) {
            return std::tuple(-scores.left[i], candidates[i].left, candidates[i].right);
        });
        bool isAny = false;
        for (const std::size_t i : order) {
            const NodePair pair = nodesOf(candidates[i]);
            if (isOpen(pair.left) && isOpen(pair.right)) {
                partner_[pair.left] = pair.right;
                partner_[pair.right] = pair.left;
                renames_.push_back(
                    {.nodes = pair,
                     .score = scores.left[i],
                     .ambiguous = scores.left[i] - scores.right[i] <= ambiguityMargin + 1e-9,
                     .evidence = {}});
                isAny = true;
            }
        }
        return isAny;
    }

    /// How free each candidate's file of either side is for it: 1 / (1 + the sum, over the file's
    /// other candidates, of odds times how free their other file is for them). Belief propagation: files
    /// tell each other step by step, until nothing changes.
    [[nodiscard]] BySide<std::vector<double>> freedomFor(const std::vector<Candidate>& candidates,
                                                         const std::vector<double>& odds) const {
        BySide<std::vector<double>> freedom{std::vector<double>(candidates.size(), 1),
                                            std::vector<double>(candidates.size(), 1)};
        double change = 1;
        for (int step = 0; step < mostSteps && change > leastChange; ++step) {
            BySide<std::vector<double>> sums;
            for (const Side side : sides) {
                sums[side].resize(files_[side].size());
                for (std::size_t i = 0; i < candidates.size(); ++i) {
                    sums[side][candidates[i].on(side)] += odds[i] * freedom[otherSide(side)][i];
                }
            }
            change = 0;
            for (std::size_t i = 0; i < candidates.size(); ++i) {
                const BySide<double> before{freedom.left[i], freedom.right[i]};
                for (const Side side : sides) {
                    const double ofOthers =
                        sums[side][candidates[i].on(side)] - odds[i] * before[otherSide(side)];
                    freedom[side][i] = 1 / (1 + std::max(ofOthers, 0.0));
                    change = std::max(change, std::abs(freedom[side][i] - before[side]));
                }
            }
        }
        return freedom;
    }

    // Returns: each candidate's score (left) and that of its best rival (right), negative if it has
    //          none. A rival shares one of the files.
    [[nodiscard]] BySide<std::vector<double>> scoresOf(
        const std::vector<Candidate>& candidates) const {
        std::vector<double> odds;
        odds.reserve(candidates.size());
        for (const Candidate& candidate : candidates) {
            const NodePair pair = nodesOf(candidate);
            const bool isOut = !isOpen(pair.left) || !isOpen(pair.right);
            odds.push_back(isOut ? 0 : std::min(candidate.odds, mostOdds));
        }
        const BySide<std::vector<double>> freedom = freedomFor(candidates, odds);
        BySide<std::vector<double>> scores{std::vector<double>(candidates.size(), -1),
                                           std::vector<double>(candidates.size(), -1)};
        struct Best {
            double first = -1;
            double second = -1;
        };
        BySide<std::vector<Best>> best{std::vector<Best>(files_.left.size()),
                                       std::vector<Best>(files_.right.size())};
        for (std::size_t i = 0; i < candidates.size(); ++i) {
            if (odds[i] == 0) {
                continue;
            }
            const Candidate& candidate = candidates[i];
            const double weight = odds[i] * freedom.left[i] * freedom.right[i];
            scores.left[i] = std::round(weight / (1 + weight) * 1e6) / 1e6;
            for (Best* place : {&best.left[candidate.left], &best.right[candidate.right]}) {
                if (scores.left[i] > place->first) {
                    place->second = std::exchange(place->first, scores.left[i]);
                } else {
                    place->second = std::max(place->second, scores.left[i]);
                }
            }
        }
        for (std::size_t i = 0; i < candidates.size(); ++i) {
            for (const Best& place :
                 {best.left[candidates[i].left], best.right[candidates[i].right]}) {
                const bool isFirst = scores.left[i] == place.first;
                scores.right[i] = std::max(scores.right[i], isFirst ? place.second : place.first);
            }
        }
        return scores;
    }

    // ---- Evidence, as it is told

    [[nodiscard]] RenameEvidence evidenceOf(const Rename& rename) const {
        const auto [left, right] = filesOf(rename.nodes);
        RenameEvidence evidence;
        evidence.digest = equalDigest(*left, *right, rename.stated ? Count() : Count{1, 1});
        evidence.name = left->name == right->name;
        if (left->folder != right->folder) {
            const Move move = moveOf(*left, *right);
            if (const std::size_t others = countOf(move) - 1; others != 0) {
                evidence.folder = {std::u16string(tree_.text(move.first)),
                                   std::u16string(tree_.text(move.second)), others};
            }
        }
        countNeighbours(rename.nodes, evidence);
        countProperties(*left, *right, evidence);
        return evidence;
    }

    [[nodiscard]] const File* fileOf(Number node, Side side) const {
        for (const auto* files : {&files_[side], &stated_[side]}) {
            const auto found = std::ranges::lower_bound(*files, node, {}, &File::node);
            if (found != files->end() && found->node == node) {
                return &*found;
            }
        }
        return nullptr;
    }

    [[nodiscard]] BySide<const File*> filesOf(const NodePair& nodes) const {
        return {fileOf(nodes.left, Side::left), fileOf(nodes.right, Side::right)};
    }

    void countNeighbours(const NodePair& pair, RenameEvidence& evidence) const {
        std::set<std::pair<Number, bool>> ofRight;
        forEachNeighbour(pair.right, Side::right, [&](Number, Number known, bool isDownstream) {
            ofRight.emplace(known, isDownstream);
        });
        forEachNeighbour(pair.left, Side::left, [&](Number, Number known, bool isDownstream) {
            evidence.sharedNeighbours += ofRight.contains({known, isDownstream}) ? 1 : 0;
        });
        for (const Side side : sides) {
            const Number node = side == Side::left ? pair.left : pair.right;
            for (const auto ends : {graph_.from(node), graph_.into(node)}) {
                evidence.neighbours[side] +=
                    static_cast<std::size_t>(std::ranges::count_if(ends, [&](const LinkEnd& end) {
                        return end.state.on(side) && end.node != node;
                    }));
            }
        }
    }

    static void countProperties(const File& left, const File& right, RenameEvidence& evidence) {
        evidence.properties = left.properties.size() + right.properties.size();
        for (const auto& value : left.properties) {
            if (const auto* other = valueOfKey(right.properties, value->second.key)) {
                --evidence.properties;
                evidence.equalProperties += *other == value ? 1 : 0;
            }
        }
    }

    const LinkGraph& graph_;
    const RenameOptions& options_;
    std::vector<Number> partner_;  // by node of either side
    std::set<NodePair> forbidden_;
    std::vector<Rename> renames_;
    std::size_t commonFiles_ = 0;
    std::vector<Number> commonBefore_{0};  // common files, by node that follows them

    FolderTree tree_;                   // with all files below
    BySide<std::vector<File>> files_;   // removed and added ones without a stated partner
    BySide<std::vector<File>> stated_;  // those with one
    std::map<Text, Number> names_;
    std::map<Text, Number> endings_;
    Values properties_;  // counted among all files, as are names
    Values digests_;     // counted among these files, as is all else
    BySide<std::size_t> allFiles_;
    std::vector<Count> nameCounts_;
    std::vector<Count> endingCounts_;
    std::vector<Count> placeCounts_;
    std::vector<Count> below_;  // by folder: files in it or in folders below

    // Of one round.
    std::vector<double> weightAsDownstream_;
    std::vector<double> weightAsUpstream_;
    BySide<std::vector<double>> totals_;  // by node; negative if not known yet
    BySide<std::unordered_map<Number, std::vector<double>>> others_;  // see likenessOfOthers
    std::vector<MoveCount> moves_;                                    // ascending
    std::vector<Number> companion_;                                   // by node, see findCompanions
    bool countsCompanions_ = false;                                   // among the known neighbours
};

}  // namespace

std::vector<Rename> findRenames(const LinkGraph& graph, const RenameOptions& options) {
    return RenameFinder(graph, options).find();
}

}  // namespace dependency::insight
