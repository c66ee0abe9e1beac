#include "app/band_mode.h"

#include "platform/dialogs.h"
#include "platform/events.h"
#include "session/bands.h"
#include "session/contests.h"
#include "session/radio_state.h"

#include <algorithm>

namespace zrt {

BandModeWindow BandMode;

namespace {

constexpr const char *kErrorTitle = "Band Selection Error";
constexpr const char *kNote = "NOTE:\nThese boxes\nselect which\nbands are active\nin contest.\n\n"
                              "To change bands\nwhile operating,\nuse <CTRL-arrow>\nkeys.";

// Which boxes the contest shows, as the highest band position.
int HighestBox() {
    switch (Contest.ContestId) {
    case kGeneric: return kBandPositions;
    case kZrt:
    case kNeqp: return 8;
    default: return 6;
    }
}

void ShowBoxes() {
    for (int i = 0; i < kBandPositions; ++i) {
        CheckBox &box = BandMode.chkBand[i];
        box.Checked = Contest.ActiveBands[i];
        box.Visible = i < HighestBox();
        box.Enabled = Contest.ContestId != kTenMeter || i >= 6; // only 10 m stays
    }
}

void RefuseCurrentBand(int box) {
    if (BandMode.chkBand[box].Checked || box + 1 != BandPosition(CurrentBand()))
        return;
    ShowMessageBox({"No fair -- Can't delete current band.", kErrorTitle, BoxButtons::Ok,
                    BoxIcon::Exclamation});
    BandMode.chkBand[box].Checked = true;
}

// A hidden box keeps its band as it was, and doesn't count as a band that is left.
void Accept() {
    const bool any = std::any_of(BandMode.chkBand.begin(), BandMode.chkBand.end(),
                                 [](const CheckBox &box) { return box.Visible && box.Checked; });
    if (!any) {
        ShowMessageBox({"At least one band must be selected for the program to work.", kErrorTitle,
                        BoxButtons::Ok, BoxIcon::Exclamation});
        ShowBoxes();
        return;
    }
    for (int i = 0; i < kBandPositions; ++i)
        if (BandMode.chkBand[i].Visible)
            Contest.ActiveBands[i] = BandMode.chkBand[i].Checked;
    HideForm(BandMode);
}

} // namespace

void RegisterBandMode() {
    BandMode = {};
    BandMode.Caption = "Active Bands";
    BandMode.lblNote.Caption = kNote;
    BandMode.cmdOK.Caption = "OK";
    BandMode.cmdOK.Default = true;
    BandMode.cmdOK.Click = Accept;
    BandMode.cmdCancel.Caption = "Cancel";
    BandMode.cmdCancel.Cancel = true;
    BandMode.cmdCancel.Click = [] { HideForm(BandMode); };
    std::vector<NamedControl> controls;
    for (int i = 0; i < kBandPositions; ++i) {
        BandMode.chkBand[i].Caption = kBandNamesLong[i];
        BandMode.chkBand[i].Click = [i] { RefuseCurrentBand(i); };
        controls.push_back(
            {"chkBand(" + std::to_string(i + 1) + ")", &BandMode.chkBand[i], "The band is active"});
    }
    controls.push_back({"cmdOK", &BandMode.cmdOK, "Take these bands"});
    controls.push_back({"cmdCancel", &BandMode.cmdCancel, "Leave the bands as they were"});
    controls.push_back({"lblNote", &BandMode.lblNote, "What the boxes do"});
    RegisterForm(BandMode, "BandMode", "Choice of the active bands", std::move(controls));
}

void ShowBandMode() {
    ShowBoxes();
    BandMode.ActiveControl = &BandMode.chkBand[0];
    ShowModal(BandMode);
}

} // namespace zrt
