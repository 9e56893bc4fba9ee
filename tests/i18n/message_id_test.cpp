#include <fl/i18n/message_id.h>

#include <gtest/gtest.h>

namespace fl::i18n {
namespace {

TEST(MessageID, oneStringSplitsAtItsLastColon) {
    const MessageID id("ORBITA:dependency:comparisons:checksum");
    EXPECT_EQ(id.catalog(), "ORBITA:dependency:comparisons");
    EXPECT_EQ(id.key(), "checksum");
    EXPECT_EQ(id, MessageID("ORBITA:dependency:comparisons", "checksum"));
    EXPECT_EQ(std::hash<MessageID>()(id),
              std::hash<MessageID>()(MessageID("ORBITA:dependency:comparisons", "checksum")));
}

TEST(MessageID, colonInAKeyIsKeptWhereTheKeyIsGivenAlone) {
    const MessageID id("catalog", "a:b");
    EXPECT_EQ(id.catalog(), "catalog");
    EXPECT_EQ(id.key(), "a:b");
    EXPECT_EQ(id.full(), "catalog:a:b");
    EXPECT_NE(id, MessageID("catalog:a:b"));
}

TEST(MessageID, missingColonAndEmptySidesAreRefused) {
    for (const char* full : {"", "checksum", ":", ":key", "catalog:", "a:b:"}) {
        EXPECT_THROW((void)MessageID(full), MalformedMessageID) << full;
    }
    EXPECT_THROW((void)MessageID("", "key"), MalformedMessageID);
    EXPECT_THROW((void)MessageID("catalog", ""), MalformedMessageID);
}

}  // namespace
}  // namespace fl::i18n
