#include "entry/log_qso.h"

#include "entry/callsign.h"
#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/points.h"
#include "entry/prefill.h"
#include "entry/station_hooks.h"
#include "entry/statistics.h"
#include "entry/utc_clock.h"
#include "platform/dialogs.h"
#include "platform/keys.h"
#include "session/bands.h"
#include "session/contests.h"
#include "session/file_errors.h"
#include "session/log_file.h"
#include "session/radio_state.h"
#include "session/settings.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace zrt {

LogQsoHooks QsoHooks;

namespace {

constexpr std::size_t kLongestCall = 10;

// The lowest and highest frequency that is stored, in kHz.
constexpr float kLowestFrequency = 1800.0F;
constexpr float kHighestFrequency = 29700.0F;

std::string CallText() {
    return UpperCase(Trim(CallField().Text));
}

// The exchange as the record takes it, one byte a character.
std::string ExchangeText() {
    return UpperCase(Trim(ToLatin1(ExchangeField().Text)));
}

void SelectAndFocus(TextBox &field, std::size_t start, std::size_t length) {
    field.SelStart = static_cast<int>(start);
    field.SelLength = static_cast<int>(length);
    SetFocus(field);
}

void SelectAll(TextBox &field) {
    SelectAndFocus(field, 0, field.Text.size());
}

bool ContestIsOneOf(std::initializer_list<i16> contests) {
    return std::find(contests.begin(), contests.end(), Contest.ContestId) != contests.end();
}

// Whether the log takes another contact; if not, the operator has been told.
bool LogTakesContacts() {
    if (IsFull()) {
        ShowMessageBox({"The log is full: 9000 entries.  Save it and start a new log.", "Log Full",
                        BoxButtons::Ok, BoxIcon::Exclamation});
        return false;
    }
    if (!Log.CurrentFormat && Extensions.ProtectOldLogs) {
        ShowMessageBox({"This log is in an old format; contacts can't be added.", "Old Log Format",
                        BoxButtons::Ok, BoxIcon::Exclamation});
        return false;
    }
    return true;
}

// Enter in an empty call field calls CQ.
bool CallIsThere(i16 shift) {
    if (!CallText().empty())
        return true;
    if (Settings.SendF1Enabled && shift != kShift)
        (void)SendMessage(kKeyF1, false);
    SetFocus(CallField());
    return false;
}

bool CallFits() {
    const std::string call = CallText();
    if (CharactersOf(call) <= kLongestCall)
        return true;
    const std::string cut(CutAt(call, kLongestCall));
    const BoxAnswer answer =
        ShowMessageBox({"Only 10 characters allowed for Callsign.  Truncate entry to " + cut + "?",
                        "Entry Too Long", BoxButtons::YesNo, BoxIcon::Question});
    if (answer != BoxAnswer::Yes) {
        SetFocus(CallField());
        return false;
    }
    SetFieldText(CallField(), cut);
    return true;
}

// What has no digit, or no letter, is more often a word that was meant for something else.
bool CallIsMeant() {
    const std::string call = PlainCall(CallField().Text);
    const auto lacks = [&call](std::string_view characters) {
        return call.find_first_of(characters) == std::string::npos;
    };
    const char *missing = lacks("0123456789")                   ? "digit"
                          : lacks("ABCDEFGHIJKLMNOPQRSTUVWXYZ") ? "letter"
                                                                : nullptr;
    if (!Extensions.ModeCommands || missing == nullptr)
        return true;
    const BoxAnswer answer = ShowMessageBox(
        {std::string("There is no ") + missing + " in " + CallText() + ".  Log it as a callsign?",
         "Unusual Callsign", BoxButtons::YesNo, BoxIcon::Question});
    if (answer != BoxAnswer::Yes)
        SetFocus(CallField());
    return answer == BoxAnswer::Yes;
}

// The check ran when the exchange field got the focus. What has changed since, by a cut of the call
// or by a radio on another band, is found without a word: the contact is on its way into the log.
void CheckWhatHasChanged() {
    const std::string call = CallText();
    if (IsCheckedAlready(call) || IsNextCounty(call))
        return;
    FindDupe(call);
    ShowVerdict();
}

// Enter in the exchange field does not repeat the check that ran when it got the focus. False
// if the box about a portable station has given the focus to the exchange, and with that filled in
// one that the operator has not seen yet.
bool CheckForDupe(i16 fieldIndex) {
    if (fieldIndex != 0) {
        CheckWhatHasChanged();
        return true;
    }
    const std::string seen = ExchangeField().Text;
    QsoHooks.Dupecheck(CallText());
    ShowVerdict();
    return ExchangeField().Text == seen;
}

bool AgeIsGood(ParsedExchange &parsed) {
    const std::string text = ExchangeText();
    const double age = Value(text);
    if (!text.empty() && age >= 0 && age <= 99) {
        parsed.Number = ValueI16(text);
        return true;
    }
    Entry.ParseError = true; // keeps the field from being filled in
    ShowMessageBox({"Enter two-digit age between 00 and 99.", "Must Enter Received Age",
                    BoxButtons::Ok, BoxIcon::Critical});
    SelectAll(ExchangeField());
    Entry.ParseError = false;
    return false;
}

// A number may stand on the call.
void SelectRefused(const ParsedExchange &parsed) {
    const auto digits = static_cast<std::size_t>(parsed.DigitsOnCall);
    if (digits > 0 && digits <= CallField().Text.size())
        SelectAndFocus(CallField(), CallField().Text.size() - digits, digits);
    else
        SelectAndFocus(ExchangeField(), static_cast<std::size_t>(Entry.SelStart),
                       static_cast<std::size_t>(Entry.SelLength));
}

bool ExchangeIsGood(ParsedExchange &parsed) {
    parsed.Call = CallText();
    if (Contest.ContestId == kGeneric)
        return true;
    if (Contest.ContestId == kAa)
        return AgeIsGood(parsed);
    QsoHooks.ParseExchange(parsed);
    if (!Entry.ParseError)
        return true;
    if (Contest.ContestId == kWpx) // whose parser leaves its box to the pipeline
        ShowMessageBox({"Number must be between 1 and 9999.", "Invalid Entry", BoxButtons::Ok,
                        BoxIcon::Critical});
    SelectRefused(parsed);
    Entry.ParseError = false; // only now: until here it keeps the field from being filled in
    return false;
}

// A zone or serial on the end of the call was part of what was checked; the call without it may be
// a dupe after all.
void CheckCutCall(const ParsedExchange &parsed) {
    if (!ContestIsOneOf({kCqWw, kWpx}) || parsed.Call == CallText())
        return;
    FindDupe(parsed.Call);
    ShowVerdict();
}

void TakeTime(LogEntry &entry) {
    const ContestTime now = TimeNow();
    entry.Date = now.Date;
    entry.Time = now.Time;
    entry.Reserved = Extensions.StoreDecade ? std::string(1, now.Decade) : std::string();
}

// What the radio reports, if it is under control and on a short-wave band.
std::string RadioFrequencyText() {
    const int radio = Radios.LogRadio - 1;
    if (radio < 0 || radio > 1 || !Radios.RadioRunning[radio] || !IsBandCode(CurrentBand()))
        return "0";
    const float frequency = Radios.RadioFrequency[radio][CurrentBand()];
    if (frequency < kLowestFrequency || frequency > kHighestFrequency)
        return "0";
    char text[16];
    std::snprintf(text, sizeof text, "%.7g", static_cast<double>(frequency));
    return text;
}

void TakeRadio(LogEntry &entry) {
    // A county contact of a ZRT station at home inherits radio and frequency from what is still in
    // the working record: the contact logged before it, or the one that the DUPE line showed since.
    if (Entry.CountyContact)
        return;
    entry.RadioNumber = Radios.LogRadio == 1 ? "1" : Radios.LogRadio == 2 ? "2" : "0";
    entry.Frequency = RadioFrequencyText();
}

void TakeName(LogEntry &entry, const ParsedExchange &parsed) {
    if (Contest.ContestId == kGeneric) {
        const std::string notes = ExchangeText();
        entry.RcvdName = notes.substr(0, 10);
        entry.RcvdExchange = notes.size() > 10 ? notes.substr(10, 5) : std::string();
    } else if (ContestIsOneOf({kSprint, kNaqp, kCwOpen})) {
        entry.RcvdName = ToLatin1(parsed.Name);
    }
}

// Fills the working record from the fields; the call goes into the lists of calls on the way, and
// the multipliers are marked.
NewMults BuildEntry(const ParsedExchange &parsed) {
    CallField().ForeColor = Color::Black;
    const std::string call = PlainCall(parsed.Call);
    LogEntry &entry = Log.WorkingEntry;
    TakeTime(entry);
    entry.BandIndex = CurrentBand();
    entry.Callsign = call;
    Entry.SavedCall = entry.Callsign.Trimmed();
    RecordCall(Log.NextEntry, Entry.SavedCall, entry.BandIndex, PortableTie::Left);

    entry.RcvdNumber = ContestIsOneOf({kNaqp, kGeneric}) ? i16{0} : parsed.Number;
    entry.Points = std::string(1, Entry.DupeFlag ? '0' : PointsFor(entry));
    entry.RcvdExchange = "";
    entry.SentNumber = Log.NextEntry;
    Entry.CountyContact = false;
    const NewMults found = QsoHooks.ApplyMultiplier(entry, parsed);
    TakeRadio(entry);
    TakeName(entry, parsed);
    return found;
}

void StampEntry() {
    const i16 n = Log.NextEntry;
    const OldEntry36 before = n > 1 ? EntryFields(static_cast<i16>(n - 1)) : OldEntry36{};
    StampContact(n, Log.WorkingEntry, before, StampRule::Live);
}

std::string PointsText(const OldEntry36 &entry) {
    const std::string points = entry.Points.Trimmed();
    return Contest.ContestId == kPaqp && points == "3" ? "1.5" : points;
}

// Precedence, check and the section in its first spelling: the record has two letters of it.
std::string SsExchangeShown(std::string_view stored) {
    const i16 row = SsSectionRow(stored.substr(3));
    const std::string section =
        row != 0 ? Multipliers.SsMults[static_cast<std::size_t>(row) - 1].Spellings[0]
                 : std::string(stored.substr(3));
    return std::string(stored.substr(0, 1)) + " " + std::string(stored.substr(1, 2)) + " " +
           std::string(Trim(section));
}

// The exchange as the "Last: " line shows it: the number where the contest has one, then the texts.
std::string ExchangeShown(const OldEntry36 &entry) {
    // The Generic notes run on from one field into the other.
    if (Contest.ContestId == kGeneric)
        return std::string(
            Trim(std::string(entry.RcvdName.Whole()) + std::string(entry.RcvdExchange.Whole())));
    std::string shown;
    if (Contest.ContestId != kNaqp && entry.RcvdNumber != 0)
        shown = std::to_string(entry.RcvdNumber) + " ";
    if (Contest.ContestId == kSs)
        return std::string(TrimRight(shown + SsExchangeShown(entry.RcvdExchange.Whole())));
    if (ContestIsOneOf({kSprint, kNaqp, kCwOpen}))
        shown += entry.RcvdName.Trimmed() + " ";
    return std::string(TrimRight(shown + MultText(entry.RcvdExchange.Trimmed())));
}

void ShowAsLast(const OldEntry36 &entry) {
    const std::string mode = IsCw(entry.BandIndex) ? "CW" : "SSB";
    LogForm.lblLast.Caption = "Last: " + std::string(Trim(ShortBandName(entry.BandIndex))) + " " +
                              mode + "  " + FromLatin1(entry.Callsign.Trimmed()) + "  Nr " +
                              std::to_string(entry.SentNumber) + "  " + ExchangeShown(entry) +
                              "  Pts " + PointsText(entry);
}

bool LineGoesOn() {
    return Contest.ContestId == kZrt && Entry.CountyLineFlag;
}

// The county-line station's next county is entered now: its call and number are offered again, and
// what the check has said of the first one holds for all.
bool OfferNextCounty() {
    if (!LineGoesOn())
        return false;
    CallField().ForeColor = Entry.DupeFlag ? Color::Red : Color::Black;
    SetFieldText(CallField(), FromLatin1(Log.WorkingEntry.Callsign.Trimmed()));
    SetFieldText(ExchangeField(), std::to_string(Log.WorkingEntry.RcvdNumber) + " ");
    SetFocus(ExchangeField());
    return true;
}

void ClearForNextCall() {
    HideCallDisplay();
    for (TextBox &field : LogForm.InData)
        SetFieldText(field, "");
    Entry.DupeFlag = Entry.DupeFlag && LineGoesOn();
    Entry.PortableAsked = false;
    SetFocus(CallField());
    WriteQSONrLabel();
}

// Every TuEvery-th contact gets the full message F5, the others the short F6.
void SendF5OrF6() {
    const auto inRange = [](i16 value) { return value >= 1 && value <= 9 ? value : i16{1}; };
    Entry.TuEvery = inRange(Entry.TuEvery);
    Entry.TuCount = inRange(Entry.TuCount);
    const bool full = Entry.TuCount >= Entry.TuEvery;
    Entry.TuCount = full ? i16{1} : static_cast<i16>(Entry.TuCount + 1);
    (void)SendMessage(full ? kKeyF5 : kKeyF6, false);
}

void SendNextMessage(bool afterApostrophe, i16 shift) {
    if (!Entry.LastSendHadCall || shift == kShift || shift == kCtrl)
        return;
    if (afterApostrophe) {
        if (Settings.LogandSendF6Enabled)
            (void)SendMessage(kKeyF6, false);
    } else if (Settings.LogandSendF5Enabled) {
        SendF5OrF6();
    }
}

} // namespace

