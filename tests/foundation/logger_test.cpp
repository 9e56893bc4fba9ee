#include <foundation/log/logger.h>

#include <memory>
#include <stdexcept>
#include <thread>

#include <foundation/log/scope.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <boost/assert/source_location.hpp>

namespace foundation::log {
namespace {

// "name severity message [scope] [scope]" of each record.
class LoggerTest : public testing::Test {
  protected:
    LoggerTest() {
        previous_ = Logger::setSink([this](const Record& record) {
            auto& line = lines.emplace_back(record.name);
            line.append(" ").append(name(record.severity)).append(" ").append(record.message);
            for (const std::string& scope : record.scopes) {
                line.append(" [").append(scope).append("]");
            }
        });
    }
    ~LoggerTest() override { Logger::setSink(previous_); }

    std::vector<std::string> lines;

  private:
    Sink previous_;
};

TEST_F(LoggerTest, recordsPassTheThresholdOfTheirNameAndCarryTheScopesOfTheirThread) {
    const Logger before = Logger::get("a");
    Logger::setThreshold("a", Severity::error);
    before.write(Severity::warning, "below");
    Logger::get("a").write(Severity::info, "below");
    Logger::get("b").write(Severity::info, "below");
    Logger::get("b").write(Severity::warning, "at");
    {
        const Scope outer(boost::source_location("a.cpp", 7, "f"), "void f()");
        const Scope inner(boost::source_location("b.cpp", 9, "g"), "int g(char)");
        before.write(Severity::error, "two\nlines");
        std::thread([&] { before.write(Severity::fatal, "elsewhere"); }).join();
    }
    before.write(Severity::error, "after");
    Logger::setThreshold("a", Severity::warning);
    EXPECT_THAT(
        lines, testing::ElementsAre("b warning at",
                                    "a error two\nlines [a.cpp:7: void f()] [b.cpp:9: int g(char)]",
                                    "a fatal elsewhere", "a error after"));
}

TEST_F(LoggerTest, withoutASinkARecordIsOneLineOfStandardErrorAndAFailedOneIsReportedThere) {
    const Sink ours = Logger::setSink(nullptr);
    testing::internal::CaptureStderr();
    Logger::get("lines").write(Severity::warning, "one\ntwo\x1b[1m\n");
    EXPECT_FALSE(Logger::setSink([](const Record&) { throw std::runtime_error("disk full"); }));
    Logger::get("lines").write(Severity::error, "lost");
    Logger::setSink([](const Record&) { throw 1; });
    Logger::get("lines").write(Severity::error, "lost");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "warning lines: one two [1m\nerror lines: a record was lost: disk full\n"
              "error lines: a record was lost\n");
    Logger::setSink(ours);
}

TEST_F(LoggerTest, sinkThatReplacesItselfLivesToTheEndOfTheCall) {
    auto text = std::make_shared<const std::string>("alive");
    std::string seen;
    const Sink ours = Logger::setSink([text = std::move(text), &seen](const Record&) {
        (void)Logger::setSink([&seen](const Record& record) { seen += record.message; });
        seen = *text;
    });
    Logger::get("self").write(Severity::error, "replaced");
    Logger::get("self").write(Severity::error, " and gone");
    EXPECT_EQ(seen, "alive and gone");
    Logger::setSink(ours);
}

TEST_F(LoggerTest, threadsWriteWholeRecordsOneAtATime) {
    std::vector<std::jthread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([i] {
            for (int k = 0; k < 200; ++k) {
                Logger::get("thread." + std::to_string(i)).write(Severity::error, "message");
            }
        });
    }
    threads.clear();
    EXPECT_EQ(lines.size(), 800U);
    EXPECT_THAT(lines, testing::Each(testing::EndsWith(" error message")));
}

}  // namespace
}  // namespace foundation::log
