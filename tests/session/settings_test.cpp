#include "session/settings.h"

#include "support/program.h"

#include <cerrno>

namespace zrt {
namespace {

class SettingsFile : public ProgramTest {
  protected:
    static void Read(std::string_view text) {
        MakeFile("test.ini", text);
        ASSERT_EQ(ReadSettings(PathOf("test.ini")), 0);
    }
};

TEST_F(SettingsFile, WithoutAKeyLeavesTheDefault) {
    Read("");
    EXPECT_EQ(Settings.RepeatIntervalCW, 1000);
    EXPECT_EQ(Settings.RepeatIntervalSSB, 1000);
    EXPECT_EQ(Settings.TimingMethod, "Winmm");
    EXPECT_EQ(Settings.UnworkedColor, 0);
    EXPECT_EQ(Settings.WorkedColor, 255);
    EXPECT_FALSE(Extensions.StoreDecade || Extensions.UtcFromSystem || Extensions.ProtectOldLogs);
}

TEST_F(SettingsFile, KeysAreReadWithEitherLineEnd) {
    Read("[Preferences]\r\nIsGMTFlag=True\r\nTimeCorrection=-5\n\nSendF1Enabled=True\n"
         "[Extensions]\r\nStoreDecade=True");
    EXPECT_EQ(Settings.IsGMTFlag, "True");
    EXPECT_EQ(Settings.TimeCorrection, "-5");
    EXPECT_TRUE(Settings.SendF1Enabled);
    EXPECT_TRUE(Extensions.StoreDecade);
    EXPECT_FALSE(Extensions.UtcFromSystem);
}

TEST_F(SettingsFile, OnlyTheExactTextTrueIsTrue) {
    for (const char *text : {"true", "TRUE", "-1", "Yes", "False", ""}) {
        Settings.SendF1Enabled = true;
        Read(std::string("[Preferences]\nSendF1Enabled=") + text);
        EXPECT_FALSE(Settings.SendF1Enabled) << text;
    }
}

TEST_F(SettingsFile, AKeyCountsOnlyInItsOwnSection) {
    Read("[Preferences]\nStoreDecade=True\n[Extensions]\nSendF1Enabled=True\n[Other]\n"
         "IsGMTFlag=True\n");
    EXPECT_FALSE(Extensions.StoreDecade);
    EXPECT_FALSE(Settings.SendF1Enabled);
    EXPECT_EQ(Settings.IsGMTFlag, "");
}

TEST_F(SettingsFile, ThatIsMissingIsAnErrorAndIsNotMade) {
    Settings.RepeatIntervalCW = 7;
    EXPECT_EQ(ReadSettings(PathOf("none.ini")), ENOENT);
    EXPECT_EQ(Settings.RepeatIntervalCW, 7);
    EXPECT_FALSE(FileExists("none.ini"));
}

TEST_F(SettingsFile, TheTimingMethodIsOneOfFour) {
    for (const char *known : {"QueryPerf", "Math", "Winmm", "VBTimer"}) {
        Settings.TimingMethod = known;
        CheckTimingMethod();
        EXPECT_EQ(Settings.TimingMethod, known);
    }
    for (const char *unknown : {"", "winmm", "Sundial"}) {
        Settings.TimingMethod = unknown;
        CheckTimingMethod();
        EXPECT_EQ(Settings.TimingMethod, "Winmm") << unknown;
    }
}

} // namespace
} // namespace zrt
