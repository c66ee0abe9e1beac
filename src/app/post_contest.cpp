#include "app/post_contest.h"

#include "app/file_menu.h"
#include "app/post_contest_input.h"
#include "app/session_reset.h"
#include "app/user_info.h"
#include "entry/log_form.h"
#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/program.h"
#include "postcontest/driver.h"
#include "postcontest/post_contest.h"
#include "postcontest/sent_exchange.h"
#include "session/contests.h"
#include "session/settings.h"

#include <algorithm>

namespace zrt {

PostContestWindow PostContest;

namespace {

// ---- the lists

// What a contest shows beyond class, power and station, and the rows that its lists open on.
struct ListsRow {
    bool Overlay, Band, Mode, Station;
    const char *OpeningBand, *OpeningMode, *OpeningPower;
};

constexpr ListsRow kBandOnly = {false, true, false, true, "ALL", "CW", "HIGH"};
constexpr ListsRow kBandAndOverlay = {true, true, false, true, "ALL", "CW", "HIGH"};
constexpr ListsRow kModeOnly = {false, false, true, true, "ALL", "MIXED", "HIGH"};
constexpr ListsRow kTenMeterLists = {false, false, true, true, "10M", "MIXED", "HIGH"};
constexpr ListsRow kNaqpLists = {false, false, false, true, "ALL", "CW", "LOW"};
constexpr ListsRow kNoLists = {false, false, false, true, "ALL", "CW", "HIGH"};
constexpr ListsRow kCwOpenLists = {false, false, false, false, "ALL", "CW", "HIGH"};

const ListsRow &ListsOfContest() {
    switch (Contest.ContestId) {
    case kArrlDx:
    case kAa: return kBandOnly;
    case kCqWw:
    case kWpx: return kBandAndOverlay;
    case kZrt:
    case kPaqp:
    case kNeqp:
    case kGeneric: return kModeOnly;
    case kTenMeter: return kTenMeterLists;
    case kNaqp: return kNaqpLists;
    case kCwOpen: return kCwOpenLists;
    default: return kNoLists;
    }
}

std::vector<std::string> OverlaysOfContest() {
    switch (Contest.ContestId) {
    case kCqWw: return {"[NONE]", "ROOKIE", "CLASSIC"};
    case kWpx: return {"[NONE]", "ROOKIE", "TB-WIRES", "OVER-50"};
    default: return {"[NONE]"};
    }
}

void OpenList(ListBox &list, Label &label, bool visible, const std::string &row) {
    const auto place = std::find(list.Rows.begin(), list.Rows.end(), row);
    list.ListIndex = static_cast<int>(place - list.Rows.begin());
    list.Visible = label.Visible = visible;
}

void OpenLists() {
    const ListsRow &shown = ListsOfContest();
    PostContest.lstOverlay.Rows = OverlaysOfContest();
    OpenList(PostContest.lstClass, PostContest.lblClass, true, "SINGLE-OP");
    OpenList(PostContest.lstOverlay, PostContest.lblOverlay, shown.Overlay, "[NONE]");
    OpenList(PostContest.lstBand, PostContest.lblBand, shown.Band, shown.OpeningBand);
    OpenList(PostContest.lstMode, PostContest.lblMode, shown.Mode, shown.OpeningMode);
    OpenList(PostContest.lstPower, PostContest.lblPower, true, shown.OpeningPower);
    OpenList(PostContest.lstStation, PostContest.lblStation, shown.Station, "FIXED");
}

std::string Chosen(const ListBox &list) {
    const auto row = static_cast<std::size_t>(list.ListIndex);
    return row < list.Rows.size() ? list.Rows[row] : "";
}

CategoryData ChosenCategory() {
    CategoryData category;
    category.Class = Chosen(PostContest.lstClass);
    category.Overlay = Chosen(PostContest.lstOverlay);
    category.Band = Chosen(PostContest.lstBand);
    category.Mode = Chosen(PostContest.lstMode);
    category.Power = Chosen(PostContest.lstPower);
    category.Station = Chosen(PostContest.lstStation);
    return category;
}

// ---- the sent exchange

constexpr std::size_t kGenericLength = 15; // of ExchangeGeneric, in characters

std::size_t FieldCount() {
    const auto &texts = SentExchangeFields().Texts;
    return static_cast<std::size_t>(std::find(texts.begin(), texts.end(), nullptr) - texts.begin());
}

// The line with the exchange, or the text boxes in its place. While it is edited Enter and Esc
// belong to the boxes, and the dialog can't be left with half an exchange.
void ShowExchange(bool editing) {
    const std::size_t fields = FieldCount();
    PostContest.lblExchangeSent.Caption = SentExchangeText();
    PostContest.lblExchangeSent.Visible = !editing;
    PostContest.cmdEdit.Visible = !editing && fields > 0;
    PostContest.lblFields.Caption = SentExchangeFields().Label;
    PostContest.lblFields.Visible = editing;
    for (std::size_t i = 0; i < PostContest.TextExch.size(); ++i)
        PostContest.TextExch[i].Visible = editing && i < fields;
    PostContest.cmdExchOK.Visible = PostContest.cmdExchOK.Default = editing;
    PostContest.cmdExchCancel.Visible = PostContest.cmdExchCancel.Cancel = editing;
    PostContest.CmdOK.Enabled = PostContest.CmdOK.Default = !editing;
    PostContest.CmdCancel.Enabled = PostContest.CmdCancel.Cancel = !editing;
    PostContest.cmdUserInfo.Enabled = !editing;
}

void EditExchange() {
    for (std::size_t i = 0; i < FieldCount(); ++i)
        SetFieldText(PostContest.TextExch[i],
                     std::string(Trim(Settings.*SentExchangeFields().Texts[i])));
    ShowExchange(true);
    SetFocus(PostContest.TextExch[0]);
}

void EndEditing() {
    ShowExchange(false);
    SetFocus(PostContest.cmdEdit);
}

// False to stay with the boxes, the faulty one selected.
bool AcceptFault(const ExchangeFault &fault) {
    const BoxAnswer answer = ShowMessageBox(
        {fault.Text, fault.Title, fault.IsQuestion ? BoxButtons::YesNo : BoxButtons::Ok,
         fault.IsQuestion ? BoxIcon::Question : BoxIcon::Exclamation});
    if (fault.IsQuestion && answer == BoxAnswer::Yes)
        return true;
    TextBox &field = PostContest.TextExch[static_cast<std::size_t>(fault.Field)];
    SetFocus(field);
    field.SelStart = 0;
    field.SelLength = static_cast<int>(field.Text.size());
    return false;
}

void AcceptExchange() {
    const std::size_t fields = FieldCount();
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < fields; ++i)
        texts.push_back(UpperCase(Trim(PostContest.TextExch[i].Text)));
    if (const auto fault = FindExchangeFault(texts); fault && !AcceptFault(*fault))
        return;
    if (Contest.ContestId == kGeneric)
        texts[0] = CutAt(texts[0], kGenericLength);
    for (std::size_t i = 0; i < fields; ++i)
        Settings.*SentExchangeFields().Texts[i] = texts[i];
    EndEditing();
}

// ---- the boxes

// The options of an export belong to a ticked box.
void ExportClicked() {
    for (CheckBox *box : {&PostContest.chkOmitJas, &PostContest.chkOmitUs}) {
        box->Visible = PostContest.chkExport.Checked;
        if (!PostContest.chkExport.Checked)
            box->Checked = false;
    }
}

void NormalLabelClicked() {
    if (PostContest.chkNormal.Enabled)
        PostContest.chkNormal.Checked = !PostContest.chkNormal.Checked;
}

// Of a Cabrillo file only the rate sheet can be made.
void OpenBoxes() {
    const bool cabrillo = PostData.IsCabrilloInput;
    PostContest.chkCabrillo.Checked = !cabrillo;
    PostContest.chkCabrillo.Enabled = PostContest.chkExactFrequency.Enabled = !cabrillo;
    PostContest.chkExactFrequency.Checked = false;
    PostContest.chkNormal.Checked = cabrillo;
    PostContest.chkNormal.Enabled = PostContest.lblNormal.Enabled =
        !cabrillo && NormalFilesAreMade();
    PostContest.lblNormal.Caption =
        cabrillo ? " Rate Sheet Only" : "Normal Summary, Log and Dupe Files";
    PostContest.chkExport.Checked = false;
    PostContest.chkExport.Enabled = !cabrillo && Outputs.Adif != nullptr;
    PostContest.chkShowRst.Visible = !cabrillo && Contest.ContestId == kGeneric;
    PostContest.chkShowRst.Checked = false;
    ExportClicked();
}

FileChoices ChosenFiles() {
    return {PostContest.chkCabrillo.Checked, PostContest.chkNormal.Checked,
            PostContest.chkExport.Checked, PostContest.chkOmitJas.Checked,
            PostContest.chkOmitUs.Checked};
}

// ---- the dialog

constexpr std::size_t kPathWidth = 60; // characters of a path that its label has room for

// Directories are left out of the middle until a path fits.
std::string ShortPath(const std::string &path, std::size_t width) {
    if (CharactersOf(path) <= width)
        return path;
    const std::string end = ".../" + NameOf(path);
    std::string folder = FolderOf(path);
    while (CharactersOf(folder + end) > width && folder.size() > 1) {
        const auto cut = folder.find_last_of("/\\", folder.size() - 2);
        if (cut == std::string::npos || cut == 0)
            break;
        folder.resize(cut + 1);
    }
    return ShortenMiddle(folder + end, width);
}

void OpenDialog() {
    PostContest.Caption = PostData.IsCabrilloInput ? " Rate Sheet Only" : "Post-Contest Processing";
    PostContest.lblContest.Caption = " Contest: " + PostData.ContestName;
    PostContest.lblLogFile.Caption = " Log File: " + ShortPath(PostData.InputPath, kPathWidth);
    OpenLists();
    OpenBoxes();
    ShowExchange(false);
    PostContest.cmdUserInfo.Enabled = !PostData.IsCabrilloInput;
    PostContest.cmdEdit.Enabled = !PostData.IsCabrilloInput;
    PostContest.CmdOK.Enabled = !PostData.IsCabrilloInput || Outputs.RateSheetOfCabrillo != nullptr;
    PostContest.ActiveControl = &PostContest.lstClass;
    ShowModal(PostContest);
}

bool ExchangeIsThere() {
    if (!SentExchangeIsMissing())
        return true;
    ShowMessageBox(
        {"Error!  You must enter a valid exchange in the User Information box at the top "
         "of this form.  Click on Edit button to do so.",
         "Exchange Error", BoxButtons::Ok, BoxIcon::Exclamation});
    EditExchange();
    return false;
}

void AskAboutGeneric() {
    PostData.ShowRst = PostContest.chkShowRst.Checked;
    PostData.IsCwtFile =
        ShowMessageBox(
            {"Is this Generic Log file actually for a CWOps CWT mini-contst? If Yes, then "
             "the summary sheet will include a column for CWT multipliers.",
             "Is File a CWT Contest?", BoxButtons::YesNo, BoxIcon::Question}) == BoxAnswer::Yes;
}

bool MakeFilesOfLog() {
    const FileChoices choices = ChosenFiles();
    PostData.ExactFrequency = PostContest.chkExactFrequency.Checked;
    ResetSession();
    if (choices.Cabrillo && !ExchangeIsThere())
        return false;
    // Before the tally, so that a call that is put right here reaches every file.
    ShowUserInfo();
    if (Contest.ContestId == kGeneric)
        AskAboutGeneric();
    return !Program.Ending && MakeFiles(choices);
}

bool MakeFilesOfCabrillo() {
    ResetSession();
    return MakeCabrilloRateSheet();
}

std::string FilesWritten() {
    std::string names;
    for (const std::string &name : PostData.FilesWritten)
        names += (names.empty() ? "" : ", ") + name;
    if (names.empty())
        return "Files written: none";
    constexpr std::size_t kFolderWidth = 60; // characters that the window surely shows
    const std::string folder = WithoutSeparator(FolderOf(PostData.InputPath));
    return "Files written: " + names + " in " + ShortenMiddle(folder, kFolderWidth);
}

// After a failure that the operator gives up the dialog stays, with all that he has chosen.
void Accept() {
    PostData.Category = ChosenCategory();
    PostData.FilesWritten.clear();
    if (!(PostData.IsCabrilloInput ? MakeFilesOfCabrillo() : MakeFilesOfLog()))
        return;
    HideForm(PostContest);
    ShowLabel(LogForm.lblLog, FilesWritten());
}

// What was written before a failure that was given up is there.
void Cancel() {
    HideForm(PostContest);
    if (!PostData.FilesWritten.empty())
        ShowLabel(LogForm.lblLog, FilesWritten());
}

void WireDialog() {
    PostContest.cmdEdit.Click = EditExchange;
    PostContest.cmdExchOK.Click = AcceptExchange;
    PostContest.cmdExchCancel.Click = EndEditing;
    PostContest.cmdUserInfo.Click = ShowUserInfo;
    PostContest.lblNormal.Click = NormalLabelClicked;
    PostContest.chkExport.Click = ExportClicked;
    PostContest.CmdOK.Click = Accept;
    PostContest.CmdCancel.Click = Cancel;
    PostContest.CloseBox = Cancel;
}

void WriteCaptions() {
    PostContest.Frame1.Caption = " (1) Enter Contest Information";
    PostContest.Frame2.Caption = " (2) Enter User Information";
    PostContest.Frame3.Caption = " (3) Choose Files to Make";
    PostContest.lblClass.Caption = "Class:";
    PostContest.lblOverlay.Caption = "Overlay:";
    PostContest.lblBand.Caption = "Band:";
    PostContest.lblMode.Caption = "Mode:";
    PostContest.lblPower.Caption = "Power:";
    PostContest.lblStation.Caption = "Station:";
    PostContest.lblExchange.Caption = "Exchange Sent:";
    PostContest.cmdEdit.Caption = "Edit";
    PostContest.cmdExchOK.Caption = PostContest.CmdOK.Caption = "OK";
    PostContest.cmdExchCancel.Caption = PostContest.CmdCancel.Caption = "Cancel";
    PostContest.chkShowRst.Caption = "Show RST";
    PostContest.cmdUserInfo.Caption = "View/Edit User Info";
    PostContest.chkCabrillo.Caption = "Cabrillo Format Log File";
    PostContest.chkExactFrequency.Caption = "Show Exact Frequency";
    PostContest.chkExport.Caption = "ADIF Export File";
    PostContest.chkOmitJas.Caption = " Omit JAs";
    PostContest.chkOmitUs.Caption = " Omit W/Ks";
}

void FillLists() {
    PostContest.lstClass.Rows = {"SINGLE-OP", "SINGLE-OP-ASSISTED", "MULTI-ONE",
                                 "MULTI-TWO", "MULTI-MULTI",        "CHECKLOG"};
    PostContest.lstBand.Rows = {"ALL", "160M", "80M", "40M", "20M", "15M", "10M"};
    PostContest.lstMode.Rows = {"CW", "SSB", "MIXED"};
    PostContest.lstPower.Rows = {"HIGH", "LOW", "QRP"};
    PostContest.lstStation.Rows = {"FIXED", "MOBILE", "PORTABLE", "EXPEDITION", "HQ", "SCHOOL"};
}

} // namespace

