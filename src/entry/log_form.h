// The entry window: its record, and the flags that live on it between a key and a stored contact.
// Nearly every module of entry/ reads these; LogQso, the keyboard and the parsers write them.
#pragma once

#include "platform/controls.h"
#include "session/fixed_text.h"

#include <array>
#include <string>

namespace zrt {

struct LogFormWindow : Form {
    // File, New and the others of the menu bar.
    MenuItem mnuFile, mnuFileNew, mnuFileOpen, mnuFileSave, mnuFileBackup;
    MenuItem mnuFilePostBar, mnuFilePostContest, mnuFilePostCabrillo;
    MenuItem mnuFileRecentBar, mnuFileExitBar, mnuFileExit;
    std::array<MenuItem, 4> mnuFileRecent; // named mnuFileRecent(1) to mnuFileRecent(4)
    MenuItem mnuEdit, mnuEditLast, mnuEditKillLast, mnuEditKillAll, mnuEditMarkDecade;
    MenuItem mnuView, mnuviewCheckPartial;
    MenuItem mnuMode, mnuModeCW, mnuModePhone, mnuBandMode;
    MenuItem mnuRadioWK;
    MenuItem mnuHelp, mnuHelpContents, mnuHelpContestRules, mnuHelpKeyboardCommands, mnuHelpAbout;

    Label lblLog;                   // "Log: " name " - - Contest: " name; no log: "Files written: "
    Label lblCallsign, lblExchange; // captions of the two fields
    Label lblDupe;                  // the DUPE line, in place of the two captions
    std::array<TextBox, 2> InData;  // 0 call, 1 exchange
    Button AddButton, CancelButton;
    CheckBox CheckCall, CheckExchange; // what the voice keyer says
    Label QSONrLabel;                  // number, band and mode of the next contact
    Label ActiveLogLabel;              // the radio that logs, while the other one is not idle
    Label ScoreLabel, MultsLabel;
    Label Modelabel;              // heads the prior contacts
    std::array<Label, 8> PrevQSO; // named PrevQSO(1) to PrevQSO(8)
    Label LabelNeededOn;          // bands on which a multiplier is needed
    Label CallMatchLabel1, CallMatchLabel2, OldCallMatchLabel; // calls that begin as typed
    Label NeedPfxLabel, LblWpxCountry; // "NEEDED" or "Worked", and the country
    Label lblHeading;                  // the direction to the country, in degrees
    Label TimeGMTLabel, TimeLocalLabel;
    Label LabelSendingMsg; // in place of TimeLocalLabel
    Label lblLast;         // the contact that was logged last
    Label lblNotOnDisk;    // the contacts that no write has reached the disk with
    Timer Timer1;          // clocks and statistics, once a second
};
extern LogFormWindow LogForm;

inline TextBox &CallField() {
    return LogForm.InData[0];
}
inline TextBox &ExchangeField() {
    return LogForm.InData[1];
}

// The contact's entry while it is typed, checked and stored.
struct EntryState {
    bool NewMultFlag = false; // the entry in hand is a new multiplier
    i16 NewMultRow = 0;       // the row of the multiplier table that was worked
    bool ParseError = false;  // the parser refused the exchange
    i16 SelStart = 0;         // the part of the exchange field to select then
    i16 SelLength = 0;
    bool DupeFlag = false;        // what the last dupe check said
    bool InsertActive = false;    // the Insert key is at work and has shown the DUPE line itself
    bool SendAfterLog = false;    // the apostrophe key asks for F6 after the store
    bool PortableAsked = false;   // the box about its other form has shown for this call
    bool CountyLineFlag = false;  // a ZRT exchange ended in "/"
    i16 CountyLineStart = 0;      // the entry with the first county of that line
    bool LastSendHadCall = false; // the last CW message held the call
    i16 TuEvery = 1;              // every n-th contact gets the full F5 message, 1 to 9
    i16 TuCount = 1;
    bool CountyContact = false; // a ZRT station at home has worked a county
    std::string SavedCall;      // the last call that was typed or logged; clearing keeps it
    std::string CallShown;      // the call field as it was when it changed last; empty: of no call
                                // does anything show
};
extern EntryState Entry;

void RegisterLogForm();

// The window as it opens: no log, every field of the entry hidden, the menus of a log disabled.
void ResetLogForm();
// A log is open: shows the fields and enables the menus. The captions follow the contest.
void ShowEntryFields();
// Clears the fields and all that was shown for the call, and focuses the call field. What belongs
// to the contact in hand (the DUPE state, the county line) is forgotten with it.
void WipeEntry();
// Forgets and hides what is shown for one call: prior contacts, needed lines, call matches and the
// DUPE line; the captions of the fields show again.
void HideCallDisplay();
// "QSO Nr " of the next contact with band and mode.
void WriteQSONrLabel();
// Puts a text into a field with the caret behind it.
void SetFieldText(TextBox &field, const std::string &text);
// Puts a text on a label and shows it.
void ShowLabel(Label &label, const std::string &caption);

} // namespace zrt
