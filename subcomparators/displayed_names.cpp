#include "subcomparators/displayed_names.h"

#include <fl/i18n/locale.h>
#include <fl/i18n/message_catalog.h>
#include <fl/i18n/ustring.h>

namespace dependency::comparisons {

namespace {

std::u16string lookUp(const std::u16string& key, const std::vector<std::string>& prefixes) {
    const std::string suffix = fl::i18n::to_string(key);
    for (const std::string& prefix : prefixes) {
        try {
            return fl::i18n::MessageCatalog::get_message(fl::i18n::MessageID(prefix + suffix),
                                                         fl::i18n::Locale::global());
        } catch (...) {
            // A key that cannot be looked up, whatever the reason, is shown as it is.
        }
    }
    return key;
}

}  // namespace

const std::u16string& DisplayedNames::operator[](const std::u16string& key) {
    const auto found = names_.find(key);
    return found != names_.end() ? found->second
                                 : names_.emplace(key, lookUp(key, prefixes_)).first->second;
}

DisplayedNames DisplayedNames::ofGraphs() {
    static const std::vector<std::string> prefixes{"ORBITA:dependency:analysis:",
                                                   "VeltrinoDependencyAnalysis:Analyze:"};
    return DisplayedNames(prefixes);
}

DisplayedNames DisplayedNames::ofNodes() {
    static const std::vector<std::string> prefixes{"ORBITA:dependency:comparisons:"};
    return DisplayedNames(prefixes);
}

}  // namespace dependency::comparisons
