#include "app/session_reset.h"

#include "app/partial_window.h"
#include "entry/dupes.h"
#include "entry/exchange_parsers.h"
#include "entry/log_form.h"
#include "entry/points.h"
#include "entry/prefill.h"
#include "entry/statistics.h"
#include "session/log_file.h"
#include "session/session_flags.h"

namespace zrt {

namespace {

void CloseWindow(const char *name) {
    if (const NamedForm *form = FindForm(name))
        HideForm(*form->Record);
}

void CloseWindows() {
    for (const char *name : {"LogForm", "ViewMult", "QSOStats", "Viewlog", "ZTCTY"})
        CloseWindow(name);
    if (Session.RescanInPlace)
        return;
    for (const char *name : {"ViewMac", "Audio"})
        CloseWindow(name);
}

// TuEvery is the operator's choice for the session; all else belongs to the log that ends. In a
// rescan the log goes on, and with it what was sent last, and to whom.
void ForgetEntry() {
    const EntryState before = Entry;
    Entry = {};
    Entry.TuEvery = before.TuEvery;
    if (!Session.RescanInPlace)
        return;
    Entry.TuCount = before.TuCount;
    Entry.SavedCall = before.SavedCall;
    Entry.LastSendHadCall = before.LastSendHadCall;
}

} // namespace

void ResetSession() {
    CloseWindows();
    // The line of the last contact outlives a rescan.
    const std::string last = LogForm.lblLast.Caption;
    ResetLogForm();
    if (Session.RescanInPlace)
        LogForm.lblLast.Caption = last;
    ForgetEntry();
    Dupes = {};
    if (!Session.RescanInPlace) {
        ForgetPartials();
        Parsers = {};
    }
    Prefill = {};
    Statistics = {};
    Points = {};
    ForgetEntries();
}

} // namespace zrt
