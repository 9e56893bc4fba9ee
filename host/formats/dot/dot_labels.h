#pragma once
// The texts of labels, without what says only how to draw them.
#include <string>
#include <string_view>

namespace depcompare {

/// Returns: the label with its escapes resolved: `\N` is `id`, a line break (`\n`) is a space, and the
///          end of an aligned line (`\l`, `\r`) is nothing, since writers break long names there. The
///          outermost braces of a record are removed.
[[nodiscard]] std::string labelText(std::string_view label, std::string_view id);

/// Returns: the text of an HTML-like label; the label itself if it is not well-formed XML.
[[nodiscard]] std::string htmlLabelText(std::string_view label);

/// Returns: the name of a port, without a point of the compass.
[[nodiscard]] std::string_view portName(std::string_view port);

}  // namespace depcompare
