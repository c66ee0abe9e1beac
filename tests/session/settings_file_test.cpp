#include "session/settings_world.h"

#include <utility>

namespace zrt {
namespace {

// ---- keys

TEST_F(SettingsFile, KeysAreReadWithAnyLineEndAndBlanksAround) {
    Read("[Preferences]\r\n  IsGMTFlag  =  True \r\nTimeCorrection=-5\n\n \nYourCall=K1ZZ\r"
         "SendF1Enabled=True\n  [Extensions]  \r\nStoreDecade=True");
    EXPECT_EQ(Settings.IsGMTFlag, "True");
    EXPECT_EQ(Settings.TimeCorrection, "-5");
    EXPECT_EQ(Settings.YourCall, "K1ZZ");
    EXPECT_TRUE(Settings.SendF1Enabled);
    EXPECT_TRUE(Extensions.StoreDecade);
    EXPECT_FALSE(Extensions.UtcFromSystem);
}

TEST_F(SettingsFile, OnlyTheExactTextTrueIsTrue) {
    for (const char *text : {"true", "TRUE", "-1", "Yes", "False", ""}) {
        Settings.SendF1Enabled = true;
        TakeSettingsText(std::string("[Preferences]\nSendF1Enabled=") + text);
        EXPECT_FALSE(Settings.SendF1Enabled) << text;
    }
    Read("[Radio Information]\nRadio1ComActivated = True\nRadio2ComActivated = False\n");
    EXPECT_TRUE(Settings.Radio1ComActivated);
    EXPECT_FALSE(Settings.Radio2ComActivated);
}

TEST_F(SettingsFile, AKeyCountsOnlyInItsOwnSectionAndInItsOwnSpelling) {
    Read("YourCall=K0ZZ\n[Winkey Settings]\nYourCall=K1ZZ\n[Preferences]\nyourcall=K2ZZ\n"
         "CWComPort=Com1\nSurprise=1\nStoreDecade=True\n[Extensions]\nSendF1Enabled=True\n");
    EXPECT_EQ(Settings.YourCall, "");
    EXPECT_EQ(Settings.CWComport, "");
    EXPECT_FALSE(Extensions.StoreDecade);
    EXPECT_FALSE(Settings.SendF1Enabled);
}

TEST_F(SettingsFile, OnlyTheFirstEqualSignSplits) {
    Read("[Preferences]\nYourCall=A=B = C\n[File Information]\nRecentFile2==x=\n");
    EXPECT_EQ(Settings.YourCall, "A=B = C");
    EXPECT_EQ(Settings.RecentFile[1], "=x=");
}

TEST_F(SettingsFile, ALineWithoutEqualSignRepeatsTheKeyAndValueBefore) {
    Read("[Radio User Settings]\nRadioUserSettings.Name=One\nRadioUserSettings.RTSHigh=True\n"
         "again\nRadioUserSettings.Name=Three\n");
    EXPECT_EQ(Settings.RadioUserSettings[0].Name, "One");
    EXPECT_TRUE(Settings.RadioUserSettings[1].RTSHigh);
    EXPECT_EQ(Settings.RadioUserSettings[1].Name, "");
    EXPECT_EQ(Settings.RadioUserSettings[2].Name, "Three");
    Read("nothing yet\n[Preferences]\nstill nothing\nYourCall=K1ZZ\n[Winkey Settings]\n"
         "unknown here\n[Preferences]\n");
    EXPECT_EQ(Settings.YourCall, "K1ZZ");
}

TEST_F(SettingsFile, ABracketedLineThatIsNoKnownHeaderEndsNoSection) {
    Read("[Preferences]\nYourCall=K1ZZ\n[preferences]\n[Other]\nCWComport=Com3\n"
         "[CW Macros - 14]\nPTTComPort=Com4\n[CW Macros - 02]\n[Other]\n");
    EXPECT_EQ(Settings.CWComport, "Com3");
    EXPECT_EQ(Settings.PTTComPort, "Com4");
    EXPECT_EQ(Settings.Macros[1][0], "[RADIO0][PLAY1][Other]");
}

TEST_F(SettingsFile, SectionsOfOtherVersionsAreSkippedAndNotWritten) {
    for (const char *header :
         {"[Window Coordinates - ZRT, SS, WPX]", "[User Information]", "[User Profile 5]",
          "[User Profile 6]", "[User Profile 7]", "[User Profile 8]"}) {
        Read(std::string("[User Profile 4]\nUserProfile.Club=Mine\n") + header +
             "\nUserProfile.Club=Other\nYourCall=K1ZZ\n");
        EXPECT_EQ(Profiles.Table[3].Club, "Mine") << header;
        EXPECT_EQ(SettingsText().find(header), std::string::npos);
    }
}

TEST_F(SettingsFile, NumbersAreRoundedOrCutAndKeptIn16Bits) {
    Read("[Preferences]\nRadio1Delay=3.9\nRadio2Delay=-3.9\nRepeatIntervalCW=2500.5\n"
         "RepeatIntervalSSB=1501.5\nDualCQsRepeatInterval=40000\nDualCQsPlayNumber=abc\n"
         "StationLatitude=-33.8688\nStationLongitude=+151.25\n"
         "[Extensions]\nScpLimit=200000\n");
    EXPECT_EQ(Settings.Radio1Delay, 3);
    EXPECT_EQ(Settings.Radio2Delay, -3);
    EXPECT_EQ(Settings.RepeatIntervalCW, 2500);
    EXPECT_EQ(Settings.RepeatIntervalSSB, 1502);
    EXPECT_EQ(Settings.DualCQsRepeatInterval, 32767);
    EXPECT_EQ(Settings.DualCQsPlayNumber, 0);
    EXPECT_EQ(Settings.StationLatitude, -33.8688);
    EXPECT_EQ(Settings.StationLongitude, 151.25);
    EXPECT_EQ(Extensions.ScpLimit, 200000);
    EXPECT_TRUE(Holds("StationLatitude=-33.8688"));
    for (const char *text : {"inf", "nan", "-", "", "e5", "-inf"}) {
        Read(std::string("[Preferences]\nStationLatitude=") + text);
        EXPECT_EQ(Settings.StationLatitude, 0) << text;
    }
}

TEST_F(SettingsFile, AWeightOutOfReasonIsThree) {
    struct Row {
        const char *Text;
        double Weight;
    };
    for (const Row &row : {Row{"2.5", 2.5}, Row{"4.5", 4.5}, Row{"3.25", 3.25}, Row{"2.4", 3},
                           Row{"4.51", 3}, Row{"", 3}, Row{"0", 3}, Row{"heavy", 3}}) {
        Read(std::string("[Preferences]\nWeight=") + row.Text);
        EXPECT_EQ(Settings.Weight, row.Weight) << row.Text;
    }
    Settings.Weight = 3.5;
    EXPECT_TRUE(Holds("Weight=3.5"));
}

TEST_F(SettingsFile, TheMessageLengthAdjustmentStaysWithinItsLimits) {
    for (const auto &[text, value] : {std::pair{"-5", 0},
                                      {"0", 0},
                                      {"250", 250},
                                      {"1000", 1000},
                                      {"5000", 1000},
                                      {"99999", 1000}}) {
        Read(std::string("[Preferences]\nK3MsgLengthAdjustment=") + text);
        EXPECT_EQ(Settings.K3MsgLengthAdjustment, value) << text;
        EXPECT_TRUE(Holds("K3MsgLengthAdjustment=" + std::to_string(value)));
    }
}

TEST_F(SettingsFile, ChoicesAreReadByName) {
    const char *names[] = {"None", "CW", "PTT", "F9", "DVKMicSwitch"};
    for (i16 i = 0; i < 5; ++i) {
        Read(std::string("[Preferences]\nUseDTRtoKey(2)=") + names[i]);
        EXPECT_EQ(static_cast<i16>(Settings.UseDTRtoKey[1]), i);
        EXPECT_EQ(Settings.UseDTRtoKey[0], DtrFunction::None);
        EXPECT_TRUE(Holds(std::string("UseDTRtoKey(2)=") + names[i]));
    }
    const std::pair<const char *, CallExchMode> modes[] = {
        {"AlwaysFast", CallExchMode::AlwaysFast}, {"AlwaysNormal", CallExchMode::AlwaysNormal},
        {"MixedMode", CallExchMode::MixedMode},   {"mixedmode", CallExchMode::AlwaysNormal},
        {"", CallExchMode::AlwaysNormal},         {"2", CallExchMode::AlwaysNormal}};
    for (const auto &[text, mode] : modes) {
        Read(std::string("[DVK Settings]\nDVKCallExchMode=") + text);
        EXPECT_EQ(Settings.DVKCallExchMode, mode) << text;
    }
}

TEST_F(SettingsFile, TheSelectionInUseIsTheOneThatIsKept) {
    Read("[Preferences]\nSCPSelection=DX\n");
    EXPECT_EQ(Contest.SCPSelection, "DX");
    Contest.SCPSelection = "US";
    EXPECT_TRUE(Holds("SCPSelection=US"));
}

TEST_F(SettingsFile, RadioGroupsEndAtRtsHighAndStopAtTheFourteenth) {
    std::string text = "[Radio Default Settings]\n";
    for (int i = 1; i <= 16; ++i)
        text += "RadioDefaultSettings.Name=R" + std::to_string(i) +
                "\nRadioDefaultSettings.BaudRate=38400\nRadioDefaultSettings.Parity=None\n"
                "RadioDefaultSettings.RTSHigh=True\n";
    Read(text + "[Radio User Settings]\nRadioUserSettings.Name=U1\n");
    EXPECT_EQ(Settings.RadioDefaultSettings[0].Name, "R1");
    EXPECT_EQ(Settings.RadioDefaultSettings[12].Name, "R13");
    EXPECT_EQ(Settings.RadioDefaultSettings[13].Name, "R16");
    EXPECT_EQ(Settings.RadioDefaultSettings[13].BaudRate, 38400);
    EXPECT_EQ(Settings.RadioDefaultSettings[13].Parity, 'N');
    EXPECT_EQ(Settings.RadioUserSettings[0].Name, "U1");
    // The place in the table is that of the whole file, not of the section.
    Read("[Radio User Settings]\nRadioUserSettings.RTSHigh=True\n[Preferences]\n"
         "[Radio User Settings]\nRadioUserSettings.Name=Second\n");
    EXPECT_EQ(Settings.RadioUserSettings[1].Name, "Second");
}

TEST_F(SettingsFile, ProfileTextsAreCutAtTheirLength) {
    Read("[User Profile 2]\nUserProfile.Callsign=1234567890123\nUserProfile.City=" +
         std::string(40, 'x') + "\nUserProfile.ProfileName=" + "M\xC3\xBCnchen und Umgebung, DL\n");
    EXPECT_EQ(Profiles.Table[1].Callsign, "123456789012");
    EXPECT_EQ(Profiles.Table[1].City, std::string(30, 'x'));
    EXPECT_EQ(Profiles.Table[1].ProfileName, "M\xC3\xBCnchen und Umgebung"); // and a blank, trimmed
    Profiles.Table[1].Email = std::string(31, 'y');
    EXPECT_TRUE(Holds("UserProfile.Email=" + std::string(30, 'y')));
}

TEST_F(SettingsFile, ExtensionsAreWrittenOnlyIfTheyWereRead) {
    Read("[Preferences]\n");
    Extensions.StoreDecade = true;
    EXPECT_EQ(SettingsText().find("[Extensions]"), std::string::npos);
    Read("[Extensions]\n");
    EXPECT_TRUE(Extensions.InFile);
    EXPECT_TRUE(Holds("StoreDecade=False"));
}

// ---- rows

TEST_F(SettingsFile, MacrosOfOldFilesGetThePrefix) {
    std::string text = "[CW Macros - 03]\r\n";
    for (const char *row : {"CQ @", "[RADIO1][PLAY3]TU: A=B", "[RAD", "[rad]", " x ", "[Radio]",
                            "g", "h", "i", "EXCH $", "[RADIO0][PLAY1]", "DUPE = B4", "row 13"})
        text.append(row) += "\r\n";
    Read(text + "[CW Macros - 04]\r\nfirst\r\n");
    const auto &macros = Settings.Macros[2];
    EXPECT_EQ(macros[0], "[RADIO0][PLAY1]CQ @");
    EXPECT_EQ(macros[1], "[RADIO1][PLAY3]TU: A=B");
    EXPECT_EQ(macros[2], "[RAD");
    EXPECT_EQ(macros[3], "[RADIO0][PLAY1][rad]");
    EXPECT_EQ(macros[4], "[RADIO0][PLAY1] x ");
    EXPECT_EQ(macros[5], "[RADIO0][PLAY1][Radio]");
    EXPECT_EQ(macros[8], "[RADIO0][PLAY1]i");
    EXPECT_EQ(macros[9], "EXCH $");
    EXPECT_EQ(macros[10], "");
    EXPECT_EQ(macros[11], "DUPE = B4");
    EXPECT_EQ(Settings.Macros[3][0], "[RADIO0][PLAY1]first");
    EXPECT_EQ(Settings.Macros[3][1], "");
}

TEST_F(SettingsFile, AnEmptyRowKeepsItsPlace) {
    Settings.Macros[12] = {"[RADIO0][PLAY1]a", "", "", "", "", "", "", "", "", "", "K", ""};
    Settings.MacroLabels[12] = {"CQ", "", "TU", "  "};
    Settings.MacroLabels[12][8] = "last";
    const std::string text = SettingsText();
    Read(text);
    EXPECT_EQ(Settings.Macros[12][0], "[RADIO0][PLAY1]a");
    EXPECT_EQ(Settings.Macros[12][1], "[RADIO0][PLAY1]");
    EXPECT_EQ(Settings.Macros[12][9], "");
    EXPECT_EQ(Settings.Macros[12][10], "K");
    EXPECT_EQ(Settings.Macros[12][11], "");
    EXPECT_EQ(Settings.MacroLabels[12][1], "$");
    EXPECT_EQ(Settings.MacroLabels[12][2], "TU");
    EXPECT_EQ(Settings.MacroLabels[12][8], "last");
    EXPECT_EQ(SettingsText(), text);
}

TEST_F(SettingsFile, LabelsAreKeptAsTheyStand) {
    Read("[CW Macros Display Forms - 10]\n CQ = 1 \n\n$\n3\n4\n5\n6\n7\n8\n9\n10\n11\n");
    EXPECT_EQ(Settings.MacroLabels[9][0], " CQ = 1 ");
    EXPECT_EQ(Settings.MacroLabels[9][1], "$");
    EXPECT_EQ(Settings.MacroLabels[9][8], "9");
}

TEST_F(SettingsFile, AHeaderThatComesAgainBeginsItsRowsAgain) {
    Read("[CW Macros - 01]\na\nb\n[CW Macros - 02]\nc\n[CW Macros - 01]\nd\n");
    EXPECT_EQ(Settings.Macros[0][0], "[RADIO0][PLAY1]d");
    EXPECT_EQ(Settings.Macros[0][1], "[RADIO0][PLAY1]b");
}

TEST_F(SettingsFile, WindowRowsAreTopLeftHeightWidth) {
    Read("[Window Information - 13]\nLOGFORM OPEN 10 20 30 40\nViewMult  CLOSED -5 99999 7.5 x\n"
         "THISNAMEISLONGERTHAN20 MAXIMIZED 1\n\n4\n5\n6\n7\nPARTIAL OPEN 1 2 3 4 5\nninth\n");
    const auto &rows = Settings.Windows[12];
    EXPECT_EQ(rows[kLogForm], (WindowInfo{"LOGFORM", "OPEN", 20, 10, 30, 40}));
    EXPECT_EQ(rows[kViewMult], (WindowInfo{"ViewMult", "CLOSED", 32767, -5, 8, 0}));
    EXPECT_EQ(rows[kQSOStats], (WindowInfo{"THISNAMEISLONGERTHAN", "MAXIMI", 0, 1, 0, 0}));
    EXPECT_EQ(rows[kPartial], (WindowInfo{"PARTIAL", "OPEN", 2, 1, 3, 4}));
    EXPECT_TRUE(Holds("LOGFORM OPEN 10 20 30 40"));
    EXPECT_EQ(Settings.Windows[11][0], WindowInfo()) << "no rows: the default size";
}

// ---- bytes

TEST_F(SettingsFile, IsUtf8OrElseLatin1) {
    Read("\xEF\xBB\xBF[Preferences]\nYourCall=caf\xC3\xA9\n");
    EXPECT_EQ(Settings.YourCall, "caf\xC3\xA9");
    Read("[Preferences]\nYourCall=caf\xE9\nBackUpDrive=\xC3\xA9\n");
    EXPECT_EQ(Settings.YourCall, "caf\xC3\xA9");
    EXPECT_EQ(Settings.BackUpDrive, "\xC3\x83\xC2\xA9") << "Latin-1 as a whole";
    // Overlong, surrogate, beyond the last character, cut short: no UTF-8.
    for (const char *bytes : {"\xC0\xAF", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                              "\xF0\x8F\xBF\xBF", "\xF5\x80\x80\x80", "\x80", "\xE2\x82"}) {
        Read(std::string("[Preferences]\nYourCall=") + bytes);
        EXPECT_EQ(Settings.YourCall, FromLatin1(bytes));
    }
    for (const char *bytes : {"\xC2\x80", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xF0\x90\x80\x80",
                              "\xF4\x8F\xBF\xBF", "\xE2\x82\xAC"}) {
        Read(std::string("[Preferences]\nYourCall=") + bytes);
        EXPECT_EQ(Settings.YourCall, bytes);
    }
}

TEST_F(SettingsFile, NulBytesAndEndlessLinesDoNoHarm) {
    const std::string zeros(5, '\0');
    Read("[Preferences]\nYourCall=A" + zeros + "B\nRadio1Delay=" + std::string(1000000, '9') +
         "\nStationLatitude=" + std::string(1000000, '9') + "\n" + std::string(1000000, '=') +
         "\nBackUpDrive=" + std::string(1000000, 'D') + "\n[Window Information - 01]\n" +
         std::string(1000000, 'W') + zeros + "\n[Radio Information]\nRadio(1).Parity=" + zeros);
    EXPECT_EQ(Settings.YourCall, "A" + zeros + "B");
    EXPECT_EQ(Settings.Radio1Delay, 32767);
    EXPECT_EQ(Settings.StationLatitude, 0);
    EXPECT_EQ(Settings.BackUpDrive.size(), 1000000U);
    EXPECT_EQ(Settings.Windows[0][0].Name, std::string(20, 'W'));
    EXPECT_EQ(Settings.Radio[0].Parity, ' ');
}

} // namespace
} // namespace zrt
