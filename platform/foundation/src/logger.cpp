#include <foundation/log/logger.h>

#include <atomic>
#include <cstdio>
#include <exception>
#include <map>
#include <mutex>
#include <utility>

#include <boost/log/attributes/attribute_value_impl.hpp>
#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/core/core.hpp>
#include <boost/log/expressions/message.hpp>
#include <boost/log/expressions/predicates/has_attr.hpp>
#include <boost/log/keywords/channel.hpp>
#include <boost/log/keywords/severity.hpp>
#include <boost/log/sinks/basic_sink_backend.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <boost/log/sources/severity_channel_logger.hpp>
#include <boost/make_shared.hpp>

#include <foundation/log/scope.h>

namespace foundation::log {
namespace {

namespace blog = boost::log;

constexpr const char* severityAttribute = "Severity";
constexpr const char* channelAttribute = "Channel";
constexpr const char* scopesAttribute = "Scopes";

void writeToStandardError(const Record& record) {
    std::string line(name(record.severity));
    line.append(" ").append(record.name).append(": ").append(record.message);
    while (line.back() == '\n') {
        line.pop_back();
    }
    for (char& c : line) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) {
            c = ' ';
        }
    }
    line.push_back('\n');
    std::fwrite(line.data(), 1, line.size(), stderr);
}

class SinkBackend : public blog::sinks::basic_sink_backend<blog::sinks::synchronized_feeding> {
  public:
    void consume(const blog::record_view& view) {
        Record record;
        record.name = blog::extract_or_default<std::string>(channelAttribute, view, std::string());
        record.severity =
            blog::extract_or_default<Severity>(severityAttribute, view, Severity::info);
        record.message = blog::extract_or_default<std::string>(
            blog::expressions::tag::smessage::get_name(), view, std::string());
        record.scopes = blog::extract_or_default<std::vector<std::string>>(
            scopesAttribute, view, std::vector<std::string>());
        if (sink_) {
            sink_(record);
        } else {
            writeToStandardError(record);
        }
    }

    Sink exchange(Sink sink) { return std::exchange(sink_, std::move(sink)); }

  private:
    Sink sink_;
};

using SinkFrontend = blog::sinks::synchronous_sink<SinkBackend>;

}  // namespace

std::string_view name(Severity severity) noexcept {
    switch (severity) {
        case Severity::trace:
            return "trace";
        case Severity::debug:
            return "debug";
        case Severity::info:
            return "info";
        case Severity::warning:
            return "warning";
        case Severity::error:
            return "error";
        case Severity::fatal:
            return "fatal";
    }
    return "unknown";
}

struct Logger::Channel {
    explicit Channel(const std::string& channelName)
        : name(channelName), source(blog::keywords::channel = channelName) {}

    const std::string name;
    std::atomic<Severity> threshold = Severity::warning;
    blog::sources::severity_channel_logger_mt<Severity, std::string> source;
};

struct Logger::Registry {
    Registry() : sink(boost::make_shared<SinkFrontend>()) {
        // A host's own records use other types for their severity and stay with the host's sinks.
        sink->set_filter(blog::expressions::has_attr<Severity>(severityAttribute));
        blog::core::get()->add_sink(sink);
    }

    // Never destroyed: handles stay valid in destructors that run while the process ends.
    static Registry& instance() {
        static auto& registry = *new Registry;
        return registry;
    }

    Channel& channel(std::string_view channelName) {
        const std::lock_guard lock(mutex);
        auto found = channels.find(channelName);
        if (found == channels.end()) {
            std::string owned(channelName);
            found = channels.try_emplace(owned, owned).first;
        }
        return found->second;
    }

    std::mutex mutex;
    std::map<std::string, Channel, std::less<>> channels;
    boost::shared_ptr<SinkFrontend> sink;
};

Logger Logger::get(std::string_view name) {
    return Logger(Registry::instance().channel(name));
}

void Logger::setThreshold(std::string_view name, Severity threshold) {
    Registry::instance().channel(name).threshold = threshold;
}

Sink Logger::setSink(Sink sink) {
    return Registry::instance().sink->locked_backend()->exchange(std::move(sink));
}

const std::string& Logger::name() const noexcept {
    return channel_->name;
}

bool Logger::enabled(Severity severity) const noexcept {
    return severity >= channel_->threshold.load(std::memory_order_relaxed);
}

void Logger::write(Severity severity, std::string_view message) const noexcept {
    if (!enabled(severity)) {
        return;
    }
    try {
        blog::record record = channel_->source.open_record(blog::keywords::severity = severity);
        if (!record) {
            return;
        }
        record.attribute_values().insert(blog::attribute_name(scopesAttribute),
                                         blog::attributes::make_attribute_value(Scope::texts()));
        blog::record_ostream stream(record);
        stream.write(message.data(), static_cast<std::streamsize>(message.size()));
        stream.flush();
        channel_->source.push_record(std::move(record));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "error %s: a record was lost: %s\n", name().c_str(), error.what());
    } catch (...) {
        std::fprintf(stderr, "error %s: a record was lost\n", name().c_str());
    }
}

}  // namespace foundation::log
