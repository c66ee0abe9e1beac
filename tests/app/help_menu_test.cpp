#include "app/start_up.h"

#include "entry/log_form.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/help.h"
#include "platform/program.h"
#include "session/session_flags.h"
#include "support/program.h"

#include <filesystem>

namespace zrt {
namespace {

constexpr const char *kContents = "zrtlog127Help.html";
constexpr const char *kRules = "zrtlog127Help-100.html";
constexpr const char *kKeys = "zrtlog127Help-101.html";
constexpr const char *kHelpFile = "zrtlog127Help.chm";

std::string shippedFolder; // another folder than the program's, for the defaults

class HelpMenu : public ProgramTest {
  protected:
    HelpMenu() { StartProgram(); }
    void TearDown() override {
        if (!shippedFolder.empty())
            std::filesystem::remove_all(shippedFolder);
        shippedFolder.clear();
        ProgramTest::TearDown();
    }
    static void MakePages() {
        for (const char *page : {kContents, kRules, kKeys})
            MakeFile(page, "<p>");
    }
    static void ExpectOpened(std::string_view name, int topic) {
        EXPECT_EQ(Devices.HelpPage, PathOf(name));
        EXPECT_EQ(Devices.HelpTopic, topic);
        EXPECT_TRUE(Devices.Boxes.empty());
    }
    static std::string BoxAfter(MenuItem &item) {
        Answer({BoxAnswer::Ok});
        ClickControl(item);
        EXPECT_EQ(LastBox().Title, "Help");
        EXPECT_EQ(LastBox().Icon, BoxIcon::Exclamation);
        return LastBox().Text;
    }
};

TEST_F(HelpMenu, EachEntryOpensItsPage) {
    MakePages();
    ClickControl(LogForm.mnuHelpKeyboardCommands);
    ExpectOpened(kKeys, 101);
    ClickControl(LogForm.mnuHelpContestRules);
    ExpectOpened(kRules, 100);
    ClickControl(LogForm.mnuHelpContents);
    ExpectOpened(kContents, 0);
}

TEST_F(HelpMenu, ServesWithoutALogAndWithOne) {
    MakePages();
    for (MenuItem *item : {&LogForm.mnuHelp, &LogForm.mnuHelpContents, &LogForm.mnuHelpContestRules,
                           &LogForm.mnuHelpKeyboardCommands})
        EXPECT_TRUE(item->Enabled && item->Visible) << item->Caption;
    OpenNewLog(kGeneric);
    ClickControl(LogForm.mnuHelpContestRules);
    ExpectOpened(kRules, 100);
    EXPECT_EQ(ActiveForm(), &LogForm);
}

TEST_F(HelpMenu, StandsAboveAbout) {
    std::vector<std::string> captions;
    for (const NamedControl &named : RegistrationOf(LogForm).Controls)
        if (named.Record->Kind == ControlKind::MenuItem &&
            static_cast<const MenuItem &>(*named.Record).Parent == "mnuHelp")
            captions.push_back(static_cast<const MenuItem &>(*named.Record).Caption);
    EXPECT_EQ(captions, (std::vector<std::string>{"Contents", "Contest Rules", "Keyboard Commands",
                                                  "About ZRTLOG"}));
}

TEST_F(HelpMenu, TellsWhichPageIsMissingAndWhereItBelongs) {
    EXPECT_EQ(BoxAfter(LogForm.mnuHelpContents),
              "There is no help page zrtlog127Help.html.  It belongs in the folder " + PathOf(""));
    EXPECT_EQ(BoxAfter(LogForm.mnuHelpContestRules),
              "There is no help page zrtlog127Help-100.html.  It belongs in the folder " +
                  PathOf(""));
    EXPECT_EQ(BoxAfter(LogForm.mnuHelpKeyboardCommands),
              "There is no help page zrtlog127Help-101.html.  It belongs in the folder " +
                  PathOf(""));
    EXPECT_EQ(Devices.HelpTopic, -1);
}

TEST_F(HelpMenu, TellsThatNothingOpensThePage) {
    MakePages();
    Help.Open = [](const std::string &, int) { return false; };
    EXPECT_EQ(BoxAfter(LogForm.mnuHelpKeyboardCommands),
              "No program opens the help page.  Open it in a web browser: " + PathOf(kKeys));
}

TEST_F(HelpMenu, TakesTheHelpFileItselfOnlyWhereItStandsAlone) {
    MakeFile(kHelpFile, "x");
    ClickControl(LogForm.mnuHelpKeyboardCommands);
    ExpectOpened(kHelpFile, 101);
    MakeFile(kContents, "<p>");
    ClickControl(LogForm.mnuHelpContents);
    ExpectOpened(kContents, 0);
    EXPECT_NE(BoxAfter(LogForm.mnuHelpKeyboardCommands).find("-101.html"), std::string::npos);
}

TEST_F(HelpMenu, FindsThePagesOfTheInstallation) {
    shippedFolder = std::filesystem::path(PathOf("")).parent_path().string() + "-shipped/";
    std::filesystem::create_directory(shippedFolder);
    ProgramFolders.DefaultsFolder = [] { return shippedFolder; };
    ASSERT_EQ(CopyFile(PathOf("zrtlog125.ini"), shippedFolder + kKeys), 0);
    ClickControl(LogForm.mnuHelpKeyboardCommands);
    EXPECT_EQ(Devices.HelpPage, shippedFolder + kKeys);
    // those of the program's own folder come first
    MakePages();
    ClickControl(LogForm.mnuHelpKeyboardCommands);
    ExpectOpened(kKeys, 101);
}

TEST(HelpPageName, IsTheHelpFilesNameWithTheTopic) {
    EXPECT_EQ(HelpPageName("/a.b/help.chm", 0), "help.html");
    EXPECT_EQ(HelpPageName("C:\\zrt\\help.chm", 101), "help-101.html");
    EXPECT_EQ(HelpPageName("help", 7), "help-7.html");
}

} // namespace
} // namespace zrt
