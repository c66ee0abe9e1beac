#include "platform/user_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include <pwd.h>
#include <unistd.h>

namespace zrt {
namespace {

TEST(UserFolder, FollowsTheRulesOfTheBaseDirectories) {
    EXPECT_EQ(DataHomeOf({"/data", "/home/op", "/home/account"}), "/data");
    EXPECT_EQ(DataHomeOf({"", "/home/op", "/home/account"}), "/home/op/.local/share");
    EXPECT_EQ(DataHomeOf({"", "", "/home/account"}), "/home/account/.local/share");
    EXPECT_EQ(DataHomeOf({"", "", ""}), "");
}

TEST(UserFolder, IgnoresARelativePath) {
    EXPECT_EQ(DataHomeOf({"data", "/home/op", ""}), "/home/op/.local/share");
    EXPECT_EQ(DataHomeOf({"./data", "home", "/home/account"}), "/home/account/.local/share");
    EXPECT_EQ(DataHomeOf({"", "", "account"}), "");
}

TEST(UserFolder, KnowsRootWithoutHome) {
    EXPECT_TRUE(IsRootWithoutHome({"", "", "/root", true}));
    EXPECT_TRUE(IsRootWithoutHome({"data", "", "/root", true}));
    EXPECT_FALSE(IsRootWithoutHome({"", "/root", "/root", true}));
    EXPECT_FALSE(IsRootWithoutHome({"/data", "", "/root", true}));
    EXPECT_FALSE(IsRootWithoutHome({"", "", "/home/account", false}));
}

TEST(UserFolder, IsReadFromTheProcess) {
    const char *old = std::getenv("HOME");
    const std::string before = old == nullptr ? "" : old;
    ::unsetenv("HOME");
    const UserEnvironment without = ReadUserEnvironment();
    ::setenv("HOME", "/elsewhere", 1);
    const UserEnvironment with = ReadUserEnvironment();
    if (old == nullptr)
        ::unsetenv("HOME");
    else
        ::setenv("HOME", before.c_str(), 1);
    EXPECT_EQ(without.Home, "");
    EXPECT_EQ(with.Home, "/elsewhere");
    const passwd *account = ::getpwuid(::geteuid());
    EXPECT_EQ(with.AccountHome, account == nullptr ? "" : account->pw_dir);
    EXPECT_EQ(with.IsRoot, ::geteuid() == 0);
}

} // namespace
} // namespace zrt
