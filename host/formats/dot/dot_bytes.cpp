#include "formats/dot/dot_bytes.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>

#include <boost/locale/utf.hpp>

#include "input/input_error.h"

namespace depcompare {

int DotBytes::read(char* target, int size) noexcept {
    if (failure_) {
        return 0;
    }
    try {
        return static_cast<int>(checked(std::span(target, static_cast<std::size_t>(size))));
    } catch (...) {
        failure_ = std::current_exception();
        return 0;
    }
}

void DotBytes::rethrowFailure() const {
    if (failure_) {
        std::rethrow_exception(failure_);
    }
}

std::size_t DotBytes::checked(std::span<char> target) {
    if (taken_ == piece_.size()) {
        refill();
    }
    const std::string_view rest =
        std::string_view(piece_).substr(taken_, std::min(target.size(), piece_.size() - taken_));
    if (rest.empty()) {
        return 0;
    }
    // No more than a line, so that the parser has seen nothing after the one that it complains about.
    const std::size_t count = std::min(rest.find('\n'), rest.size() - 1) + 1;
    std::ranges::copy(rest.substr(0, count), target.begin());
    taken_ += count;
    lineRead_ += lineEnded_ ? 1 : 0;
    lineEnded_ = rest[count - 1] == '\n';
    return count;
}

void DotBytes::refill() {
    constexpr std::size_t pieceBytes = 1U << 16U;
    std::size_t added = 1;
    // A piece may hold no more than the beginning of one character.
    for (piece_.clear(); piece_.empty() && added != 0;) {
        piece_ = std::exchange(rest_, {});
        const std::size_t carried = piece_.size();
        piece_.resize(carried + pieceBytes);
        added = input_.read(std::span(piece_).subspan(carried));
        piece_.resize(carried + added);
        constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
        if (!std::exchange(begun_, true) && piece_.starts_with(byteOrderMark)) {
            piece_.erase(0, byteOrderMark.size());
        }
        check(added == 0);
    }
    taken_ = 0;
}

void DotBytes::check(bool isEnd) {
    using Utf8 = boost::locale::utf::utf_traits<char>;
    for (auto next = piece_.cbegin(); next != piece_.cend();) {
        const auto begin = next;
        const auto character = Utf8::decode(next, piece_.cend());
        if (character == boost::locale::utf::incomplete && !isEnd) {
            rest_.assign(begin, piece_.cend());
            piece_.erase(begin, piece_.cend());
            return;
        }
        if (character == boost::locale::utf::incomplete ||
            character == boost::locale::utf::illegal) {
            throw InputError(input_.name(), line_,
                             "not UTF-8; convert the file, for example with iconv");
        }
        if (character == 0) {
            throw InputError(input_.name(), line_, "zero byte in a text file");
        }
        line_ += character == '\n' ? 1 : 0;
    }
}

}  // namespace depcompare
