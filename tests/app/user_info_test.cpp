#include "app/user_info.h"

#include "headless/keyboard.h"
#include "platform/characters.h"
#include "platform/field_text.h"
#include "session/settings.h"
#include "support/program.h"

#include <array>
#include <string_view>
#include <utility>

namespace zrt {
namespace {

constexpr std::size_t kFields = 11;
// In the order of Textinfo.
constexpr std::array<const char *, kFields> kKeys = {"Callsign", "Operators", "Location", "Name",
                                                     "Address",  "City",      "Country",  "Club",
                                                     "Rig",      "Ant",       "Email"};
constexpr std::array<int, kFields> kLengths = {12, 20, 20, 30, 30, 30, 25, 40, 60, 60, 30};
constexpr const char *kKitchen = "K\xC3\xBC\x63he";
constexpr const char *kMunich = "M\xC3\xBCnchen";

// Four profiles, Home, Club, Portable and Spare; the second is the current one. The file has them.
class UserInformation : public ProgramTest {
  protected:
    UserInformation() {
        EXPECT_EQ(ReadSettings(), 0);
        constexpr std::array<const char *, 4> kNames = {"Home", "Club", "Portable", "Spare"};
        for (std::size_t i = 0; i < kNames.size(); ++i) {
            UserProfile &profile = Profiles.Table[i];
            profile.ProfileName = kNames[i];
            for (const UserProfileField &field : kUserProfileFields)
                if (field.Text != &UserProfile::ProfileName)
                    profile.*field.Text = field.Key + std::to_string(i + 1);
        }
        Profiles.Current = 2;
        Profiles.CurrentUserProfileName = "Club";
        WriteSettings(false);
    }

