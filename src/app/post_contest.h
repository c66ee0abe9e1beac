// PostContest, the dialog that makes the files after a contest, and the menu entries that open it.
#pragma once

#include "platform/controls.h"

#include <array>

namespace zrt {

struct PostContestWindow : Form {
    Label lblContest; // " Contest: " and its name
    Label lblLogFile; // " Log File: " and the path

    Frame Frame1; // " (1) Enter Contest Information"
    Label lblClass, lblOverlay, lblBand, lblMode, lblPower, lblStation;
    ListBox lstClass, lstOverlay, lstBand, lstMode, lstPower, lstStation;
    Label lblExchange;     // "Exchange Sent:"
    Label lblExchangeSent; // the exchange; the text boxes stand in its place while it is edited
    Button cmdEdit;
    Label lblFields; // above the text boxes
    std::array<TextBox, 4> TextExch;
    Button cmdExchOK, cmdExchCancel;
    CheckBox chkShowRst;

    Frame Frame2; // " (2) Enter User Information"
    Button cmdUserInfo;

    Frame Frame3; // " (3) Choose Files to Make"
    CheckBox chkCabrillo, chkExactFrequency;
    CheckBox chkNormal;
    Label lblNormal; // the text of chkNormal; a click on it ticks the box
    CheckBox chkExport, chkOmitJas, chkOmitUs;

    Button CmdOK, CmdCancel;
};
extern PostContestWindow PostContest;

void RegisterPostContest();

// File, Post-Contest: settles the open log, asks for a log and shows the dialog. Afterwards no log
// is open. With `cabrillo` it asks for a Cabrillo file, of which a rate sheet is made. May pump.
void OpenPostContest(bool cabrillo);

} // namespace zrt
