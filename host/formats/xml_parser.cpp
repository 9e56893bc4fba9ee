// Exceptions must not cross the C library: they wait in `failure_` until it has returned.
#include "formats/xml_parser.h"

#include <algorithm>
#include <new>
#include <span>

#include <fmt/format.h>

#include "input/input_error.h"

namespace depcompare {

namespace {

constexpr std::size_t pieceBytes = 1U << 16U;
constexpr std::size_t mostPieceBytes = 1U << 24U;

/// Returns: how many bytes were read; fewer than asked for only at the end.
std::size_t fill(std::span<char> target, Input& input) {
    std::size_t filled = 0;
    for (std::size_t added = 1; added != 0 && filled < target.size(); filled += added) {
        added = input.read(target.subspan(filled));
    }
    return filled;
}

}  // namespace

std::optional<std::string_view> XmlAttributes::find(std::string_view name) const {
    for (const char** pair = pairs_; *pair != nullptr; pair += 2) {
        if (name == *pair) {
            return pair[1];
        }
    }
    return std::nullopt;
}

template <std::invocable Action>
void XmlParser::guarded(Action action) {
    endToken();
    if (failure_) {
        return;
    }
    try {
        action();
    } catch (...) {
        failure_ = std::current_exception();
        XML_StopParser(parser_.get(), XML_FALSE);
    }
}

XmlParser::XmlParser() : parser_(XML_ParserCreate(nullptr)) {
    if (!parser_) {
        throw std::bad_alloc();
    }
    XML_SetElementHandler(
        parser_.get(),
        [](void* self, const char* name, const char** attributes) {
            static_cast<XmlParser*>(self)->startElement(name, attributes);
        },
        [](void* self, const char* /*name*/) {
            auto& parser = *static_cast<XmlParser*>(self);
            --parser.depth_;
            parser.guarded([&] { parser.events_->end(); });
        });
    XML_SetCharacterDataHandler(parser_.get(), [](void* self, const char* text, int length) {
        auto& parser = *static_cast<XmlParser*>(self);
        parser.guarded([&] { parser.events_->text({text, static_cast<std::size_t>(length)}); });
    });
    XML_SetCommentHandler(parser_.get(), [](void* self, const char* text) {
        auto& parser = *static_cast<XmlParser*>(self);
        parser.guarded([&] { parser.events_->comment(text); });
    });
    XML_SetDefaultHandlerExpand(parser_.get(), [](void* self, const char* /*token*/, int) {
        static_cast<XmlParser*>(self)->endToken();
    });
    XML_SetEntityDeclHandler(parser_.get(), [](void* self, const char*, int, const char*, int,
                                               const char*, const char*, const char*, const char*) {
        static_cast<XmlParser*>(self)->refuse("entity declarations are not supported");
    });
    // Their defaults would be in every element, and each name is compared with all before it.
    XML_SetAttlistDeclHandler(
        parser_.get(), [](void* self, const char*, const char*, const char*, const char*, int) {
            static_cast<XmlParser*>(self)->refuse("attribute declarations are not supported");
        });
    XML_SetSkippedEntityHandler(parser_.get(), [](void* self, const char*, int) {
        static_cast<XmlParser*>(self)->refuse("undefined entity");
    });
}

void XmlParser::parse(Input& input, XmlEvents& events) {
    input_ = &input;
    events_ = &events;
    XML_SetUserData(parser_.get(), this);
    std::size_t tokenBytes = 0;  // of whole pieces in which none ended
    for (bool last = false; !last;) {
        // The library looks at the whole token again with every piece, so a long one comes in few.
        const std::size_t wanted = std::clamp(tokenBytes, pieceBytes, mostPieceBytes);
        auto* const buffer =
            static_cast<char*>(XML_GetBuffer(parser_.get(), static_cast<int>(wanted)));
        if (buffer == nullptr) {
            throw std::bad_alloc();
        }
        const std::size_t count = fill(std::span(buffer, wanted), input);
        last = count < wanted;
        tokenEnded_ = false;
        const XML_Status status =
            XML_ParseBuffer(parser_.get(), static_cast<int>(count), last ? XML_TRUE : XML_FALSE);
        if (failure_) {
            std::rethrow_exception(failure_);
        }
        if (status != XML_STATUS_OK) {
            const XML_Error error = XML_GetErrorCode(parser_.get());
            if (error == XML_ERROR_NO_MEMORY) {
                throw std::bad_alloc();
            }
            fail(fmt::format("not well-formed XML: {}", XML_ErrorString(error)));
        }
        tokenBytes = tokenEnded_ ? 0 : tokenBytes + count;
        if (tokenBytes > input.limits().textBytes) {
            fail(tooLongText(input.limits()));
        }
    }
}

std::size_t XmlParser::line() const {
    return XML_GetCurrentLineNumber(parser_.get());
}

void XmlParser::startElement(const char* name, const char** attributes) {
    guarded([&] {
        if (++depth_ > input_->limits().nestingDepth) {
            fail(tooDeep("elements", input_->limits()));
        }
        events_->start(name, XmlAttributes(attributes));
    });
}

void XmlParser::refuse(std::string_view problem) {
    guarded([&] { fail(problem); });
}

void XmlParser::fail(std::string_view problem) const {
    throw InputError(input_->name(), line(), problem);
}

}  // namespace depcompare