    // Opens the dialog; the operator does the deed once, and cancels if it is still open.
    static void Open(std::function<void()> deed) {
        bool done = false;
        Devices.Operator = [&] {
            if (!std::exchange(done, true))
                deed();
            else
                CloseForm(UserInfo);
            return true;
        };
        ShowUserInfo();
        EXPECT_TRUE(done);
        EXPECT_FALSE(UserInfo.Visible);
    }
    static void Select(int profile) { // from 1
        UserInfo.lstProfiles.ListIndex = profile - 1;
        UserInfo.lstProfiles.Click();
    }
    // Key by key, in the place of what the field holds: blanks at the ends stay.
    static void TypeInto(TextBox &box, const std::string &text) {
        EnterText(box, "");
        for (std::string_view rest = text; !rest.empty();)
            InsertText(box, Utf8(TakeCharacter(rest)));
    }
    static void Type(std::size_t field, const std::string &text) {
        EnterText(UserInfo.Textinfo[field], text);
    }
    static std::string Text(std::size_t field) { return UserInfo.Textinfo[field].Text; }
    static std::vector<std::string> Texts() {
        std::vector<std::string> texts;
        for (const TextBox &box : UserInfo.Textinfo)
            texts.push_back(box.Text);
        return texts;
    }
    // The texts that the profile with this number began with.
    static std::vector<std::string> TextsOf(int profile) {
        std::vector<std::string> texts;
        texts.reserve(kKeys.size());
        for (const char *key : kKeys)
            texts.push_back(key + std::to_string(profile));
        return texts;
    }
    static void Paste(BoxAnswer answer) {
        Answer({answer});
        ClickControl(UserInfo.mnuPaste);
    }
    static void RenameTo(const std::string &name) {
        ClickControl(UserInfo.mnuRename);
        TypeInto(UserInfo.TextName, name);
        ClickControl(UserInfo.cmdNameOK);
    }
    static std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (const UserProfile &profile : Profiles.Table)
            names.push_back(profile.ProfileName);
        return names;
    }
    // The profiles as the next start of the program reads them.
    static ProfilesState InFile() {
        const ProfilesState kept = std::exchange(Profiles, {});
        EXPECT_EQ(ReadSettings(), 0);
        return std::exchange(Profiles, kept);
    }
    static void ExpectRenaming(bool renaming) {
        EXPECT_EQ(UserInfo.lblProfile.Caption, renaming ? "New Name:" : "User Profile:");
        EXPECT_EQ(UserInfo.lstProfiles.Visible, !renaming);
        EXPECT_EQ(UserInfo.TextName.Visible, renaming);
        EXPECT_EQ(UserInfo.cmdNameOK.Visible, renaming);
        EXPECT_EQ(UserInfo.cmdNameCancel.Visible, renaming);
        for (const TextBox &box : UserInfo.Textinfo)
            EXPECT_EQ(box.Enabled, !renaming);
        EXPECT_EQ(UserInfo.cmdOK.Enabled, !renaming);
        EXPECT_EQ(UserInfo.cmdCancel.Enabled, !renaming);
        EXPECT_EQ(UserInfo.mnuEdit.Enabled, !renaming);
        EXPECT_EQ(UserInfo.mnuSave.Enabled, !renaming);
        EXPECT_EQ(UserInfo.mnuCopy.Enabled, !renaming);
        EXPECT_EQ(UserInfo.mnuRename.Enabled, !renaming);
    }
};

// ---- showing

TEST_F(UserInformation, OpensOnTheCurrentProfile) {
    Open([] {
        EXPECT_EQ(UserInfo.Caption, "User Information");
        EXPECT_EQ(UserInfo.lstProfiles.Rows,
                  (std::vector<std::string>{"Home", "Club", "Portable", "Spare"}));
        EXPECT_EQ(UserInfo.lstProfiles.ListIndex, 1);
        EXPECT_EQ(Texts(), TextsOf(2));
        EXPECT_EQ(UserInfo.ActiveControl, &UserInfo.Textinfo[0]);
        ExpectRenaming(false);
    });
}

TEST_F(UserInformation, HasItsMenuAndCaptions) {
    const char *const captions[] = {
        "Callsign:", "Operators:", "Location:", "Name:",     "Address:", "City:",
        "Country:",  "Club:",      "Rig:",      "Antennas:", "Email:"};
    for (std::size_t i = 0; i < kFields; ++i) {
        EXPECT_EQ(UserInfo.lblInfo[i].Caption, captions[i]);
        EXPECT_EQ(UserInfo.Textinfo[i].Columns, kLengths[i]);
    }
    EXPECT_EQ(UserInfo.mnuEdit.Caption, "Edit");
    EXPECT_EQ(UserInfo.mnuSave.Caption, "Save");
    EXPECT_EQ(UserInfo.mnuCopy.Caption, "Copy");
    EXPECT_EQ(UserInfo.mnuPaste.Caption, "Paste");
    EXPECT_EQ(UserInfo.mnuRename.Caption, "Rename");
    for (const MenuItem *item :
         {&UserInfo.mnuSave, &UserInfo.mnuCopy, &UserInfo.mnuPaste, &UserInfo.mnuRename})
        EXPECT_EQ(item->Parent, "mnuEdit");
}

TEST_F(UserInformation, TheTabKeyGoesFromTopToBottom) {
    Open([] {
        UserInfo.ActiveControl = &UserInfo.lstProfiles;
        std::vector<const Control *> expected;
        for (const TextBox &box : UserInfo.Textinfo)
            expected.push_back(&box);
        expected.insert(expected.end(),
                        {&UserInfo.cmdOK, &UserInfo.cmdCancel, &UserInfo.lstProfiles});
        for (const Control *control : expected) {
            PressKey(UserInfo, *KeyNamed("Tab"));
            EXPECT_EQ(UserInfo.ActiveControl, control);
        }
    });
}

TEST_F(UserInformation, ANewSelectionLoadsTheFieldsOfThatProfile) {
    Open([] {
        for (const int profile : {1, 4, 3, 2}) {
            Select(profile);
            EXPECT_EQ(Texts(), TextsOf(profile));
        }
        UserInfo.ActiveControl = &UserInfo.lstProfiles;
        PressKey(UserInfo, *KeyNamed("Down"));
        EXPECT_EQ(Texts(), TextsOf(3));
    });
    EXPECT_EQ(Profiles.Current, 2);
}

TEST_F(UserInformation, WhatWasNotSavedIsLostWithANewSelection) {
    const ProfilesState before = Profiles;
    Open([] {
        Type(0, "K1ABC");
        Select(3);
        Select(2);
        EXPECT_EQ(Texts(), TextsOf(2));
    });
    EXPECT_EQ(Profiles, before);
}

// ---- OK, Save, Cancel

TEST_F(UserInformation, OkStoresMakesCurrentWritesAndCloses) {
    Open([] {
        Select(3);
        for (std::size_t i = 0; i < kFields; ++i)
            Type(i, "  new" + std::to_string(i) + " ");
        ClickControl(UserInfo.cmdOK);
        EXPECT_FALSE(UserInfo.Visible);
    });
    EXPECT_EQ(Profiles.Current, 3);
    EXPECT_EQ(Profiles.CurrentUserProfileName, "Portable");
    EXPECT_EQ(Profiles.Table[2].ProfileName, "Portable");
    EXPECT_EQ(Profiles.Table[2].Callsign, "new0");
    EXPECT_EQ(Profiles.Table[2].Email, "new10");
    EXPECT_EQ(InFile(), Profiles);
    const std::string file = BytesOf(kSettingsFile);
    const std::size_t third = file.find("[User Profile 3]\r\n");
    ASSERT_NE(third, std::string::npos);
    for (std::size_t i = 0; i < kFields; ++i)
        EXPECT_NE(
            file.find(std::string("UserProfile.") + kKeys[i] + "=new" + std::to_string(i) + "\r\n",
                      third),
            std::string::npos)
            << kKeys[i];
    EXPECT_NE(file.find("CurrentUserProfileName=Portable\r\n"), std::string::npos);
}

TEST_F(UserInformation, EnterIsOkAndLeavesTheOtherProfiles) {
    ProfilesState expected = Profiles;
    Open([] {
        Type(3, "Anna");
        PressKey(UserInfo, *KeyNamed("Enter"));
        EXPECT_FALSE(UserInfo.Visible);
    });
    expected.Table[1].Name = "Anna";
    EXPECT_EQ(Profiles, expected);
    EXPECT_EQ(InFile(), expected);
}

TEST_F(UserInformation, CancelLeavesAll) {
    const ProfilesState before = Profiles;
    const std::string file = BytesOf(kSettingsFile);
    const std::function<void()> ways[] = {[] { ClickControl(UserInfo.cmdCancel); },
                                          [] { PressKey(UserInfo, *KeyNamed("Esc")); },
                                          [] { CloseForm(UserInfo); }};
    for (const auto &way : ways) {
        Open([&way] {
            Select(1);
            Type(0, "K1ABC");
            way();
            EXPECT_FALSE(UserInfo.Visible);
        });
        EXPECT_EQ(Profiles, before);
        EXPECT_EQ(BytesOf(kSettingsFile), file);
    }
}

TEST_F(UserInformation, SaveStoresAsOkDoesAndStaysOpen) {
    Open([] {
        Select(1);
        Type(7, " Radio Club ");
        ClickControl(UserInfo.mnuSave);
        EXPECT_TRUE(UserInfo.Visible);
        EXPECT_EQ(Profiles.Current, 1);
        EXPECT_EQ(Profiles.CurrentUserProfileName, "Home");
        EXPECT_EQ(Profiles.Table[0].Club, "Radio Club");
        EXPECT_EQ(InFile(), Profiles);
        Type(7, "Another");
        ClickControl(UserInfo.cmdOK);
        EXPECT_FALSE(UserInfo.Visible);
    });
    EXPECT_EQ(Profiles.Table[0].Club, "Another");
    EXPECT_EQ(InFile(), Profiles);
}

TEST_F(UserInformation, AFileThatCantBeWrittenKeepsTheProfileInMemory) {
    const std::string file = BytesOf(kSettingsFile);
    Devices.Disk = DiskMode::Full;
    Open([] {
        Type(0, "K1ABC");
        ClickControl(UserInfo.cmdOK);
        EXPECT_FALSE(UserInfo.Visible);
    });
    EXPECT_EQ(Profiles.Table[1].Callsign, "K1ABC");
    EXPECT_EQ(BytesOf(kSettingsFile), file);
}

// ---- Copy and Paste

TEST_F(UserInformation, PasteIsDisabledUntilTheFirstCopy) {
    Open([] {
        EXPECT_FALSE(UserInfo.mnuPaste.Enabled);
        ClickControl(UserInfo.mnuPaste);
        EXPECT_TRUE(Devices.Boxes.empty());
        EXPECT_EQ(Texts(), TextsOf(2));
        ClickControl(UserInfo.mnuRename);
        ClickControl(UserInfo.cmdNameCancel);
        EXPECT_FALSE(UserInfo.mnuPaste.Enabled);
        ClickControl(UserInfo.mnuCopy);
        EXPECT_TRUE(UserInfo.mnuPaste.Enabled);
    });
}

TEST_F(UserInformation, PasteAsksAndFillsTheFields) {
    const ProfilesState before = Profiles;
    const std::string file = BytesOf(kSettingsFile);
    Open([] {
        ClickControl(UserInfo.mnuCopy);
        Select(4);
        Paste(BoxAnswer::Yes);
        const MessageBox box = LastBox();
        EXPECT_EQ(box.Text, "Do you want to replace the User Data on the displayed Profile?");
        EXPECT_EQ(box.Title, "Warning -- Information will be overwritten");
        EXPECT_EQ(box.Buttons, BoxButtons::YesNo);
        EXPECT_EQ(Texts(), TextsOf(2));
        EXPECT_EQ(UserInfo.lstProfiles.ListIndex, 3);
    });
    EXPECT_EQ(Profiles, before) << "nothing is stored before OK or Save";
    EXPECT_EQ(BytesOf(kSettingsFile), file);
}

TEST_F(UserInformation, WhatWasPastedIsStoredByOkUnderTheNameOfItsProfile) {
    Open([] {
        ClickControl(UserInfo.mnuCopy);
        Select(4);
        Paste(BoxAnswer::Yes);
        ClickControl(UserInfo.cmdOK);
    });
    UserProfile expected = Profiles.Table[1];
    expected.ProfileName = "Spare";
    EXPECT_EQ(Profiles.Table[3], expected);
    EXPECT_EQ(InFile(), Profiles);
}

TEST_F(UserInformation, PasteAnsweredWithNoLeavesTheFields) {
    Open([] {
        ClickControl(UserInfo.mnuCopy);
        Select(4);
        Paste(BoxAnswer::No);
        EXPECT_EQ(Texts(), TextsOf(4));
    });
}

TEST_F(UserInformation, CopyTakesWhatIsDisplayedTrimmed) {
    Open([] {
        TypeInto(UserInfo.Textinfo[0], "  K1ABC  ");
        ClickControl(UserInfo.mnuCopy);
        EXPECT_EQ(Text(0), "  K1ABC  ");
        Select(1);
        Paste(BoxAnswer::Yes);
        EXPECT_EQ(Text(0), "K1ABC");
        EXPECT_EQ(Text(1), "Operators2");
    });
}

TEST_F(UserInformation, WhatWasCopiedLastOutlivesTheDialog) {
    Open([] {
        Select(1);
        ClickControl(UserInfo.mnuCopy);
        Select(2);
        ClickControl(UserInfo.mnuCopy);
    });
    Open([] {
        Select(3);
        EXPECT_TRUE(UserInfo.mnuPaste.Enabled);
        Paste(BoxAnswer::Yes);
        EXPECT_EQ(Texts(), TextsOf(2));
    });
}

// ---- Rename

TEST_F(UserInformation, RenameShowsTheFieldForTheName) {
    Open([] {
        ClickControl(UserInfo.mnuCopy);
        Select(3);
        ClickControl(UserInfo.mnuRename);
        ExpectRenaming(true);
        EXPECT_FALSE(UserInfo.mnuPaste.Enabled);
        EXPECT_EQ(UserInfo.TextName.Text, "Portable");
        EXPECT_EQ(UserInfo.TextName.SelStart, 0);
        EXPECT_EQ(UserInfo.TextName.SelLength, 8);
        EXPECT_EQ(UserInfo.ActiveControl, &UserInfo.TextName);
        ClickControl(UserInfo.cmdNameCancel);
        ExpectRenaming(false);
        EXPECT_TRUE(UserInfo.mnuPaste.Enabled);
        EXPECT_TRUE(TakesFocus(*UserInfo.ActiveControl));
    });
}

TEST_F(UserInformation, RenameOkStoresTheNameAndWritesTheFile) {
    Open([] {
        Select(3);
        Type(0, "K1ABC");
        RenameTo("  Field Day ");
        ExpectRenaming(false);
        EXPECT_TRUE(UserInfo.Visible);
        EXPECT_EQ(UserInfo.lstProfiles.Rows,
                  (std::vector<std::string>{"Home", "Club", "Field Day", "Spare"}));
        EXPECT_EQ(UserInfo.lstProfiles.ListIndex, 2);
        EXPECT_EQ(Text(0), "K1ABC") << "the fields stay as typed";
    });
    EXPECT_EQ(Names(), (std::vector<std::string>{"Home", "Club", "Field Day", "Spare"}));
    EXPECT_EQ(Profiles.Table[2].Callsign, "Callsign3") << "and are not stored";
    EXPECT_EQ(Profiles.Current, 2);
    EXPECT_EQ(Profiles.CurrentUserProfileName, "Club");
    EXPECT_EQ(InFile(), Profiles);
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(UserInformation, TheCurrentProfileStaysCurrentUnderItsNewName) {
    Open([] { RenameTo("Station"); });
    EXPECT_EQ(Profiles.Current, 2);
    EXPECT_EQ(Profiles.CurrentUserProfileName, "Station");
    EXPECT_EQ(InFile(), Profiles);
}

TEST_F(UserInformation, RenameCancelChangesNothing) {
    const ProfilesState before = Profiles;
    const std::string file = BytesOf(kSettingsFile);
    Open([] {
        Type(5, "Boston");
        ClickControl(UserInfo.mnuRename);
        EnterText(UserInfo.TextName, "Field Day");
        ClickControl(UserInfo.cmdNameCancel);
        ExpectRenaming(false);
        EXPECT_EQ(UserInfo.lstProfiles.Rows,
                  (std::vector<std::string>{"Home", "Club", "Portable", "Spare"}));
        EXPECT_EQ(Text(5), "Boston");
        ClickControl(UserInfo.mnuRename);
        EXPECT_EQ(UserInfo.TextName.Text, "Club") << "begins anew";
    });
    EXPECT_EQ(Profiles, before);
    EXPECT_EQ(BytesOf(kSettingsFile), file);
}

TEST_F(UserInformation, EnterAndEscBelongToTheNameWhileItIsEdited) {
    Open([] {
        ClickControl(UserInfo.mnuRename);
        PressKey(UserInfo, *KeyNamed("Esc"));
        EXPECT_TRUE(UserInfo.Visible);
        ExpectRenaming(false);
        ClickControl(UserInfo.mnuRename);
        for (const KeyStroke &stroke : StrokesOf("Hill"))
            PressKey(UserInfo, stroke);
        PressKey(UserInfo, *KeyNamed("Enter"));
        EXPECT_TRUE(UserInfo.Visible);
        ExpectRenaming(false);
    });
    EXPECT_EQ(Names()[1], "Hill");
}

TEST_F(UserInformation, TheTabKeyStaysWithTheNameWhileItIsEdited) {
    Open([] {
        ClickControl(UserInfo.mnuRename);
        for (const Control *control : std::initializer_list<const Control *>{
                 &UserInfo.cmdNameOK, &UserInfo.cmdNameCancel, &UserInfo.TextName}) {
            PressKey(UserInfo, *KeyNamed("Tab"));
            EXPECT_EQ(UserInfo.ActiveControl, control);
        }
    });
}

struct Refusal {
    const char *Name;
    const char *Text;
    const char *Title;
};

TEST_F(UserInformation, BlankNamesAndThoseOfOthersAreRefused) {
    constexpr const char *kBlank = "Blank Names are not allowed.  Try again.";
    constexpr const char *kTaken = "The new name is the same as that of another User Profile.  "
                                   "Choose another name.";
    const ProfilesState before = Profiles;
    const std::string file = BytesOf(kSettingsFile);
    for (const Refusal &refusal : {Refusal{"", kBlank, "Error -- Blank Name"},
                                   {"   ", kBlank, "Error -- Blank Name"},
                                   {"Home", kTaken, "Error -- Duplicate Name"},
                                   {"Portable", kTaken, "Error -- Duplicate Name"},
                                   {" Spare ", kTaken, "Error -- Duplicate Name"}}) {
        Open([&refusal] {
            Answer({BoxAnswer::Ok});
            RenameTo(refusal.Name);
            EXPECT_EQ(LastBox().Text, refusal.Text);
            EXPECT_EQ(LastBox().Title, refusal.Title);
            ExpectRenaming(true);
            const TextBox &box = UserInfo.TextName;
            EXPECT_EQ(box.Text, refusal.Name) << "as typed";
            EXPECT_EQ(box.SelStart, 0);
            EXPECT_EQ(box.SelLength, static_cast<int>(box.Text.size()));
            EXPECT_EQ(UserInfo.ActiveControl, &box);
            EnterText(UserInfo.TextName, "Club");
            ClickControl(UserInfo.cmdNameOK);
            ExpectRenaming(false);
        });
        EXPECT_EQ(Profiles, before);
        EXPECT_EQ(BytesOf(kSettingsFile), file);
    }
}

TEST_F(UserInformation, NamesAreComparedExactlyAndTheOwnOneIsAllowed) {
    Open([] {
        RenameTo("Club");
        ExpectRenaming(false);
        RenameTo("home");
        ExpectRenaming(false);
    });
    EXPECT_TRUE(Devices.Boxes.empty());
    EXPECT_EQ(Names(), (std::vector<std::string>{"Home", "home", "Portable", "Spare"}));
    EXPECT_EQ(InFile(), Profiles);
}

TEST_F(UserInformation, ClosedWhileRenamingItOpensAsEver) {
    const ProfilesState before = Profiles;
    Open([] {
        ClickControl(UserInfo.mnuRename);
        EnterText(UserInfo.TextName, "Field Day");
        CloseForm(UserInfo);
        EXPECT_FALSE(UserInfo.Visible);
    });
    EXPECT_EQ(Profiles, before);
    Open([] {
        ExpectRenaming(false);
        EXPECT_EQ(UserInfo.ActiveControl, &UserInfo.Textinfo[0]);
    });
}

// ---- what the fields hold

TEST_F(UserInformation, LongTextsAreCutAsTheyAreTyped) {
    Open([] {
        for (std::size_t i = 0; i < kFields; ++i) {
            const auto length = static_cast<std::size_t>(kLengths[i]);
            Type(i, std::string(length, 'x'));
            EXPECT_EQ(Text(i), std::string(length, 'x')) << i;
            UserInfo.ActiveControl = &UserInfo.Textinfo[i];
            for (const KeyStroke &stroke : StrokesOf("yz"))
                PressKey(UserInfo, stroke);
            EXPECT_EQ(Text(i), std::string(length, 'x')) << i;
            EXPECT_EQ(UserInfo.Textinfo[i].SelStart, kLengths[i]);
            EXPECT_EQ(UserInfo.Textinfo[i].SelLength, 0);
        }
        ClickControl(UserInfo.mnuSave);
        EXPECT_EQ(InFile(), Profiles);
        ClickControl(UserInfo.mnuRename);
        EnterText(UserInfo.TextName, "123456789012345678901");
        EXPECT_EQ(UserInfo.TextName.Text, "12345678901234567890");
        ClickControl(UserInfo.cmdNameOK);
    });
    EXPECT_EQ(Names()[1], "12345678901234567890");
    EXPECT_EQ(InFile(), Profiles);
}

TEST_F(UserInformation, LengthsCountCharacters) {
    std::string umlauts;
    for (int i = 0; i < 12; ++i)
        umlauts += "\xC3\xBC";
    Open([&umlauts] {
        Type(0, umlauts);
        EXPECT_EQ(Text(0), umlauts);
        Type(0, umlauts + "\xC3\xBC");
        EXPECT_EQ(Text(0), umlauts);
        EXPECT_EQ(UserInfo.Textinfo[0].SelStart, 24);
        ClickControl(UserInfo.cmdOK);
    });
    EXPECT_EQ(InFile().Table[1].Callsign, umlauts);
}

TEST_F(UserInformation, UmlautsGoThroughTheFile) {
    Open([] {
        Type(5, kMunich);
        RenameTo(kKitchen);
        ClickControl(UserInfo.cmdOK);
    });
    Profiles = {};
    ASSERT_EQ(ReadSettings(), 0);
    EXPECT_EQ(Profiles.Current, 2);
    EXPECT_EQ(Profiles.Table[1].ProfileName, kKitchen);
    Open([] {
        EXPECT_EQ(Text(5), kMunich);
        EXPECT_EQ(UserInfo.lstProfiles.Rows[1], kKitchen);
    });
}

TEST_F(UserInformation, ATextOfSeveralLinesBecomesOne) {
    Open([] {
        Type(4, "1 Main St\n[Preferences]\tx\r");
        EXPECT_EQ(Text(4), "1 Main St [Preferences] x");
        ClickControl(UserInfo.cmdOK);
    });
    EXPECT_EQ(Profiles.Table[1].Address, "1 Main St [Preferences] x");
    EXPECT_EQ(InFile(), Profiles);
}

TEST_F(UserInformation, ThreeProfilesWithoutANameAreListedUnderTheNamesOfTheStart) {
    std::string file = BytesOf(kSettingsFile);
    for (const char *name : {"Home", "Portable", "Spare"}) {
        const std::string line = std::string("UserProfile.ProfileName=") + name + "\r\n";
        const std::size_t place = file.find(line);
        ASSERT_NE(place, std::string::npos);
        file.erase(place, line.size());
    }
    MakeFile(kSettingsFile, file);
    Profiles = {};
    ASSERT_EQ(ReadSettings(), 0);
    Open([] {
        EXPECT_EQ(UserInfo.lstProfiles.Rows,
                  (std::vector<std::string>{"Custom Profile 1", "Club", "Custom Profile 2",
                                            "Custom Profile 3"}));
    });
}

} // namespace
} // namespace zrt
