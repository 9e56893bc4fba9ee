#include <dependency/insight/renames.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <stdexcept>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

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

// What makes too many candidates is no index.
constexpr std::size_t mostPairsPerKey = 1'024;
constexpr std::size_t mostLinksOfRareNeighbour = 1'000;
constexpr int mostRounds = 8;

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

/// What is known of a removed or an added file before any other is looked at.
struct File {
    Number node = 0;
    Text name;
    Text ending;
    Text folder;
    std::vector<graph::Property> properties;  // by key; digests left out
    std::vector<graph::Property> digests;     // by key
};

/// Folders without the components that both end in.
std::pair<Text, Text> moveOf(Text left, Text right, Text separator) {
    while (!left.empty() && !right.empty() &&
           lastComponent(left, separator) == lastComponent(right, separator)) {
        left = folder(left, separator);
        right = folder(right, separator);
    }
    return {left, right};
}

/// A removed and an added file, by their places among these.
struct Candidate {
    Number left = 0;
    Number right = 0;
    double odds = 0;

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
            ++moves_[moveOfPair(rename.nodes)];
        }
        for (Rename& rename : renames_) {
            rename.evidence = evidenceOf(rename.nodes);
        }
        std::ranges::sort(renames_, {}, &Rename::nodes);
        return std::move(renames_);
    }

  private:
    using Count = BySide<std::size_t>;

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
        for (const Side side : sides) {
            for (Number node = 0; node < graph_.nodeCount(); ++node) {
                if (graph_.isFile(node, side) && !graph_.has(node, otherSide(side)) &&
                    partner_[node] == none) {
                    files_[side].push_back(readFile(node, side));
                }
            }
        }
    }

    [[nodiscard]] File readFile(Number node, Side side) const {
        const Text id = graph_.id(node);
        File file{.node = node,
                  .name = lastComponent(id, options_.separator),
                  .ending = {},
                  .folder = folder(id, options_.separator),
                  .properties = {},
                  .digests = {}};
        file.ending = endingOf(file.name);
        const graph::Node& content = *graph_.node(node, side);
        for (auto& key : content.getPropertyKeys()) {
            std::u16string value = content.getProperty(key);
            auto& list = looksLikeDigest(key) ? file.digests : file.properties;
            list.emplace_back(std::move(key), std::move(value));
        }
        std::ranges::sort(file.properties);
        std::ranges::sort(file.digests);
        return file;
    }

    void countValues() {
        for (const Side side : sides) {
            for (const File& file : files_[side]) {
                names_.try_emplace(file.name);
                ++endings_[file.ending][side];
                ++folders_[file.folder][side];
                for (Text top = file.folder; !top.empty(); top = folder(top, options_.separator)) {
                    ++below_[top][side];
                }
                ++below_[Text()][side];
                for (const auto& [key, value] : file.properties) {
                    values_.try_emplace({key, value});
                }
                for (const auto& [key, value] : file.digests) {
                    ++digests_[{key, value}][side];
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
        const auto count = [&](auto& counts, const auto& value) {
            if (const auto found = counts.find(value); found != counts.end()) {
                ++found->second[side];
            }
        };
        count(names_, lastComponent(graph_.id(node), options_.separator));
        const graph::Node& content = *graph_.node(node, side);
        for (const auto& key : content.getPropertyKeys()) {
            const std::u16string value = content.getProperty(key);
            count(values_, std::pair(Text(key), Text(value)));
        }
    }

    // The surest pairs of each round are evidence in the next one; at the end likely ones will do.
    void pairUp() {
        for (int round = 0;; ++round) {
            weighNodes();
            countMoves();
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
        const Edit edit = graph_.edit(node);
        return edit == Edit::common  ? node
               : side == Side::right ? (isOpen(node) ? none : node)
                                     : partner_[node];
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
        for (const Side side : sides) {
            totals_[side].assign(graph_.nodeCount(), -1);
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

    /// How alike a file is to certainly other ones: to the common files of its own side.
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
                    graph_.edit(end.node) == Edit::common) {
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
    [[nodiscard]] double chanceOf(double likeness, const std::vector<double>& others) const {
        const auto end = std::ranges::upper_bound(others, likeness - 1e-9, std::ranges::greater());
        const double seen = 1.0 + static_cast<double>(commonFiles_);
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
        const double chance = std::sqrt(chanceOf(share, others_.left[left.node]) *
                                        chanceOf(share, others_.right[right.node]));
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

    double nameFactor(const File& left, const File& right) {
        if (left.name == right.name) {
            return factor(true, keepsName, shareOfAll(names_[left.name]));
        }
        return (1 - keepsName) *
               factor(left.ending == right.ending, keepsEnding, shareOf(endings_[left.ending]));
    }

    double folderFactor(const File& left, const File& right) {
        const double chance = shareOf(folders_[right.folder]);
        if (left.folder == right.folder) {
            return factor(true, keepsFolder, chance);
        }
        const auto move = moveOf(left.folder, right.folder, options_.separator);
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
        return std::max(unmoved, movesWithOthers * share / std::min(1.0, std::max(there, chance)));
    }

    // Counts, per move, the files that have a partner with this move, or could by their names.
    void countMoves() {
        moves_.clear();
        namesakes_.clear();
        for (const File& right : files_.right) {
            if (isOpen(right.node)) {
                namesakes_[right.name].push_back(&right);
            }
        }
        for (const File& left : files_.left) {
            const auto found = namesakes_.find(left.name);
            if (!isOpen(left.node)) {
                const Text to = folder(graph_.id(partner_[left.node]), options_.separator);
                ++moves_[moveOf(left.folder, to, options_.separator)];
            } else if (found != namesakes_.end() && found->second.size() <= mostNamesakes) {
                std::set<std::pair<Text, Text>> own;
                for (const File* right : found->second) {
                    own.insert(moveOf(left.folder, right->folder, options_.separator));
                }
                for (const auto& move : own) {
                    ++moves_[move];
                }
            }
        }
    }

    [[nodiscard]] std::size_t othersThatMoved(const std::pair<Text, Text>& move, const File& left,
                                              const File& right) const {
        const auto found = moves_.find(move);
        if (found == moves_.end()) {
            return 0;
        }
        const bool countsItself = left.name == right.name || partner_[left.node] == right.node;
        return found->second - (countsItself && found->second != 0 ? 1 : 0);
    }

    // Returns: the key of the digest that proves them to be one.
    [[nodiscard]] std::optional<std::u16string> equalDigest(const File& left,
                                                            const File& right) const {
        for (const auto& digest : left.digests) {
            if (!digest.second.empty() && std::ranges::binary_search(right.digests, digest) &&
                digests_.at({digest.first, digest.second}) == Count{1, 1}) {
                return digest.first;
            }
        }
        return std::nullopt;
    }

    double propertyFactor(const File& left, const File& right) {
        double odds = equalDigest(left, right) ? keepsDigest / digestChance : 1;
        auto other = right.properties.begin();
        for (const auto& property : left.properties) {
            while (other != right.properties.end() && other->first < property.first) {
                ++other;
            }
            if (other != right.properties.end() && other->first == property.first) {
                const Count& count = values_[{property.first, property.second}];
                odds *= factor(other->second == property.second, keepsProperty, shareOfAll(count));
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
        crossAll(placesByName());
        crossAll(placesByDigest());
        crossAll(placesByNeighbour());
        addMoved(candidates);
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

    // Names that many files have are told apart by the folders that they are in.
    [[nodiscard]] std::map<Text, Places> placesByName() const {
        std::map<Text, Places> places;
        forEachOpen([&](Side side, Number place, const File& file) {
            places[file.name][side].push_back(place);
        });
        for (bool grows = true; grows;) {
            grows = false;
            std::vector<Text> tooMany;
            for (const auto& [name, both] : places) {
                if (both.left.size() * both.right.size() > mostPairsPerKey) {
                    tooMany.push_back(name);
                }
            }
            for (const Text name : tooMany) {
                const Places both = std::move(places.extract(name).mapped());
                for (const Side side : sides) {
                    for (const Number place : both[side]) {
                        const Text id = graph_.id(files_[side][place].node);
                        const Text before = id.substr(0, id.size() - name.size());
                        if (before.size() > options_.separator.size()) {
                            const Text path =
                                before.substr(0, before.size() - options_.separator.size());
                            const Text last = lastComponent(path, options_.separator);
                            places[id.substr(path.size() - last.size())][side].push_back(place);
                            grows = true;
                        }
                    }
                }
            }
        }
        return places;
    }

    [[nodiscard]] std::map<std::pair<Text, Text>, Places> placesByDigest() const {
        std::map<std::pair<Text, Text>, Places> places;
        forEachOpen([&](Side side, Number place, const File& file) {
            for (const auto& [key, value] : file.digests) {
                places[{key, value}][side].push_back(place);
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

    // Adds what moved with others if it kept its place below the folder.
    void addMoved(std::vector<Candidate>& candidates) const {
        std::map<Text, std::vector<Text>> targets;
        for (const auto& [move, count] : moves_) {
            if (count > 1) {
                targets[move.first].push_back(move.second);
            }
        }
        std::map<Text, Number> byID;
        for (Number place = 0; place < files_.right.size(); ++place) {
            byID.emplace(graph_.id(files_.right[place].node), place);
        }
        const auto addAt = [&](Number place, Text to, Text rest) {
            std::u16string id(to);
            if (!to.empty() && !rest.empty()) {
                id += options_.separator;
            }
            id += rest;
            const auto found = byID.find(id);
            if (found != byID.end() && isOpen(files_.right[found->second].node)) {
                candidates.push_back({.left = place, .right = found->second});
            }
        };
        for (Number place = 0; place < files_.left.size(); ++place) {
            if (!isOpen(files_.left[place].node)) {
                continue;
            }
            const Text id = graph_.id(files_.left[place].node);
            for (Text top = files_.left[place].folder;; top = folder(top, options_.separator)) {
                if (const auto found = targets.find(top); found != targets.end()) {
                    for (const Text to : found->second) {
                        addAt(place, to,
                              top.empty() ? id : id.substr(top.size() + options_.separator.size()));
                    }
                }
                if (top.empty()) {
                    break;
                }
            }
        }
    }

    // ---- Rating and choice

    void rateCandidates(std::vector<Candidate>& candidates) {
        const double prior =
            priorShare / static_cast<double>(std::max(files_.left.size(), files_.right.size()));
        for (const Side side : sides) {
            others_[side].clear();
        }
        for (const Candidate& candidate : candidates) {
            const auto [left, right] = nodesOf(candidate);
            for (const auto& [side, node] : {std::pair(Side::left, left), {Side::right, right}}) {
                if (const auto [found, added] = others_[side].try_emplace(node); added) {
                    found->second = likenessOfOthers(node, side);
                }
            }
        }
        for (Candidate& candidate : candidates) {
            const File& left = files_.left[candidate.left];
            const File& right = files_.right[candidate.right];
            candidate.odds = prior * nameFactor(left, right) * folderFactor(left, right) *
                             neighbourFactor(left, right) * propertyFactor(left, right);
        }
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

    // Returns: each candidate's score (left) and that of its best rival (right), negative if it has
    //          none. A rival shares one of the files.
    [[nodiscard]] BySide<std::vector<double>> scoresOf(
        const std::vector<Candidate>& candidates) const {
        std::vector<bool> isOut(candidates.size());
        BySide<std::vector<double>> sums{std::vector<double>(files_.left.size()),
                                         std::vector<double>(files_.right.size())};
        for (std::size_t i = 0; i < candidates.size(); ++i) {
            const NodePair pair = nodesOf(candidates[i]);
            isOut[i] = !isOpen(pair.left) || !isOpen(pair.right);
            if (!isOut[i]) {
                sums.left[candidates[i].left] += candidates[i].odds;
                sums.right[candidates[i].right] += candidates[i].odds;
            }
        }
        BySide<std::vector<double>> scores{std::vector<double>(candidates.size(), -1),
                                           std::vector<double>(candidates.size(), -1)};
        struct Best {
            double first = -1;
            double second = -1;
        };
        BySide<std::vector<Best>> best{std::vector<Best>(files_.left.size()),
                                       std::vector<Best>(files_.right.size())};
        for (std::size_t i = 0; i < candidates.size(); ++i) {
            if (isOut[i]) {
                continue;
            }
            const Candidate& candidate = candidates[i];
            const double all =
                1 + sums.left[candidate.left] + sums.right[candidate.right] - candidate.odds;
            scores.left[i] = std::round(candidate.odds / all * 1e6) / 1e6;
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

    RenameEvidence evidenceOf(const NodePair& pair) {
        const File left = readFile(pair.left, Side::left);
        const File right = readFile(pair.right, Side::right);
        RenameEvidence evidence;
        evidence.digest = hasDigest(left) ? equalDigest(left, right) : std::nullopt;
        evidence.name = left.name == right.name;
        if (left.folder != right.folder) {
            const auto move = moveOf(left.folder, right.folder, options_.separator);
            const std::size_t others = moves_.at(move) - 1;
            if (others != 0) {
                evidence.folder = {std::u16string(move.first), std::u16string(move.second), others};
            }
        }
        countNeighbours(pair, evidence);
        countProperties(left, right, evidence);
        return evidence;
    }

    // Returns: whether the values of the file were counted, as those of stated pairs are not.
    [[nodiscard]] bool hasDigest(const File& file) const {
        return std::ranges::all_of(file.digests, [&](const auto& digest) {
            return digests_.contains({digest.first, digest.second});
        });
    }

    [[nodiscard]] std::pair<Text, Text> moveOfPair(const NodePair& pair) const {
        return moveOf(folder(graph_.id(pair.left), options_.separator),
                      folder(graph_.id(pair.right), options_.separator), options_.separator);
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
        std::set<Text> keys;
        for (const auto* file : {&left, &right}) {
            for (const auto& [key, value] : file->properties) {
                keys.insert(key);
            }
        }
        evidence.properties = keys.size();
        evidence.equalProperties = static_cast<std::size_t>(
            std::ranges::count_if(left.properties, [&](const graph::Property& property) {
                return std::ranges::binary_search(right.properties, property);
            }));
    }

    static constexpr std::size_t mostNamesakes = 64;

    const LinkGraph& graph_;
    const RenameOptions& options_;
    std::vector<Number> partner_;  // by node of either side
    std::set<NodePair> forbidden_;
    std::vector<Rename> renames_;
    std::size_t commonFiles_ = 0;

    BySide<std::vector<File>> files_;  // removed and added ones without a stated partner
    BySide<std::size_t> allFiles_;
    std::map<Text, Count> names_;  // of all files, as are the values of properties
    std::map<Text, Count> endings_;
    std::map<Text, Count> folders_;
    std::map<Text, Count> below_;                     // by folder: files in it or in folders below
    std::map<std::pair<Text, Text>, Count> values_;   // key, value
    std::map<std::pair<Text, Text>, Count> digests_;  // likewise

    // Of one round.
    std::vector<double> weightAsDownstream_;
    std::vector<double> weightAsUpstream_;
    BySide<std::vector<double>> totals_;  // by node; negative if not known yet
    BySide<std::unordered_map<Number, std::vector<double>>> others_;  // see likenessOfOthers
    std::map<Text, std::vector<const File*>> namesakes_;
    std::map<std::pair<Text, Text>, std::size_t> moves_;
};

}  // namespace

std::vector<Rename> findRenames(const LinkGraph& graph, const RenameOptions& options) {
    return RenameFinder(graph, options).find();
}

}  // namespace dependency::insight