void LogQso(i16 fieldIndex, i16 shift) {
    // The wish for F6 holds for this call alone, or a refused entry would send it later.
    const bool afterApostrophe = std::exchange(Entry.SendAfterLog, false);
    Entry.NewMultFlag = false;
    if (QsoHooks.CarryOutCallCommand())
        return;
    if (!LogTakesContacts() || !CallIsThere(shift) || !CallFits() || !CallIsMeant())
        return;
    Entry.SavedCall = ToLatin1(CallText());
    if (!CheckForDupe(fieldIndex))
        return;
    const bool lineBefore = Entry.CountyLineFlag;
    const bool nextCounty = IsNextCounty(CallText());
    ParsedExchange parsed;
    if (!ExchangeIsGood(parsed)) {
        Entry.CountyLineFlag = lineBefore; // what is refused neither begins a line nor ends it
        return;
    }

    if (!nextCounty)
        Entry.CountyLineStart = Log.NextEntry;
    CheckCutCall(parsed);
    const NewMults found = BuildEntry(parsed);
    StoreEntry(Log.NextEntry);
    CountContact(Log.WorkingEntry, found);
    StampEntry();
    QsoHooks.ShowWorkedCountries();
    ShowAsLast(Log.WorkingEntry);
    BringToDisk(); // before the fields clear
    ++Log.NextEntry;
    QsoHooks.UpdateStatistics(false);
    if (Entry.NewMultFlag)
        QsoHooks.ShowNewMultiplier();
    QsoHooks.UpdateLogDisplay();
    ClearForNextCall();
    ShowScore();
    QsoHooks.ClearPartial();
    if (OfferNextCounty())
        return;
    SendNextMessage(afterApostrophe, shift);
}

