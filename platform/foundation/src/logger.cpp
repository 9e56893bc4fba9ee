#include <foundation/log/logger.h>

#include <atomic>
#include <cstdio>
#include <exception>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include <foundation/log/scope.h>

namespace foundation::log {
namespace {

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
    explicit Channel(std::string_view channelName) : name(channelName) {}

    const std::string name;
    std::atomic<Severity> threshold = Severity::warning;
};

struct Logger::Registry {
    static Registry& instance();

    Channel& channel(std::string_view channelName) {
        const std::lock_guard lock(channelsMutex);
        auto found = channels.find(channelName);
        if (found == channels.end()) {
            found = channels.try_emplace(std::string(channelName), channelName).first;
        }
        return found->second;
    }

    std::mutex channelsMutex;
    std::map<std::string, Channel, std::less<>> channels;

    std::recursive_mutex sinkMutex;  // a sink may log and set another sink
    std::shared_ptr<const Sink> sink = std::make_shared<const Sink>();
};

Logger::Registry& Logger::Registry::instance() {
    // Never destroyed: handles stay valid in destructors that run while the process ends.
    static auto& registry = *new Registry;
    return registry;
}

Logger Logger::get(std::string_view name) {
    return Logger(Registry::instance().channel(name));
}

void Logger::setThreshold(std::string_view name, Severity threshold) {
    Registry::instance().channel(name).threshold = threshold;
}

Sink Logger::setSink(Sink sink) {
    Registry& registry = Registry::instance();
    auto next = std::make_shared<const Sink>(std::move(sink));
    const std::lock_guard lock(registry.sinkMutex);
    Sink previous = *registry.sink;
    registry.sink.swap(next);
    return previous;
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
        const Record record{.name = name(),
                            .severity = severity,
                            .message = std::string(message),
                            .scopes = Scope::texts()};
        Registry& registry = Registry::instance();
        const std::lock_guard lock(registry.sinkMutex);
        if (const auto sink = registry.sink; *sink) {
            (*sink)(record);
        } else {
            writeToStandardError(record);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "error %s: a record was lost: %s\n", name().c_str(), error.what());
    } catch (...) {
        std::fprintf(stderr, "error %s: a record was lost\n", name().c_str());
    }
}

}  // namespace foundation::log
