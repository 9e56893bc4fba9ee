#include "presentation/versions.h"

#include <algorithm>
#include <compare>
#include <optional>
#include <string>
#include <vector>

#include <comparisons/side.h>

namespace depcompare {

namespace {

using ::comparisons::Side;
using Text = std::u16string_view;

constexpr Text digits = u"0123456789";

bool isNumber(Text text) {
    return !text.empty() && text.find_first_not_of(digits) == Text::npos;
}

std::vector<Text> partsOf(Text text) {
    std::vector<Text> parts;
    for (;;) {
        const std::size_t end = text.find(u'.');
        parts.push_back(text.substr(0, end));
        if (end == Text::npos) {
            return parts;
        }
        text.remove_prefix(end + 1);
    }
}

/// Returns: whether dots separate identifiers as a pre-release and a build have them.
bool areIdentifiers(const std::vector<Text>& parts, bool leadingZeros) {
    constexpr Text letters = u"0123456789-ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    return std::ranges::all_of(parts, [&](Text part) {
        return !part.empty() && part.find_first_not_of(letters) == Text::npos &&
               (leadingZeros || !isNumber(part) || part == u"0" || part.front() != u'0');
    });
}

// Of any length, so that no number overflows.
std::strong_ordering orderOfNumbers(Text one, Text other) {
    one.remove_prefix(std::min(one.find_first_not_of(u'0'), one.size()));
    other.remove_prefix(std::min(other.find_first_not_of(u'0'), other.size()));
    return one.size() != other.size() ? one.size() <=> other.size() : one.compare(other) <=> 0;
}

std::strong_ordering orderOfIdentifiers(Text one, Text other) {
    if (isNumber(one) && isNumber(other)) {
        return orderOfNumbers(one, other);
    }
    // Numbers come before words.
    return isNumber(one) != isNumber(other) ? isNumber(other) <=> isNumber(one)
                                            : one.compare(other) <=> 0;
}

struct Version {
    std::vector<Text> numbers;
    std::vector<Text> preRelease;

    static std::optional<Version> of(Text text) {
        if (text.starts_with(u'v')) {
            text.remove_prefix(1);
        }
        const Text core = text.substr(0, text.find_first_of(u"-+"));
        Version version{.numbers = partsOf(core), .preRelease = {}};
        if (!std::ranges::all_of(version.numbers, isNumber)) {
            return std::nullopt;
        }
        text.remove_prefix(core.size());
        if (!text.empty() && version.numbers.size() != 3) {
            return std::nullopt;
        }
        const std::size_t plus = std::min(text.find(u'+'), text.size());
        const Text build = text.substr(plus);
        text = text.substr(0, plus);
        if (!text.empty()) {
            version.preRelease = partsOf(text.substr(1));
        }
        const bool isSound = areIdentifiers(version.preRelease, false) &&
                             (build.empty() || areIdentifiers(partsOf(build.substr(1)), true));
        return isSound ? std::optional(std::move(version)) : std::nullopt;
    }

    friend std::strong_ordering operator<=>(const Version& one, const Version& other) {
        for (std::size_t i = 0; i < std::max(one.numbers.size(), other.numbers.size()); ++i) {
            const auto order = orderOfNumbers(one.number(i), other.number(i));
            if (order != std::strong_ordering::equal) {
                return order;
            }
        }
        if (one.preRelease.empty() || other.preRelease.empty()) {
            return one.preRelease.empty() <=> other.preRelease.empty();
        }
        return std::lexicographical_compare_three_way(one.preRelease.begin(), one.preRelease.end(),
                                                      other.preRelease.begin(),
                                                      other.preRelease.end(), orderOfIdentifiers);
    }

  private:
    [[nodiscard]] Text number(std::size_t index) const {
        return index < numbers.size() ? numbers[index] : Text(u"0");
    }
};

}  // namespace

VersionChange versionChange(Text before, Text after) {
    const auto old = Version::of(before);
    const auto now = Version::of(after);
    if (!old || !now) {
        return VersionChange::other;
    }
    const auto order = *old <=> *now;
    return order < 0 ? VersionChange::up : order > 0 ? VersionChange::down : VersionChange::other;
}

VersionCounts countVersions(const PresentedTree& tree) {
    VersionCounts counts;
    for (const auto& entry : tree.entries()) {
        for (const auto& edit : tree.tellingEdits(entry.match)) {
            if (!hasBothSides(edit)) {
                ++counts.other;
                continue;
            }
            switch (versionChange(edit[Side::left]->value, edit[Side::right]->value)) {
                case VersionChange::up:
                    ++counts.up;
                    break;
                case VersionChange::down:
                    ++counts.down;
                    break;
                case VersionChange::other:
                    ++counts.other;
                    break;
            }
        }
    }
    return counts;
}

}  // namespace depcompare
