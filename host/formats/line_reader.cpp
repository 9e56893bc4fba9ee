#include "formats/line_reader.h"

#include <algorithm>

#include <boost/locale/utf.hpp>

#include "input/input_error.h"

namespace depcompare {

namespace {

constexpr std::size_t pieceBytes = 1U << 16U;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool isUtf8(std::string_view text) {
    using Utf8 = boost::locale::utf::utf_traits<char>;
    for (const char* next = text.data(); next != text.data() + text.size();) {
        if (!boost::locale::utf::is_valid_codepoint(
                Utf8::decode(next, text.data() + text.size()))) {
            return false;
        }
    }
    return true;
}

}  // namespace

LineReader::LineReader(Input& input, std::optional<std::size_t> longest)
    : input_(input),
      longest_(longest.value_or(input.limits().textBytes * 4 + pieceBytes)),
      piece_(pieceBytes) {}

std::optional<std::string_view> LineReader::next() {
    text_.clear();
    bool ends = false;
    while (!ends && (position_ != end_ || refill())) {
        const auto* const begin = piece_.data() + position_;
        const auto* const last = piece_.data() + end_;
        const auto* const feed = std::find(begin, last, '\n');
        text_.append(begin, feed);
        ends = feed != last;
        position_ += static_cast<std::size_t>(feed - begin) + (ends ? 1 : 0);
        if (text_.size() > longest_) {
            ++line_;
            fail(tooLongText(input_.limits()));
        }
    }
    if (!ends && text_.empty()) {
        return std::nullopt;
    }
    if (++line_ == 1 && text_.starts_with(byteOrderMark)) {
        text_.erase(0, byteOrderMark.size());
    }
    if (text_.find('\0') != std::string::npos) {
        fail("zero byte in a text file");
    }
    if (!isUtf8(text_)) {
        fail("not UTF-8; convert the file, for example with iconv");
    }
    return text_;
}

void LineReader::fail(std::string_view problem) const {
    throw InputError(input_.name(), line_, problem);
}

bool LineReader::refill() {
    position_ = 0;
    end_ = input_.read(piece_);
    return end_ != 0;
}

std::vector<std::string_view> wholeLines(std::string_view firstBytes) {
    constexpr std::size_t mostPeeked = 1U << 16U;
    const bool isAll = firstBytes.size() < mostPeeked;
    if (firstBytes.starts_with(byteOrderMark)) {
        firstBytes.remove_prefix(byteOrderMark.size());
    }
    std::vector<std::string_view> lines;
    while (!firstBytes.empty()) {
        const std::size_t feed = firstBytes.find('\n');
        if (feed == std::string_view::npos && !isAll) {
            break;
        }
        lines.push_back(withoutReturn(firstBytes.substr(0, feed)));
        firstBytes.remove_prefix(std::min(feed, firstBytes.size() - 1) + 1);
    }
    return lines;
}

std::vector<std::string_view> wordsOf(std::string_view line) {
    constexpr std::string_view blanks = " \t\r";
    std::vector<std::string_view> words;
    for (std::size_t begin = line.find_first_not_of(blanks);
         begin != std::string_view::npos && line[begin] != '#';
         begin = line.find_first_not_of(blanks)) {
        line.remove_prefix(begin);
        const std::size_t end = std::min(line.find_first_of(blanks), line.size());
        words.push_back(line.substr(0, end));
        line.remove_prefix(end);
    }
    return words;
}

std::string_view withoutReturn(std::string_view line) {
    return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

}  // namespace depcompare