void BringToDisk() {
    (void)WithRetry(WriteOwedEntries); // what is given up stays owed
    ShowOwedEntries();
}

void ShowLastContact() {
    for (i16 n = static_cast<i16>(Log.NextEntry - 1); n >= 1; --n) {
        const OldEntry36 entry = EntryFields(n);
        if (IsVoid(entry))
            continue;
        ShowAsLast(entry);
        return;
    }
}

void ShowScore() {
    ComputeScore();
    if (Contest.ContestId == kGeneric) {
        LogForm.ScoreLabel.Caption =
            " CW Cties: " + std::to_string(CountriesWorked(Multipliers.GenericCwCountry));
        LogForm.MultsLabel.Caption =
            "SSB Cties: " + std::to_string(CountriesWorked(Multipliers.GenericSsbCountry));
        return;
    }
    LogForm.ScoreLabel.Caption = "Score: " + WithCommas(Statistics.Score);
    LogForm.MultsLabel.Caption = "Mults:  " + std::to_string(Statistics.TotalMults);
}

void ShowOwedEntries() {
    LogForm.lblNotOnDisk.Visible = !Log.Unwritten.empty();
    if (Log.Unwritten.empty())
        return;
    const auto [first, last] = std::minmax_element(Log.Unwritten.begin(), Log.Unwritten.end());
    const auto count = Log.Unwritten.size();
    std::string numbers = std::to_string(count) + (count == 1 ? " QSO, Nr " : " QSOs, Nr ");
    numbers += std::to_string(*first);
    if (*first != *last)
        numbers += " to " + std::to_string(*last);
    LogForm.lblNotOnDisk.Caption = "NOT ON DISK: " + numbers +
                                   ".  It is tried again every 10 seconds and with the next QSO.  "
                                   "File, Save As writes the log to another disk.";
}

} // namespace zrt