void RegisterPostContest() {
    PostContest = {};
    PostContest.Caption = "Post-Contest Processing";
    WriteCaptions();
    FillLists();
    WireDialog();
    std::vector<NamedControl> controls = {
        {"lblContest", &PostContest.lblContest, "Contest of the log"},
        {"Frame1", &PostContest.Frame1, "Contest information"},
        {"lblClass", &PostContest.lblClass, "Heads the classes"},
        {"lstClass", &PostContest.lstClass, "Class"},
        {"lblOverlay", &PostContest.lblOverlay, "Heads the overlays"},
        {"lstOverlay", &PostContest.lstOverlay, "Overlay"},
        {"lblBand", &PostContest.lblBand, "Heads the bands"},
        {"lstBand", &PostContest.lstBand, "Band of the category"},
        {"lblMode", &PostContest.lblMode, "Heads the modes"},
        {"lstMode", &PostContest.lstMode, "Mode of the category"},
        {"lblPower", &PostContest.lblPower, "Heads the powers"},
        {"lstPower", &PostContest.lstPower, "Power"},
        {"lblStation", &PostContest.lblStation, "Heads the stations"},
        {"lstStation", &PostContest.lstStation, "Station"},
        {"lblExchange", &PostContest.lblExchange, "Heads the sent exchange"},
        {"lblExchangeSent", &PostContest.lblExchangeSent, "Exchange that was sent"},
        {"cmdEdit", &PostContest.cmdEdit, "Edit the sent exchange"},
        {"lblFields", &PostContest.lblFields, "What the exchange consists of"}};
    for (std::size_t i = 0; i < PostContest.TextExch.size(); ++i)
        controls.push_back({"TextExch(" + std::to_string(i) + ")", &PostContest.TextExch[i],
                            "Piece " + std::to_string(i + 1) + " of the sent exchange"});
    const std::vector<NamedControl> rest = {
        {"cmdExchOK", &PostContest.cmdExchOK, "Take the exchange"},
        {"cmdExchCancel", &PostContest.cmdExchCancel, "Leave the exchange as it was"},
        {"chkShowRst", &PostContest.chkShowRst, "Print the reports"},
        {"Frame2", &PostContest.Frame2, "User information"},
        {"cmdUserInfo", &PostContest.cmdUserInfo, "View or edit the user profiles"},
        {"Frame3", &PostContest.Frame3, "Files to make"},
        {"chkCabrillo", &PostContest.chkCabrillo, "Cabrillo file for the sponsor"},
        {"chkExactFrequency", &PostContest.chkExactFrequency, "With the frequencies of the radio"},
        {"chkNormal", &PostContest.chkNormal, "Summary, log and dupe files"},
        {"lblNormal", &PostContest.lblNormal, "Ticks the box beside it"},
        {"chkExport", &PostContest.chkExport, "ADIF file"},
        {"chkOmitJas", &PostContest.chkOmitJas, "ADIF file without Japan"},
        {"chkOmitUs", &PostContest.chkOmitUs, "ADIF file without the USA"},
        {"lblLogFile", &PostContest.lblLogFile, "Path of the log"},
        {"CmdOK", &PostContest.CmdOK, "Make the files"},
        {"CmdCancel", &PostContest.CmdCancel, "Make no files"}};
    controls.insert(controls.end(), rest.begin(), rest.end());
    RegisterForm(PostContest, "PostContest", "Files after a contest", std::move(controls));
}

void OpenPostContest(bool cabrillo) {
    if (!SettleLog())
        return;
    const FileDialog logs = {"Select ZRT Log File to Process", Settings.OpenFilePath,
                             "ZRT logs (*.ZRT)|*.ZRT", "ZRT"};
    const FileDialog cabrillos = {"Select ARRL DX, CQWW or WPX Cabrillo Log File to Process",
                                  Settings.OpenFilePath, "Cabrillo logs (*.LOG)|*.LOG", "LOG"};
    const auto path = ShowFileDialog(cabrillo ? cabrillos : logs);
    if (!path)
        return;
    PutLogAway();
    LogForm.lblLog.Caption.clear();
    if (TakePostContestInput(*path))
        OpenDialog();
    const std::string told = LogForm.lblLog.Caption;
    ResetSession();
    if (!told.empty())
        ShowLabel(LogForm.lblLog, told);
    ShowForm(LogForm);
}

} // namespace zrt
