// The operator in front of the post-contest dialog, and outputs that note what they see. For the
// tests of the dialog and of its input.
#pragma once

#include "app/contest_chooser.h"
#include "app/post_contest.h"
#include "app/start_up.h"
#include "app/user_info.h"
#include "entry/log_form.h"
#include "postcontest/driver.h"
#include "postcontest/post_contest.h"
#include "postcontest/recount.h"
#include "session/log_file.h"
#include "session/settings.h"
#include "session/user_profiles.h"
#include "support/program.h"

#include <cerrno>
#include <deque>
#include <utility>

namespace zrt {

using Deed = std::function<void()>;
using Names = std::vector<std::string>;

// What the outputs saw when they were called.
struct Seen {
    std::string Name;
    PostContestState Data;
    std::string Call; // of the user profile
    i32 Counted = 0;
};
inline std::vector<Seen> seen;
inline std::string failing; // the output that fails, once

inline int Note(const std::string &name) {
    seen.push_back({name, PostData, CurrentProfile().Callsign, Recount.TotalQsos});
    if (name != failing)
        return 0;
    failing.clear();
    return ENOSPC;
}

inline OutputHooks AllOutputs() {
    return {[] { return Note("Summary"); },
            [] { return Note("SummaryGeneric"); },
            [] { return Note("RateSheet"); },
            [] { return Note("AsciiLog"); },
            [] { return Note("DupeFiles"); },
            [](bool omitJas, bool omitUs) {
                return Note(std::string("Adif") + (omitJas ? " -JA" : "") + (omitUs ? " -US" : ""));
            },
            [] { return Note("RateSheetOfCabrillo"); }};
}

inline Names MadeFiles() {
    Names names;
    for (const Seen &output : seen)
        names.push_back(output.Name);
    return names;
}

// The operator in front of the dialogs: one deed each time the program waits for him on PostContest
// or on UserInfo; when none is left he cancels.
class AfterTheContest : public ProgramTest {
  protected:
    AfterTheContest() {
        seen.clear();
        failing.clear();
        StartProgram();
        Settings.ExchangeARRLMult = Settings.ExchangeZRTMult = Settings.ExchangePAQPMult = "MA";
        Settings.ExchangeNEQPMult = "HARCT";
        Settings.ExchangeCQWWMult = "05";
        Settings.ExchangeAAMult = "45";
        Settings.ExchangeSprintName = Settings.ExchangeNAQPName = Settings.ExchangeCWOName = "JOE";
        Settings.ExchangeSprintMult = Settings.ExchangeNAQPMult = "MA";
        Settings.ExchangeSSPrec = "A";
        Settings.ExchangeSSCheck = "72";
        Settings.ExchangeSSSection = "CT";
        PutLog("GEN  ");
    }

    static void PutLog(const std::string &tag, char qthOption = ' ') {
        MakeFile("LOG.ZRT", HeaderBytes(tag, qthOption) + std::string(34, '\0') +
                                EntryBytes(MakeEntry("W1AW", -21155, 5, 3, '1')) +
                                EntryBytes(MakeEntry("K1ZZ", -21155, 6, 3, '1')));
    }
    static void Work(const std::string &file, bool cabrillo, std::deque<Deed> atDialog,
                     std::deque<Deed> atUserInfo = {}) {
        Devices.FileAnswers.emplace_back(file);
        Devices.Operator = [&] {
            const bool user = ActiveForm() == &UserInfo;
            EXPECT_TRUE(user || ActiveForm() == &PostContest);
            auto &deeds = user ? atUserInfo : atDialog;
            Deed deed = user ? [] { ClickControl(UserInfo.cmdOK); } : Deed(ClickCancel);
            if (!deeds.empty()) {
                deed = deeds.front();
                deeds.pop_front();
            }
            deed();
            return true;
        };
        ClickControl(cabrillo ? LogForm.mnuFilePostCabrillo : LogForm.mnuFilePostContest);
        Devices.Operator = nullptr;
        EXPECT_TRUE(atDialog.empty()) << "the dialog closed too early";
        EXPECT_TRUE(atUserInfo.empty());
        EXPECT_FALSE(PostContest.Visible);
        EXPECT_EQ(ActiveForm(), &LogForm);
        EXPECT_EQ(Log.LogState, kNoLog);
        EXPECT_EQ(Log.NextEntry, 1);
    }
    // With the log LOG.ZRT.
    static void Open(std::deque<Deed> atDialog, std::deque<Deed> atUserInfo = {}) {
        Work("LOG.ZRT", false, std::move(atDialog), std::move(atUserInfo));
    }
    static void ClickOk() { ClickControl(PostContest.CmdOK); }
    static void ClickCancel() { ClickControl(PostContest.CmdCancel); }
    static void Tick(CheckBox &box, bool on = true) {
        if (box.Checked != on)
            ClickControl(box);
        EXPECT_EQ(box.Checked, on);
    }
    static void OnlyNormalFiles() {
        Tick(PostContest.chkCabrillo, false);
        Tick(PostContest.chkNormal);
        ClickOk();
    }
    // "VE" tells what shows and may be used.
    static std::string StateOf(const Control &control) {
        return std::string(control.Visible ? "V" : "") + (control.Enabled ? "E" : "");
    }
};

} // namespace zrt
