#include "app/main_window.h"

#include "app/about_box.h"
#include "app/band_mode.h"
#include "app/start_up.h"
#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "platform/events.h"
#include "platform/keys.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/settings.h"
#include "support/program.h"

namespace zrt {
namespace {

int meterCalls = 0;

class MainWindow : public ProgramTest {
  protected:
    MainWindow() { StartProgram(); }
    static void PassSeconds(int seconds) {
        PumpUntil(Clock.Steady() + seconds * kSecond, [] { return false; });
    }
};

TEST_F(MainWindow, WritesTheClocksEverySecond) {
    SetUtc({2015, 1, 15, 14, 59, 58});
    PassSeconds(1);
    EXPECT_EQ(LogForm.TimeGMTLabel.Caption, "GMT: 1459");
    PassSeconds(2);
    EXPECT_EQ(LogForm.TimeGMTLabel.Caption, "GMT: 1500");
    EXPECT_EQ(LogForm.TimeLocalLabel.Caption, "LocalTime: 1500");
}

TEST_F(MainWindow, UpdatesTheStatisticsAtEveryTenthTickOfAnOpenLog) {
    meterCalls = 0;
    QsoHooks.UpdateStatistics = [](bool force) { meterCalls += force ? 1 : 100; };
    PassSeconds(30);
    EXPECT_EQ(meterCalls, 0); // no log
    OpenNewLog(kGeneric);
    PassSeconds(30);
    EXPECT_EQ(meterCalls, 3);
}

TEST_F(MainWindow, MenuSwitchesTheMode) {
    OpenNewLog(kGeneric);
    EXPECT_TRUE(LogForm.mnuModeCW.Checked);
    ClickControl(LogForm.mnuModePhone);
    EXPECT_EQ(CurrentBand(), 11);
    EXPECT_TRUE(LogForm.mnuModePhone.Checked && !LogForm.mnuModeCW.Checked);
    ClickControl(LogForm.mnuModeCW);
    EXPECT_EQ(CurrentBand(), 3);
}

TEST_F(MainWindow, MenuOfModesFollowsTheLog) {
    EXPECT_FALSE(LogForm.mnuModeCW.Enabled || LogForm.mnuModePhone.Enabled);
    OpenNewLog(kSs);
    EXPECT_TRUE(LogForm.mnuModeCW.Enabled);
    EXPECT_FALSE(LogForm.mnuModePhone.Enabled);
}

TEST_F(MainWindow, MenuOpensTheDialogs) {
    OpenNewLog(kGeneric);
    static const Form *shown;
    shown = nullptr;
    Devices.Operator = [] {
        shown = ActiveForm();
        Press(kKeyEsc);
        return true;
    };
    ClickControl(LogForm.mnuBandMode);
    EXPECT_EQ(shown, &BandMode);
    ClickControl(LogForm.mnuHelpAbout);
    EXPECT_EQ(shown, &Aboutzrt);
    EXPECT_EQ(ActiveForm(), &LogForm);
    EXPECT_TRUE(Aboutzrt.HasCloseBox);
}

TEST_F(MainWindow, CancelButtonWipesTheEntry) {
    OpenNewLog(kGeneric);
    Fill("K1ZZ", "ANN");
    ClickControl(LogForm.CancelButton);
    EXPECT_EQ(LogForm.InData[0].Text + LogForm.InData[1].Text, "");
}

TEST_F(MainWindow, EveryWindowIsRegisteredOnce) {
    std::vector<std::string> names;
    for (const NamedForm &form : RegisteredForms())
        names.push_back(form.Name);
    for (const char *name : {"LogForm", "ChCoForm", "BandMode", "Aboutzrt", "BkgdForm"})
        EXPECT_EQ(std::count(names.begin(), names.end(), name), 1) << name;
}

} // namespace
} // namespace zrt
