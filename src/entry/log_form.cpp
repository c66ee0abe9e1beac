#include "entry/log_form.h"

#include "session/bands.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/settings.h"

namespace zrt {

LogFormWindow LogForm;
EntryState Entry;

namespace {

std::string ArrayName(const char *name, std::size_t index) {
    return std::string(name) + "(" + std::to_string(index) + ")";
}

std::string ExchangeCaption() {
    switch (Contest.ContestId) {
    case kArrlDx: return Contest.StationUSVE ? "Power" : "St/Prov";
    case kCqWw: return "  Zone";
    case kAa: return "   Age";
    case kTenMeter: return " Exch";
    case kGeneric: return " Notes";
    case kZrt:
    case kPaqp: return "County";
    default: return "Exchange"; // WPX, NEQP, Sprint, SS, NAQP, CW Ops
    }
}

// How many characters of the exchange field are laid out: one word, a number and a county, a whole
// exchange, or notes. The longest of SS corrects the call: "9999 A VP2E/K1ABC 72 SCV".
int ExchangeColumns() {
    switch (Contest.ContestId) {
    case kArrlDx:
    case kCqWw:
    case kAa:
    case kTenMeter:
    case kWpx: return 8;
    case kSprint:
    case kNaqp:
    case kCwOpen: return 18;
    case kSs:
    case kGeneric: return 24;
    default: return 12;
    }
}

// ---- what the fields take, whichever way it comes

bool IsAlphanumeric(int c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

bool IsOneOf(std::string_view marks, int c) {
    return c < 0x80 && marks.find(static_cast<char>(c)) != std::string_view::npos;
}

// Of calls and typed commands.
bool CallTakes(int c) {
    return IsAlphanumeric(c) || IsOneOf("/.?", c);
}

// Notes are kept as they are typed, but for the quotation marks, which are keys. The letters are
// those that a record has a byte for.
bool NotesTake(int c) {
    const bool letter = c >= 0xC0 && c <= 0xFF && c != 0xD7 && c != 0xF7;
    return letter || (c >= ' ' && c <= '~' && !IsOneOf("\"'`", c));
}

// The parsers read letters, digits and "/"; the other marks stand between them.
bool ExchangeTakes(int c) {
    return Contest.ContestId == kGeneric ? NotesTake(c)
                                         : IsAlphanumeric(c) || IsOneOf(" /.,?+-", c);
}

void EnableLogMenus(bool enabled) {
    LogForm.mnuFileSave.Enabled = enabled;
    LogForm.mnuFileBackup.Enabled = enabled && Log.LogState == kUsersName;
    LogForm.mnuEdit.Enabled = enabled;
    LogForm.mnuEditMarkDecade.Visible = Extensions.StoreDecade;
    LogForm.mnuView.Enabled = enabled;
    LogForm.mnuRadioWK.Enabled = false; // it has no entries yet
    LogForm.mnuBandMode.Enabled = enabled;
    LogForm.mnuModeCW.Enabled = enabled && Contest.ModeCW;
    LogForm.mnuModePhone.Enabled = enabled && Contest.ModePhone;
}

void NameMenu(MenuItem &item, const char *caption, const char *parent) {
    item.Caption = caption;
    item.Parent = parent;
}

void NameMenus() {
    NameMenu(LogForm.mnuFile, "File", "");
    NameMenu(LogForm.mnuFileNew, "New...", "mnuFile");
    NameMenu(LogForm.mnuFileOpen, "Open...", "mnuFile");
    NameMenu(LogForm.mnuFileSave, "Save As...", "mnuFile");
    NameMenu(LogForm.mnuFileBackup, "Backup", "mnuFile");
    NameMenu(LogForm.mnuFilePostBar, "-", "mnuFile");
    NameMenu(LogForm.mnuFilePostContest, "Post-Contest", "mnuFile");
    NameMenu(LogForm.mnuFilePostCabrillo, "Post-Contest Cabrillo", "mnuFile");
    NameMenu(LogForm.mnuFileRecentBar, "-", "mnuFile");
    for (MenuItem &entry : LogForm.mnuFileRecent)
        NameMenu(entry, "", "mnuFile");
    NameMenu(LogForm.mnuFileExitBar, "-", "mnuFile");
    NameMenu(LogForm.mnuFileExit, "Exit", "mnuFile");
    NameMenu(LogForm.mnuEdit, "Edit", "");
    NameMenu(LogForm.mnuEditLast, "Edit Last Entry", "mnuEdit");
    NameMenu(LogForm.mnuEditKillLast, "Kill Last Entry", "mnuEdit");
    NameMenu(LogForm.mnuEditKillAll, "Kill All Entries", "mnuEdit");
    NameMenu(LogForm.mnuEditMarkDecade, "Mark Years as 2020 to 2029...", "mnuEdit");
    NameMenu(LogForm.mnuView, "View", "");
    NameMenu(LogForm.mnuviewCheckPartial, "Check Partial", "mnuView");
    NameMenu(LogForm.mnuMode, "Mode", "");
    NameMenu(LogForm.mnuModeCW, "CW", "mnuMode");
    NameMenu(LogForm.mnuModePhone, "Phone", "mnuMode");
    NameMenu(LogForm.mnuBandMode, "Active Bands...", "mnuMode");
    NameMenu(LogForm.mnuRadioWK, "Radio", "");
    NameMenu(LogForm.mnuHelp, "Help", "");
    NameMenu(LogForm.mnuHelpContents, "Contents", "mnuHelp");
    NameMenu(LogForm.mnuHelpContestRules, "Contest Rules", "mnuHelp");
    NameMenu(LogForm.mnuHelpKeyboardCommands, "Keyboard Commands", "mnuHelp");
    NameMenu(LogForm.mnuHelpAbout, "About ZRTLOG", "mnuHelp");
    // Alt with M, W, X and Z are keys of the entry.
    LogForm.mnuFile.AltLetter = 'F';
    LogForm.mnuEdit.AltLetter = 'E';
    LogForm.mnuView.AltLetter = 'V';
    LogForm.mnuMode.AltLetter = 'o';
    LogForm.mnuRadioWK.AltLetter = 'R';
    LogForm.mnuHelp.AltLetter = 'H';
}

} // namespace

void RegisterLogForm() {
    LogForm = {};
    LogForm.Caption = "ZRTLOG";
    CallField().Takes = CallTakes;
    ExchangeField().Takes = ExchangeTakes;
    NameMenus();
    // All keys are those of the two fields, whatever the mouse has been clicked on.
    for (Control *control : std::initializer_list<Control *>{
             &LogForm.AddButton, &LogForm.CancelButton, &LogForm.CheckCall, &LogForm.CheckExchange})
        control->Focusable = false;
    std::vector<NamedControl> controls = {
        {"InData(0)", &LogForm.InData[0], "Call"},
        {"InData(1)", &LogForm.InData[1], "Received exchange"},
        {"AddButton", &LogForm.AddButton, "Log the contact"},
        {"CancelButton", &LogForm.CancelButton, "Clear the entry, or stop sending"},
        {"CheckCall", &LogForm.CheckCall, "The voice keyer says the call"},
        {"CheckExchange", &LogForm.CheckExchange, "The voice keyer says the exchange"},
        {"lblLog", &LogForm.lblLog, "Log file and contest"},
        {"lblCallsign", &LogForm.lblCallsign, "Caption of the call field"},
        {"lblExchange", &LogForm.lblExchange, "Caption of the exchange field"},
        {"lblDupe", &LogForm.lblDupe, "Duplicate contact"},
        {"QSONrLabel", &LogForm.QSONrLabel, "Number, band and mode of the next contact"},
        {"ActiveLogLabel", &LogForm.ActiveLogLabel, "Radio that logs"},
        {"ScoreLabel", &LogForm.ScoreLabel, "Score"},
        {"MultsLabel", &LogForm.MultsLabel, "Multipliers"},
        {"Modelabel", &LogForm.Modelabel, "Modes of the prior contacts"},
        {"LabelNeededOn", &LogForm.LabelNeededOn, "Bands on which the multiplier is needed"},
        {"CallMatchLabel1", &LogForm.CallMatchLabel1, "Matching calls of this band"},
        {"CallMatchLabel2", &LogForm.CallMatchLabel2, "Matching calls of other bands"},
        {"OldCallMatchLabel", &LogForm.OldCallMatchLabel, "Matching calls of old logs"},
        {"NeedPfxLabel", &LogForm.NeedPfxLabel, "Needed or worked"},
        {"LblWpxCountry", &LogForm.LblWpxCountry, "Country"},
        {"lblHeading", &LogForm.lblHeading, "Heading of the country from the station"},
        {"TimeGMTLabel", &LogForm.TimeGMTLabel, "UTC"},
        {"TimeLocalLabel", &LogForm.TimeLocalLabel, "Local time"},
        {"LabelSendingMsg", &LogForm.LabelSendingMsg, "Message that is being sent"},
        {"lblLast", &LogForm.lblLast, "Last contact"},
        {"lblNotOnDisk", &LogForm.lblNotOnDisk, "Contacts that are not on disk"},
        {"Timer1", &LogForm.Timer1, "Clocks and statistics, every second"},
        {"mnuFile", &LogForm.mnuFile, "File menu"},
        {"mnuFileNew", &LogForm.mnuFileNew, "Start a new log"},
        {"mnuFileOpen", &LogForm.mnuFileOpen, "Open a log"},
        {"mnuFileSave", &LogForm.mnuFileSave, "Give the log a name"},
        {"mnuFileBackup", &LogForm.mnuFileBackup, "Copy the log to the backup drive"},
        {"mnuFilePostBar", &LogForm.mnuFilePostBar, "Above the files after the contest"},
        {"mnuFilePostContest", &LogForm.mnuFilePostContest, "Make the files after a contest"},
        {"mnuFilePostCabrillo", &LogForm.mnuFilePostCabrillo,
         "Make a rate sheet of a Cabrillo file"},
        {"mnuFileRecentBar", &LogForm.mnuFileRecentBar, "Above the recent logs"},
        {"mnuFileRecent(1)", &LogForm.mnuFileRecent[0], "Open the most recent log"},
        {"mnuFileRecent(2)", &LogForm.mnuFileRecent[1], "Open a recent log"},
        {"mnuFileRecent(3)", &LogForm.mnuFileRecent[2], "Open a recent log"},
        {"mnuFileRecent(4)", &LogForm.mnuFileRecent[3], "Open a recent log"},
        {"mnuFileExitBar", &LogForm.mnuFileExitBar, "Above Exit"},
        {"mnuFileExit", &LogForm.mnuFileExit, "End the program"},
        {"mnuEdit", &LogForm.mnuEdit, "Edit menu"},
        {"mnuEditLast", &LogForm.mnuEditLast, "Edit the last contact"},
        {"mnuEditKillLast", &LogForm.mnuEditKillLast, "Take back the last contact"},
        {"mnuEditKillAll", &LogForm.mnuEditKillAll, "Empty the log"},
        {"mnuEditMarkDecade", &LogForm.mnuEditMarkDecade, "Give all contacts their decade"},
        {"mnuView", &LogForm.mnuView, "View menu"},
        {"mnuviewCheckPartial", &LogForm.mnuviewCheckPartial,
         "Show the calls that hold what is typed"},
        {"mnuMode", &LogForm.mnuMode, "Mode menu"},
        {"mnuModeCW", &LogForm.mnuModeCW, "Log CW contacts"},
        {"mnuModePhone", &LogForm.mnuModePhone, "Log phone contacts"},
        {"mnuBandMode", &LogForm.mnuBandMode, "Choose the active bands"},
        {"mnuRadioWK", &LogForm.mnuRadioWK, "Radio and Winkeyer menu"},
        {"mnuHelp", &LogForm.mnuHelp, "Help menu"},
        {"mnuHelpContents", &LogForm.mnuHelpContents, "The manual"},
        {"mnuHelpContestRules", &LogForm.mnuHelpContestRules, "The manual on the contests"},
        {"mnuHelpKeyboardCommands", &LogForm.mnuHelpKeyboardCommands, "The manual on the keys"},
        {"mnuHelpAbout", &LogForm.mnuHelpAbout, "What this program is"},
    };
    for (std::size_t i = 0; i < LogForm.PrevQSO.size(); ++i)
        controls.push_back(
            {ArrayName("PrevQSO", i + 1), &LogForm.PrevQSO[i], "Prior contact on a band"});
    LogForm.CheckCall.Click = [] { Settings.DVKSendCallEnabled = LogForm.CheckCall.Checked; };
    LogForm.CheckExchange.Click = [] {
        Settings.DVKSendExchEnabled = LogForm.CheckExchange.Checked;
    };
    RegisterForm(LogForm, "LogForm", "The entry window", std::move(controls));
    ResetLogForm();
}

void ResetLogForm() {
    for (const NamedControl &named : RegistrationOf(LogForm).Controls) {
        Control &control = *named.Record;
        if (control.Kind != ControlKind::MenuItem)
            control.Visible = false;
        if (control.Kind == ControlKind::Label)
            static_cast<Label &>(control).Caption.clear();
        control.ForeColor = Color::Black;
    }
    for (TextBox &field : LogForm.InData)
        SetFieldText(field, "");
    LogForm.ActiveControl = &LogForm.InData[0];
    LogForm.lblCallsign.Caption = "Callsign";
    LogForm.AddButton.Caption = "Add";
    LogForm.CancelButton.Caption = "Cancel";
    LogForm.CancelButton.Cancel = true;
    LogForm.CheckCall.Caption = "Call";
    LogForm.CheckExchange.Caption = "Exchange";
    EnableLogMenus(false);
}

void ShowEntryFields() {
    LogForm.lblExchange.Caption = ExchangeCaption();
    LogForm.InData[1].Columns = ExchangeColumns();
    for (Control *control : std::initializer_list<Control *>{
             &LogForm.lblLog, &LogForm.lblCallsign, &LogForm.lblExchange, &LogForm.InData[0],
             &LogForm.InData[1], &LogForm.AddButton, &LogForm.CancelButton, &LogForm.QSONrLabel,
             &LogForm.ScoreLabel, &LogForm.MultsLabel, &LogForm.TimeGMTLabel,
             &LogForm.TimeLocalLabel, &LogForm.lblLast})
        control->Visible = true;
    LogForm.CheckCall.Visible = LogForm.CheckExchange.Visible = Contest.ModePhone;
    LogForm.CheckCall.Checked = Settings.DVKSendCallEnabled;
    LogForm.CheckExchange.Checked = Settings.DVKSendExchEnabled;
    EnableLogMenus(true);
    WriteQSONrLabel();
}

void WipeEntry() {
    HideCallDisplay();
    for (TextBox &field : LogForm.InData)
        SetFieldText(field, "");
    LogForm.InData[0].ForeColor = Color::Black;
    Entry.DupeFlag = false;
    Entry.PortableAsked = false;
    Entry.CountyLineFlag = false;
    SetFocus(LogForm.InData[0]);
}

void HideCallDisplay() {
    for (Label *label : {&LogForm.Modelabel, &LogForm.LabelNeededOn, &LogForm.NeedPfxLabel,
                         &LogForm.LblWpxCountry, &LogForm.lblHeading, &LogForm.CallMatchLabel1,
                         &LogForm.CallMatchLabel2, &LogForm.OldCallMatchLabel, &LogForm.lblDupe})
        label->Visible = false;
    for (Label &label : LogForm.PrevQSO)
        label.Visible = false;
    Entry.CallShown.clear();
    LogForm.lblCallsign.Visible = LogForm.lblExchange.Visible = true;
}

void WriteQSONrLabel() {
    const i16 band = CurrentBand();
    LogForm.QSONrLabel.Caption = "QSO Nr " + std::to_string(Log.NextEntry) + "    (" +
                                 LongBandName(band) + (IsCw(band) ? " CW)" : " SSB)");
    LogForm.mnuModeCW.Checked = IsCw(band);
    LogForm.mnuModePhone.Checked = !IsCw(band);
    LogForm.mnuModeCW.Keys = IsCw(band) ? "" : "Ctrl+Left"; // either key goes to the other mode
    LogForm.mnuModePhone.Keys = IsCw(band) ? "Ctrl+Right" : "";
}

void SetFieldText(TextBox &field, const std::string &text) {
    field.Text = text;
    field.SelStart = static_cast<int>(text.size());
    field.SelLength = 0;
}

void ShowLabel(Label &label, const std::string &caption) {
    label.Caption = caption;
    label.Visible = true;
}

} // namespace zrt
