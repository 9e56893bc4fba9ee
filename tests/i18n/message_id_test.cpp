#include <fl/i18n/message_id.h>

#include <gtest/gtest.h>

namespace fl::i18n {
namespace {

TEST(MessageID, oneStringSplitsAtItsLastColon) {
    const MessageID id("ORBITA:dependency:comparisons:checksum");
    EXPECT_EQ(id.key(), "checksum");
    EXPECT_EQ(id, MessageID("ORBITA:dependency:comparisons", "checksum"));
    EXPECT_NE(MessageID("catalog", "a:b"), MessageID("catalog:a:b"));
    EXPECT_EQ(MessageID("catalog", "a:b").full(), "catalog:a:b");
}

TEST(MessageID, missingColonAndEmptySidesAreRefused) {
    for (const char* full : {"", "checksum", ":", ":key", "catalog:", "a:b:"}) {
        EXPECT_THROW((void)MessageID(full), MalformedMessageID) << full;
    }
}

}  // namespace
}  // namespace fl::i18n
