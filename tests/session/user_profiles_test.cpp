#include "session/user_profiles.h"

#include "support/program.h"

namespace zrt {
namespace {

class UserProfiles : public ProgramTest {
  protected:
    static void Names(std::array<const char *, 4> names) {
        for (std::size_t i = 0; i < names.size(); ++i)
            Profiles.Table[i].ProfileName = names[i];
    }
    static std::vector<std::string> AllNames() {
        std::vector<std::string> names;
        for (const UserProfile &profile : Profiles.Table)
            names.push_back(profile.ProfileName);
        return names;
    }
};

TEST_F(UserProfiles, WithoutANameGetTheLowestFreeNumber) {
    Names({"", "Custom Profile 1", "", "Custom Profile 3"});
    EXPECT_EQ(NextFreeProfileName(), "Custom Profile 2");
    EXPECT_TRUE(NameProfiles());
    EXPECT_EQ(AllNames(), (std::vector<std::string>{"Custom Profile 2", "Custom Profile 1",
                                                    "Custom Profile 4", "Custom Profile 3"}));
    EXPECT_EQ(NextFreeProfileName(), "Custom Profile 5");
    EXPECT_FALSE(NameProfiles());
}

TEST_F(UserProfiles, ABlankNameIsNone) {
    Names({"  ", "Home", "Club", "Portable"});
    EXPECT_TRUE(NameProfiles());
    EXPECT_EQ(AllNames(),
              (std::vector<std::string>{"Custom Profile 1", "Home", "Club", "Portable"}));
}

TEST_F(UserProfiles, TheCurrentOneIsTheFirstOfItsName) {
    Names({"Home", "Club", "Club", "Portable"});
    EXPECT_EQ(Profiles.Current, 1);
    Profiles.CurrentUserProfileName = "Club";
    FindCurrentProfile();
    EXPECT_EQ(Profiles.Current, 2);
    EXPECT_EQ(&CurrentProfile(), &Profiles.Table[1]);
    Profiles.CurrentUserProfileName = "club";
    FindCurrentProfile();
    EXPECT_EQ(Profiles.Current, 1);
}

} // namespace
} // namespace zrt
