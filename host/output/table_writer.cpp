#include "output/table_writer.h"

#include <string>

#include <fl/i18n/ustring.h>

#include "output/visible_text.h"

namespace depcompare {

void TableWriter::row(std::initializer_list<std::u16string_view> cells) {
    std::string_view separator;
    for (const std::u16string_view text : cells) {
        output_.write(separator);
        cell(text);
        separator = {&form_.separator, 1};
    }
    output_.write(form_.endOfLine);
}

void TableWriter::cell(std::u16string_view text) {
    constexpr std::u16string_view beginningsOfFormulas = u"=+-@'\uFF1D\uFF0B\uFF0D\uFF20";
    std::string written =
        form_.guarded ? fl::i18n::ustring_to_utf8(visible(text)) : fl::i18n::ustring_to_utf8(text);
    if (form_.guarded && !text.empty() && beginningsOfFormulas.find(text.front()) != text.npos) {
        written.insert(0, 1, '\'');
    }
    const bool isCommand =
        text.find(u"::") != text.npos && withoutCommand(std::u16string(text)) != text;
    const bool isPlain = !isCommand && written.find_first_of("\"\r\n") == std::string::npos &&
                         written.find(form_.separator) == std::string::npos &&
                         !written.starts_with('#');
    if (isPlain) {
        output_.write(written);
        return;
    }
    output_.write("\"");
    for (std::string_view rest = written;;) {
        const std::size_t quote = rest.find('"');
        output_.write(rest.substr(0, quote));
        if (quote == std::string_view::npos) {
            break;
        }
        output_.write("\"\"");
        rest.remove_prefix(quote + 1);
    }
    output_.write("\"");
}

}  // namespace depcompare
