#include "output/output.h"

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace depcompare {
namespace {

namespace fs = std::filesystem;

class OutputFileTest : public testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = testing::TempDir() + "output-XXXXXX";
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        folder_ = pattern;
        target_ = folder_ / "report";
    }
    void TearDown() override { fs::remove_all(folder_); }

    [[nodiscard]] std::string content() const {
        std::ifstream file(target_);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    fs::path folder_;
    fs::path target_;
};

TEST_F(OutputFileTest, linksAndPermissionsStay) {
    const fs::path real = folder_ / "real";
    std::ofstream(real) << "old";
    fs::permissions(real, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    fs::create_symlink(real, target_);
    OutputFile file(target_.string());
    file.write("new");
    file.commit();
    EXPECT_TRUE(fs::is_symlink(target_));
    EXPECT_EQ(content(), "new");
    EXPECT_EQ(fs::status(real).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST_F(OutputFileTest, newFilesHaveTheUsualPermissions) {
    const mode_t mask = ::umask(027);
    OutputFile file(target_.string());
    file.commit();
    ::umask(mask);
    EXPECT_EQ(static_cast<unsigned>(fs::status(target_).permissions()), 0640U);
}

}  // namespace
}  // namespace depcompare
