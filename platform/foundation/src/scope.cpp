#include <foundation/log/scope.h>

#include <algorithm>

namespace foundation::log {
namespace {

thread_local const Scope* innermost = nullptr;

}  // namespace

Scope::Scope(const boost::source_location& location, std::string_view signature) noexcept
    : location_(location), signature_(signature), outer_(innermost) {
    innermost = this;
}

Scope::~Scope() {
    innermost = outer_;
}

std::vector<std::string> Scope::texts() {
    std::vector<std::string> texts;
    for (const Scope* scope = innermost; scope != nullptr; scope = scope->outer_) {
        std::string text = scope->location_.file_name();
        text.append(":").append(std::to_string(scope->location_.line())).append(": ");
        texts.push_back(text.append(scope->signature_));
    }
    std::reverse(texts.begin(), texts.end());
    return texts;
}

}  // namespace foundation::log
