#include "app/contest_chooser.h"

#include "app/session_reset.h"
#include "platform/events.h"
#include "platform/program.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/session_flags.h"
#include "session/settings.h"

namespace zrt {

ChCoFormWindow ChCoForm;

namespace {

enum class FirstFrame { Hidden, Mode, CwOnly, LocationFirst, LocationSecond };
enum class SecondFrame { Hidden, TwoQths, ThreeQths, Hours };

struct ChooserRow {
    i16 ContestId;
    FirstFrame First;
    SecondFrame Second;
    std::array<const char *, 2> FirstTexts;
};

constexpr std::array<const char *, 2> kModes = {"  Phone", "  CW"};

// In the order of the display. NEQP and PAQP logs are taken as out of the area: the first button is
// disabled there, unless the extension offers it.
constexpr auto kRows = std::to_array<ChooserRow>({
    {kAa, FirstFrame::Mode, SecondFrame::Hidden, kModes},
    {kTenMeter, FirstFrame::Hidden, SecondFrame::Hidden, kModes},
    {kArrlDx, FirstFrame::Mode, SecondFrame::TwoQths, kModes},
    {kZrt, FirstFrame::LocationFirst, SecondFrame::Hidden, {" In Zarthia", " Out of State"}},
    {kCqWw, FirstFrame::Mode, SecondFrame::ThreeQths, kModes},
    {kCwOpen, FirstFrame::CwOnly, SecondFrame::Hours, kModes},
    {kNaqp, FirstFrame::Mode, SecondFrame::Hidden, kModes},
    {kNeqp, FirstFrame::LocationSecond, SecondFrame::Hidden, {" In N.E.", " Out of N.E."}},
    {kPaqp, FirstFrame::LocationSecond, SecondFrame::Hidden, {" In PA", " Out of State"}},
    {kSprint, FirstFrame::Mode, SecondFrame::Hidden, kModes},
    {kSs, FirstFrame::Mode, SecondFrame::Hidden, kModes},
    {kWpx, FirstFrame::Mode, SecondFrame::ThreeQths, kModes},
    {kGeneric, FirstFrame::Hidden, SecondFrame::Hidden, kModes},
});
static_assert(kRows.size() == kContests);
constexpr int kFirstRow = 3;       // ZRT
constexpr int kFirstContinent = 3; // NA

const ChooserRow &ChosenRow() {
    return kRows[ChCoForm.lstContest.ListIndex];
}

void Choose(std::span<OptionButton> options, std::size_t chosen) {
    for (std::size_t i = 0; i < options.size(); ++i)
        options[i].Value = i == chosen;
}

void SetFirstFrame(const ChooserRow &row) {
    const bool location =
        row.First == FirstFrame::LocationFirst || row.First == FirstFrame::LocationSecond;
    ChCoForm.Frame1.Visible = row.First != FirstFrame::Hidden;
    ChCoForm.Frame1.Caption = location ? "   Location   " : "   Mode  ";
    for (std::size_t i = 0; i < ChCoForm.optFrame1.size(); ++i) {
        ChCoForm.optFrame1[i].Caption = row.FirstTexts[i];
        ChCoForm.optFrame1[i].Visible = ChCoForm.Frame1.Visible;
    }
    const bool out = row.First == FirstFrame::LocationSecond;
    const bool cwOnly = row.First == FirstFrame::CwOnly;
    ChCoForm.optFrame1[0].Enabled = !cwOnly && (!out || Extensions.InAreaContests);
    if (cwOnly || out)
        Choose(ChCoForm.optFrame1, 1);
    else if (row.First == FirstFrame::LocationFirst)
        Choose(ChCoForm.optFrame1, 0);
}

void SetSecondFrame(const ChooserRow &row) {
    constexpr std::array<const char *, 3> kTwo = {" US/VE", " DX", ""};
    constexpr std::array<const char *, 3> kThree = {" USA", " VE", ""}; // the third is the list's
    constexpr std::array<const char *, 3> kHours = {" 1200-1559Z", " 2000-2359Z", " 0000-0359Z"};
    const bool hours = row.Second == SecondFrame::Hours;
    const bool two = row.Second == SecondFrame::TwoQths;
    const auto &texts = hours ? kHours : two ? kTwo : kThree;
    ChCoForm.Frame2.Visible = row.Second != SecondFrame::Hidden;
    ChCoForm.Frame2.Caption = hours ? " Contest Hours " : " QTH ";
    for (std::size_t i = 0; i < ChCoForm.optFrame2.size(); ++i) {
        ChCoForm.optFrame2[i].Caption = texts[i];
        ChCoForm.optFrame2[i].Visible = ChCoForm.Frame2.Visible && !(two && i == 2);
    }
    Choose(ChCoForm.optFrame2, hours ? 2 : 0);
    ChCoForm.lstContinent.Visible = row.Second == SecondFrame::ThreeQths;
    ChCoForm.lstContinent.Enabled = true;
}

// The list belongs to the third button. The test names SS where it means WPX, whose list so stays
// enabled.
void QthClicked(std::size_t button) {
    const i16 contest = ChosenRow().ContestId;
    if (contest == kCqWw || contest == kSs)
        ChCoForm.lstContinent.Enabled = button == 2;
}

void ContestClicked() {
    SetFirstFrame(ChosenRow());
    SetSecondFrame(ChosenRow());
    QthClicked(0); // choosing the first button counts as a click on it
}

void TakeLocation() {
    switch (Contest.ContestId) {
    case kArrlDx: Contest.StationUSVE = ChCoForm.optFrame2[0].Value; break;
    case kCqWw:
    case kWpx:
        Contest.QthUSA = ChCoForm.optFrame2[0].Value;
        Contest.QthVE = ChCoForm.optFrame2[1].Value;
        Contest.QthContinent =
            Contest.QthUSA || Contest.QthVE ? "" : kContinents[ChCoForm.lstContinent.ListIndex];
        break;
    case kCwOpen:
        Contest.CWOSession = ChCoForm.optFrame2[0].Value   ? i16{1200}
                             : ChCoForm.optFrame2[1].Value ? i16{2000}
                                                           : i16{0};
        break;
    default: break;
    }
}

void Accept() {
    Contest = {};
    Contest.ContestId = ChosenRow().ContestId;
    switch (Contest.ContestId) {
    case kZrt:
    case kPaqp:
    case kTenMeter:
    case kNeqp: Contest.StationInState = ChCoForm.optFrame1[0].Value; break;
    default:
        Contest.ModePhone = ChCoForm.optFrame1[0].Value;
        Contest.ModeCW = ChCoForm.optFrame1[1].Value;
        break;
    }
    TakeLocation();
    HideForm(ChCoForm);
}

void Cancel() {
    Session.ChooserCancelled = true;
    HideForm(ChCoForm);
}

void OpenChooser() {
    Session.ChooserCancelled = false;
    ChCoForm.lstContest.ListIndex = kFirstRow;
    ChCoForm.lstContinent.ListIndex = kFirstContinent;
    ChCoForm.ActiveControl = &ChCoForm.lstContest;
    Choose(ChCoForm.optFrame1, 1);
    ContestClicked();
    ShowModal(ChCoForm);
}

// Both modes in one log, or CW alone in the CW Open.
void SetModes() {
    if (ContestTable(Contest.ContestId).BothModes)
        Contest.ModeCW = Contest.ModePhone = true;
    if (Contest.ContestId == kCwOpen)
        Contest.ModeCW = true;
    if (Contest.ContestId == kSs)
        Contest.SsSectionYear = 97;
}

} // namespace

void RegisterContestChooser() {
    ChCoForm = {};
    ChCoForm.Caption = "Choose Contest";
    for (const ChooserRow &row : kRows)
        ChCoForm.lstContest.Rows.emplace_back(ContestTable(row.ContestId).ChooserRow);
    ChCoForm.lstContest.Click = ContestClicked;
    ChCoForm.lstContest.DoubleClick = Accept;
    ChCoForm.lstContinent.Rows.assign(kContinents.begin(), kContinents.end());
    ChCoForm.cmdOK.Caption = "OK";
    ChCoForm.cmdOK.Default = true;
    ChCoForm.cmdOK.Click = Accept;
    ChCoForm.cmdCancel.Caption = "Cancel";
    ChCoForm.cmdCancel.Cancel = true;
    ChCoForm.cmdCancel.Click = Cancel;
    ChCoForm.CloseBox = Cancel;
    std::vector<NamedControl> controls = {{"lstContest", &ChCoForm.lstContest, "Contest"},
                                          {"Frame1", &ChCoForm.Frame1, "Mode or location"}};
    for (std::size_t i = 0; i < ChCoForm.optFrame1.size(); ++i) {
        ChCoForm.optFrame1[i].Group = 1;
        controls.push_back(
            {"optFrame1(" + std::to_string(i) + ")", &ChCoForm.optFrame1[i], "Mode or location"});
    }
    controls.push_back({"Frame2", &ChCoForm.Frame2, "Location or contest hours"});
    for (std::size_t i = 0; i < ChCoForm.optFrame2.size(); ++i) {
        ChCoForm.optFrame2[i].Group = 2;
        ChCoForm.optFrame2[i].Click = [i] { QthClicked(i); };
        controls.push_back({"optFrame2(" + std::to_string(i) + ")", &ChCoForm.optFrame2[i],
                            "Location or contest hours"});
    }
    controls.push_back({"lstContinent", &ChCoForm.lstContinent, "Continent"});
    controls.push_back({"cmdOK", &ChCoForm.cmdOK, "Start the log"});
    controls.push_back({"cmdCancel", &ChCoForm.cmdCancel, "Start no log"});
    RegisterForm(ChCoForm, "ChCoForm", "Choice of the contest", std::move(controls));
}

bool ChooseNewLog() {
    Session.NewLogRequested = false;
    OpenChooser();
    if (Session.ChooserCancelled || Program.Ending)
        return false;
    Log.LogState = kTemporaryName;
    if (Session.ReplacingLog)
        ResetSession();
    SetModes();
    Log.Header = Log.KeptHeader = BuildHeader(Contest);
    Log.CurrentFormat = true;
    return true;
}

} // namespace zrt
