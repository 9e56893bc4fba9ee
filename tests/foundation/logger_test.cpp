#include <foundation/log/logger.h>

#include <stdexcept>
#include <thread>

#include <foundation/log/scope.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <boost/assert/source_location.hpp>

namespace foundation::log {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LoggerTest : public testing::Test {
  protected:
    LoggerTest() {
        previous_ = Logger::setSink([this](const Record& record) { records_.push_back(record); });
    }
    ~LoggerTest() override { Logger::setSink(previous_); }

    [[nodiscard]] std::vector<std::string> messages() const {
        std::vector<std::string> messages;
        for (const Record& record : records_) {
            messages.push_back(record.message);
        }
        return messages;
    }

    std::vector<Record> records_;

  private:
    Sink previous_;
};

TEST_F(LoggerTest, thresholdOfANameHoldsForItsHandlesAndForNoOther) {
    const Logger before = Logger::get("threshold.a");
    EXPECT_FALSE(before.enabled(Severity::info));
    EXPECT_TRUE(before.enabled(Severity::warning));

    Logger::setThreshold("threshold.a", Severity::error);
    EXPECT_FALSE(before.enabled(Severity::warning));
    EXPECT_TRUE(Logger::get("threshold.a").enabled(Severity::error));
    EXPECT_TRUE(Logger::get("threshold.b").enabled(Severity::warning));

    before.write(Severity::warning, "below");
    before.write(Severity::error, "at");
    before.write(Severity::fatal, "above");
    EXPECT_THAT(messages(), ElementsAre("at", "above"));
    Logger::setThreshold("threshold.a", Severity::warning);
}

TEST_F(LoggerTest, recordCarriesNameSeverityWholeMessageAndTheScopesOfItsThread) {
    const Logger logger = Logger::get("scopes");
    {
        const Scope outer(boost::source_location("a.cpp", 7, "f"), "void f()");
        const Scope inner(boost::source_location("b.cpp", 9, "g"), "int g(char)");
        logger.write(Severity::error, "two\nlines");
        std::thread([&] { logger.write(Severity::error, "elsewhere"); }).join();
    }
    logger.write(Severity::error, "after");

    ASSERT_EQ(records_.size(), 3U);
    EXPECT_EQ(records_[0].name, "scopes");
    EXPECT_EQ(records_[0].severity, Severity::error);
    EXPECT_EQ(records_[0].message, "two\nlines");
    EXPECT_THAT(records_[0].scopes, ElementsAre("a.cpp:7: void f()", "b.cpp:9: int g(char)"));
    EXPECT_THAT(records_[1].scopes, IsEmpty());
    EXPECT_THAT(records_[2].scopes, IsEmpty());
}

TEST_F(LoggerTest, withoutASinkARecordIsOneLineOfStandardError) {
    const Sink ours = Logger::setSink(nullptr);
    EXPECT_TRUE(ours);
    testing::internal::CaptureStderr();
    Logger::get("lines").write(Severity::warning, "one\ntwo\x1b[1m\n");
    Logger::get("lines").write(Severity::info, "hidden");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "warning lines: one two [1m\n");
    EXPECT_FALSE(Logger::setSink(ours));
    EXPECT_THAT(records_, IsEmpty());
}

TEST_F(LoggerTest, sinkThatThrowsDoesNotReachTheWriter) {
    const Sink ours = Logger::setSink([](const Record&) { throw std::runtime_error("disk full"); });
    testing::internal::CaptureStderr();
    Logger::get("throwing").write(Severity::error, "lost");
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("disk full"));
    Logger::setSink(ours);
}

TEST_F(LoggerTest, threadsWriteWholeRecordsOneAtATime) {
    constexpr int threadCount = 4;
    constexpr int perThread = 200;
    std::vector<std::jthread> threads;
    threads.reserve(threadCount);
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([i] {
            for (int k = 0; k < perThread; ++k) {
                Logger::get("thread." + std::to_string(i)).write(Severity::error, "message");
            }
        });
    }
    threads.clear();
    EXPECT_EQ(records_.size(), static_cast<std::size_t>(threadCount * perThread));
    EXPECT_THAT(messages(), testing::Each("message"));
}

}  // namespace
}  // namespace foundation::log
