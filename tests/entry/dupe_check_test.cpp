#include "entry/dupes.h"
#include "entry/log_form.h"
#include "entry/old_calls.h"
#include "entry/prior_contacts.h"
#include "session/contests.h"
#include "session/radio_state.h"
#include "support/program.h"

#include <random>

namespace zrt {
namespace {

constexpr i16 k20Cw = 3, k20Ssb = 11, k40Cw = 4;

class DupeCheck : public ProgramTest {
  protected:
    DupeCheck() { OldCalls = {}; }
    ~DupeCheck() override { OldCalls = {}; }

    // A contact as it stands in the log, without the pipeline.
    static LogEntry &Put(std::string_view call, i16 band = k20Cw) {
        const i16 n = Log.NextEntry;
        LogEntry entry = MakeEntry(call, DateCode(2015, 1, 15), 1437, band, '1');
        entry.SentNumber = n;
        Log.LogEntries[n] = entry;
        RecordCall(n, entry.Callsign.Trimmed(), band, PortableTie::Left);
        ++Log.NextEntry;
        return Log.LogEntries[n];
    }
    static void Check(std::string_view call, i16 band = k20Cw) {
        LogForm.InData[1].GotFocus = {}; // which would check again
        Radios.BandIndex = band;
        Dupecheck(call);
    }
    static std::string PriorContacts() {
        std::string text = LogForm.Modelabel.Visible ? LogForm.Modelabel.Caption : "";
        for (const Label &label : LogForm.PrevQSO)
            if (label.Visible)
                text += "|" + label.Caption;
        return text;
    }
    static void ExpectFound(bool seen, bool onBand, bool dupe) {
        EXPECT_EQ(Dupes.SeenBefore, seen);
        EXPECT_EQ(Dupes.DupeOnBand, onBand);
        EXPECT_EQ(Entry.DupeFlag, dupe);
    }
};

// ---- what is found

TEST_F(DupeCheck, FindsNothingInAnEmptyLog) {
    OpenNewLog(kCqWw);
    Check("W1AW");
    ExpectFound(false, false, false);
    EXPECT_EQ(Dupes.LastMatch, 0);
    EXPECT_EQ(PriorContacts(), "");
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(DupeCheck, FindsADupeOnTheBandOnly) {
    OpenNewLog(kCqWw);
    Put("W1AW");
    Put("K1ZZ");
    Check("W1AW");
    ExpectFound(true, true, true);
    EXPECT_EQ(Dupes.LastMatch, 1);
    EXPECT_EQ(Dupes.DupeEntry, 1);
    Check("W1AW", k40Cw);
    ExpectFound(true, false, false);
    EXPECT_EQ(Dupes.LastMatch, 1);
    Check("N1XX");
    ExpectFound(false, false, false);
}

TEST_F(DupeCheck, TakesTheOtherModeForNoDupeButInSs) {
    OpenNewLog(kGeneric);
    Put("W1AW", k20Cw);
    Check("W1AW", k20Ssb);
    ExpectFound(true, false, false);
    OpenNewLog(kSs);
    Put("W1AW", k20Cw);
    Check("W1AW", k20Ssb);
    ExpectFound(true, false, true);
    EXPECT_EQ(Dupes.DupeEntry, 1);
    Check("W1AW", k40Cw);
    ExpectFound(true, false, true);
}

TEST_F(DupeCheck, ShowsTheLastContactInSsAndTheLastOnTheBandElsewhere) {
    OpenNewLog(kSs);
    Put("W1AW", k20Cw);
    Put("W1AW", k40Cw);
    Check("W1AW", k20Cw);
    EXPECT_EQ(Dupes.DupeEntry, 2);
    OpenNewLog(kCqWw);
    Put("W1AW", k20Cw);
    Put("W1AW", k20Cw);
    Put("W1AW", k40Cw);
    Check("W1AW", k20Cw);
    EXPECT_EQ(Dupes.DupeEntry, 2);
    EXPECT_EQ(Dupes.LastMatch, 3);
    EXPECT_EQ(Dupes.SentByBand[k20Cw], 2); // the last one counts
    EXPECT_EQ(Dupes.SentByBand[k40Cw], 3);
}

TEST_F(DupeCheck, DoesNotSeeTheOperatorsMarks) {
    OpenNewLog(kCqWw);
    Put("W1AW");
    Check(" W1.AW?");
    ExpectFound(true, true, true);
}

TEST_F(DupeCheck, ReadsTheFieldsBytesAsTheLogHasThem) {
    OpenNewLog(kGeneric);
    Put("K\xC4"
        "1"); // Latin-1
    Check("K\xC3\x84"
          "1"); // the same in UTF-8
    ExpectFound(true, true, true);
}

TEST_F(DupeCheck, TakesOnlyTheSameTextForEqualNotTheSameSum) {
    OpenNewLog(kCqWw);
    Put("W1AW");
    ASSERT_EQ(TextHash("W1AW"), TextHash("A1WW"));
    Check("A1WW");
    ExpectFound(false, false, false);
    Check("W1AWX");
    ExpectFound(false, false, false);
}

TEST_F(DupeCheck, ComparesMoreThanTheTenCharactersOfARecord) {
    OpenNewLog(kGeneric);
    Put("VP2E/K1ABC");
    Check("VP2E/K1ABCD");
    ExpectFound(false, false, false);
}

TEST_F(DupeCheck, DoesNotFindAKilledEntry) {
    OpenNewLog(kCqWw);
    Put("W1AW");
    Put("K1ZZ");
    --Log.NextEntry; // the last entry is killed
    Check("K1ZZ");
    ExpectFound(false, false, false);
    Put("N1XX"); // in its place
    Check("K1ZZ");
    ExpectFound(false, false, false);
    Check("N1XX");
    EXPECT_EQ(Dupes.LastMatch, 2);
}

TEST_F(DupeCheck, FindsAnEntryUnderItsNewCallOnly) {
    OpenNewLog(kCqWw);
    Put("W1AW");
    Put("W1AW");
    Put("W1AW");
    ReplaceCall(2, "K1ZZ");
    Check("K1ZZ");
    EXPECT_EQ(Dupes.LastMatch, 2);
    Check("W1AW");
    EXPECT_EQ(Dupes.LastMatch, 3);
    ReplaceCall(3, "K1ZZ");
    ReplaceCall(2, "W1AW");
    Check("W1AW");
    EXPECT_EQ(Dupes.LastMatch, 2);
    EXPECT_EQ(Dupes.CallHash[3], TextHash("K1ZZ"));
}

TEST_F(DupeCheck, TakesAVoidedEntryForTheCallVoid) {
    OpenNewLog(kCqWw);
    Put("VOID");
    Check("VOID");
    ExpectFound(true, true, true);
    Check("W1AW");
    ExpectFound(false, false, false);
}

TEST_F(DupeCheck, FindsEntriesWithADamagedBand) {
    OpenNewLog(kGeneric);
    Put("W1AW", k20Cw).BandIndex = 77;
    Put("W1AW", k20Cw).BandIndex = -3;
    Check("W1AW");
    ExpectFound(true, false, false);
    EXPECT_EQ(Dupes.LastMatch, 2);
    for (const i16 number : Dupes.SentByBand)
        EXPECT_EQ(number, 0);
}

TEST_F(DupeCheck, FindsWhatTheRescanHasRead) {
    OpenNewLog(kGeneric);
    LoadTemporary(HeaderBytes("GEN  ") + std::string(34, '\0') +
                  EntryBytes(MakeEntry("W1AW", DateCode(2015, 1, 15), 1437, k20Cw, '1')) +
                  EntryBytes(MakeEntry("K1ZZ/4", DateCode(2015, 1, 15), 1438, k40Cw, '1')));
    Check("W1AW");
    ExpectFound(true, true, true);
    Check("K1ZZ", k40Cw);
    ExpectFound(true, true, true);
    EXPECT_TRUE(Dupes.PortableMatch);
}

// ---- portable forms

TEST_F(DupeCheck, TakesThePortableFormForTheSameStation) {
    OpenNewLog(kCqWw);
    Put("W1AW");
    Check("W1AW/4");
    ExpectFound(true, true, true);
    EXPECT_TRUE(Dupes.PortableMatch);
    EXPECT_TRUE(Devices.Boxes.empty()); // a dupe says it all
}

TEST_F(DupeCheck, TellsOfAStationThatIsKnownAsNonportable) {
    OpenNewLog(kCqWw);
    Put("W1AW");
    SetFocus(LogForm.InData[0]);
    Answer({BoxAnswer::Ok});
    Check("W1AW/4", k40Cw);
    ExpectFound(true, false, false);
    EXPECT_EQ(LastBox().Title, "Portable Station?");
    EXPECT_EQ(LastBox().Text, "This station is also in the log as a nonportable:  W1AW");
    EXPECT_EQ(LogForm.ActiveControl, &LogForm.InData[1]);
}

TEST_F(DupeCheck, TellsOfAStationThatIsKnownAsPortable) {
    OpenNewLog(kCqWw);
    Put("W1AW/4");
    SetFocus(LogForm.InData[0]);
    Answer({BoxAnswer::Ok});
    Check("W1AW", k40Cw);
    EXPECT_TRUE(Dupes.PortableMatch);
    EXPECT_EQ(LastBox().Text, "This station is also in the log as a portable:  W1AW/4");
    EXPECT_EQ(LogForm.ActiveControl, &LogForm.InData[1]);
}

TEST_F(DupeCheck, ForgetsThePortableMatchWithTheNextCall) {
    OpenNewLog(kCqWw);
    Put("W1AW");
    Put("K1ZZ", k40Cw);
    Check("W1AW/4"); // a dupe
    ASSERT_TRUE(Dupes.PortableMatch);
    Check("K1ZZ");
    EXPECT_FALSE(Dupes.PortableMatch);
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(DupeCheck, DoesNotTakeASlashAloneForAMatch) {
    OpenNewLog(kCqWw);
    Put("W1AW/4", k40Cw);
    Check("W1AW/4"); // as itself; the base call is not in the log
    EXPECT_FALSE(Dupes.PortableMatch);
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(DupeCheck, SaysNothingOfAPortableEntryThatWasKilled) {
    OpenNewLog(kCqWw);
    Put("W1AW/4");
    --Log.NextEntry;
    Check("W1AW");
    ExpectFound(false, false, false);
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(DupeCheck, KnowsNoOtherFormBeyond80Portables) {
    OpenNewLog(kCqWw);
    for (int i = 0; i < 80; ++i)
        Put("K" + std::to_string(i) + "AA/P");
    Put("W1AW/4");
    Check("K79AA");
    ExpectFound(true, true, true);
    Check("W1AW");
    ExpectFound(false, false, false);
    Check("W1AW/4");
    ExpectFound(true, true, true);
}

TEST_F(DupeCheck, TakesTheLeftSideOfATieForTheBase) {
    OpenNewLog(kGeneric);
    Put("AB1", k20Cw);
    Put("CD2", k20Cw);
    Check("AB1/CD2");
    EXPECT_EQ(Dupes.LastMatch, 1);
}

TEST_F(DupeCheck, SearchesSilentlyOnRequest) {
    OpenNewLog(kCqWw);
    Put("W1AW");
    LogForm.LabelNeededOn.Visible = true;
    FindDupe("W1AW");
    ExpectFound(true, true, true);
    EXPECT_EQ(PriorContacts(), "");
    EXPECT_TRUE(LogForm.LabelNeededOn.Visible);
    Radios.BandIndex = k40Cw;
    FindDupe("W1AW/4");
    EXPECT_TRUE(Dupes.PortableMatch);
    EXPECT_TRUE(Devices.Boxes.empty());
}

// ---- the search by index against a run through the log

struct Found {
    bool SeenBefore = false, DupeOnBand = false, PortableMatch = false, DupeFlag = false;
    i16 LastMatch = 0, DupeEntry = 0;
    SentNumbers SentByBand{};
    friend bool operator==(const Found &, const Found &) = default;
};

Found WhatWasFound() {
    return {Dupes.SeenBefore, Dupes.DupeOnBand, Dupes.PortableMatch, Entry.DupeFlag,
            Dupes.LastMatch,  Dupes.DupeEntry,  Dupes.SentByBand};
}

// The rules word for word: every entry whose sum is that of the call or of its other form.
Found PlainLoop(std::string call, i16 dupeEntryBefore) {
    Found found;
    found.DupeEntry = dupeEntryBefore;
    std::erase_if(call, [](char c) { return c == '.' || c == '?'; });
    std::string other;
    const auto slash = call.find('/');
    if (slash != std::string::npos) {
        const std::string left = call.substr(0, slash), right = call.substr(slash + 1);
        other = right.size() > left.size() ? right : left;
    } else {
        for (std::size_t i = 0; i < Dupes.PortableTable.size() && other.empty(); ++i)
            if (Dupes.PortableTable[i].BaseCall.Trimmed() == call) {
                other = Dupes.PortableTable[i].FullCall.Trimmed();
                found.PortableMatch = true;
            }
    }
    for (i16 n = 1; n < Log.NextEntry; ++n) {
        const i16 hash = Dupes.CallHash[n];
        if (hash != TextHash(call) && (other.empty() || hash != TextHash(other)))
            continue;
        const std::string stored(TrimRight(Dupes.CallText[n].Whole()));
        const bool asOther = !other.empty() && stored == other && stored != call;
        if (stored != call && !asOther)
            continue;
        found.PortableMatch = found.PortableMatch || asOther;
        found.SeenBefore = true;
        found.LastMatch = n;
        const i16 band = Log.LogEntries[n].BandIndex;
        if (Contest.ContestId == kSs)
            found.DupeEntry = n;
        if (band == CurrentBand()) {
            found.DupeOnBand = true;
            if (Contest.ContestId != kSs)
                found.DupeEntry = n;
        }
        found.SentByBand[static_cast<std::size_t>(band)] = Log.LogEntries[n].SentNumber;
    }
    found.DupeFlag = found.SeenBefore && (Contest.ContestId == kSs || found.DupeOnBand);
    return found;
}

// Few letters, so that calls, sums and bases meet often.
std::string RandomCall(std::mt19937 &random, std::string_view letters) {
    std::string call;
    const std::size_t length = 1 + random() % 7;
    for (std::size_t i = 0; i < length; ++i)
        call += letters[random() % letters.size()];
    return call;
}

TEST_F(DupeCheck, FindsByIndexWhatARunThroughTheLogFinds) {
    int matches = 0, portables = 0, falseSums = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        BeginProcess(Devices.ProgramFolder);
        Contest = CwContest(seed % 3 == 0 ? kSs : kGeneric);
        Log.CurrentFormat = true;
        const int entries = 1 + static_cast<int>(random() % 200);
        for (int i = 0; i < entries; ++i) {
            Put(RandomCall(random, "AB1/"), static_cast<i16>(1 + random() % 24));
            if (random() % 20 == 0)
                --Log.NextEntry; // killed
            else if (random() % 20 == 0)
                ReplaceCall(static_cast<i16>(1 + random() % (Log.NextEntry - 1)),
                            RandomCall(random, "AB1/"));
        }
        for (int i = 0; i < 300; ++i) {
            const std::string call = RandomCall(random, "AB1/.?");
            SCOPED_TRACE(call);
            Radios.BandIndex = static_cast<i16>(1 + random() % 24);
            const Found expected = PlainLoop(call, Dupes.DupeEntry);
            FindDupe(call);
            ASSERT_EQ(WhatWasFound(), expected);
            matches += expected.SeenBefore;
            portables += expected.SeenBefore && expected.PortableMatch;
            for (i16 n = 1; n < Log.NextEntry; ++n)
                falseSums +=
                    Dupes.CallHash[n] == TextHash(call) && Dupes.CallText[n].Trimmed() != call;
        }
    }
    // The comparison is worth something only if each of these has happened often.
    EXPECT_GT(matches, 1000);
    EXPECT_GT(portables, 500);
    EXPECT_GT(falseSums, 1000);
}

// ---- the table of prior contacts

TEST_F(DupeCheck, ShowsTheNumbersOfTheLogsModeByBand) {
    for (const i16 contest : {kArrlDx, kCqWw, kSprint, kWpx, kAa, kNaqp, kCwOpen}) {
        SCOPED_TRACE(contest);
        OpenNewLog(contest);
        Put("W1AW", 1);
        Put("W1AW", 6);
        Put("W1AW", 14); // the other mode
        Check("W1AW", 2);
        EXPECT_EQ(PriorContacts(), " CW:|10m\n1|15m\n  --|20m\n  --|40m\n  --|80m\n  --|160\n2");
    }
}

TEST_F(DupeCheck, ShowsPhoneNumbersInAPhoneLog) {
    ContestState contest = CwContest(kCqWw);
    contest.ModeCW = false;
    contest.ModePhone = true;
    OpenNewLog(contest);
    Put("W1AW", 9);
    Put("W1AW", 1);
    Check("W1AW", 10);
    EXPECT_EQ(PriorContacts(), "SSB:|10m\n1|15m\n  --|20m\n  --|40m\n  --|80m\n  --|160\n  --");
}

TEST_F(DupeCheck, ShowsBothModesWhereALogHasBoth) {
    for (const i16 contest : {kZrt, kPaqp, kNeqp}) {
        SCOPED_TRACE(contest);
        OpenNewLog(contest);
        Put("W1AW", k20Cw);
        Put("W1AW", k20Ssb);
        Put("W1AW", 14);
        Check("W1AW", k40Cw);
        EXPECT_EQ(PriorContacts(), " CW:\nSSB:|10m\n  --\n  --|15m\n  --\n  --|20m\n1\n2|"
                                   "40m\n  --\n  --|80m\n  --\n  --|160\n  --\n3");
    }
}

TEST_F(DupeCheck, ShowsOneBandInThe10mContest) {
    OpenNewLog(kTenMeter);
    Put("W1AW", 9);
    Check("W1AW", 1);
    EXPECT_EQ(PriorContacts(), " CW:\nSSB:|10m\n  --\n1");
}

TEST_F(DupeCheck, ShowsTheWorkedBandsOfAGenericLogOnly) {
    OpenNewLog(kGeneric);
    Put("W1AW", 16); // 2 m SSB
    Put("W1AW", k20Cw);
    Put("W1AW", 23); // 30 m CW
    Put("W1AW", 17); // 12 m SSB
    Check("W1AW", k40Cw);
    EXPECT_EQ(PriorContacts(), " CW:\nSSB:|20m\n2\n |2m \n \n1|12m\n \n4|30m\n3\n ");
}

TEST_F(DupeCheck, ShowsAtMostEightBandsOfAGenericLog) {
    OpenNewLog(kGeneric);
    for (const i16 code : kPhoneCodes)
        Put("W1AW", code);
    Check("W1AW", k20Cw);
    EXPECT_EQ(LogForm.PrevQSO[7].Caption, "2m \n \n8");
    EXPECT_TRUE(LogForm.PrevQSO[7].Visible);
}

TEST_F(DupeCheck, ShowsNoTableInSs) {
    OpenNewLog(kSs);
    Put("W1AW", k20Cw);
    LogForm.CallMatchLabel1.Visible = true;
    Check("W1AW", k40Cw);
    EXPECT_EQ(PriorContacts(), " CW:"); // the mode, and no bands
    EXPECT_FALSE(LogForm.CallMatchLabel1.Visible);
}

TEST_F(DupeCheck, ReplacesWhatWasShownForTheCallBefore) {
    OpenNewLog(kCqWw);
    Put("W1AW");
    Check("W1AW");
    ASSERT_NE(PriorContacts(), "");
    LogForm.LabelNeededOn.Visible = LogForm.CallMatchLabel1.Visible = true;
    LogForm.Modelabel.ForeColor = Color::Red;
    Check("K1ZZ");
    EXPECT_EQ(PriorContacts(), "");
    EXPECT_FALSE(LogForm.LabelNeededOn.Visible);
    EXPECT_TRUE(LogForm.CallMatchLabel1.Visible); // nothing takes their place
    for (Label *label :
         {&LogForm.CallMatchLabel1, &LogForm.CallMatchLabel2, &LogForm.OldCallMatchLabel})
        label->Visible = true;
    Check("W1AW");
    for (Label *label :
         {&LogForm.CallMatchLabel1, &LogForm.CallMatchLabel2, &LogForm.OldCallMatchLabel})
        EXPECT_FALSE(label->Visible);
    EXPECT_EQ(LogForm.Modelabel.ForeColor, Color::Black);
}

TEST_F(DupeCheck, MarksTheBandsOfTheRadios) {
    OpenNewLog(kZrt);
    Put("W1AW", k20Cw);
    const auto colors = [] {
        std::string text;
        for (std::size_t i = 0; i < 6; ++i) {
            const Color color = LogForm.PrevQSO[i].ForeColor;
            text += color == Color::LightBlue ? '1' : color == Color::LightRed ? '2' : '-';
            EXPECT_TRUE(text.back() != '-' || color == Color::Black);
        }
        return text;
    };
    Radios.LogRadio = 1;
    Radios.RadioBandMode = {k20Cw, k40Cw};
    Check("W1AW", k20Cw);
    EXPECT_EQ(colors(), "--12--");
    Check("W1AW", 10); // 15 m SSB, which radio 1 has just come to
    EXPECT_EQ(colors(), "-1-2--");
    Radios.LogRadio = 2;
    Radios.RadioBandMode = {k20Ssb, k40Cw};
    Check("W1AW", 13); // 80 m SSB
    EXPECT_EQ(colors(), "--1-2-");
    Check("W1AW", k20Cw); // both: that of the log radio
    EXPECT_EQ(colors(), "--2---");
    Radios.LogRadio = 1;
    Radios.RadioBandMode = {k20Cw, k20Ssb};
    Check("W1AW", k20Cw);
    EXPECT_EQ(colors(), "--1---");
}

// ---- the DUPE line

struct DupeLineRow {
    i16 ContestId;
    bool ShowsHis;
};

TEST_F(DupeCheck, ShowsTheDupeInTheLineOfTheContest) {
    for (const DupeLineRow row : {DupeLineRow{kArrlDx, false},
                                  {kZrt, true},
                                  {kCqWw, false},
                                  {kSprint, true},
                                  {kSs, true},
                                  {kWpx, true},
                                  {kAa, false},
                                  {kPaqp, true},
                                  {kNaqp, false},
                                  {kTenMeter, false},
                                  {kNeqp, false},
                                  {kGeneric, false},
                                  {kCwOpen, true}}) {
        SCOPED_TRACE(row.ContestId);
        OpenNewLog(row.ContestId);
        LogEntry &entry = Put("W1AW");
        entry.Time = 5;
        entry.RcvdNumber = 77;
        entry.SentNumber = 1234;
        Check("W1AW");
        DupeLabelShow();
        EXPECT_EQ(LogForm.lblDupe.Caption, row.ShowsHis ? "DUPE - 1/15/15  0005Z  His #77  My #1234"
                                                        : "DUPE - 1/15/15  0005Z  My #1234");
        EXPECT_TRUE(LogForm.lblDupe.Visible);
        EXPECT_FALSE(LogForm.lblCallsign.Visible);
        EXPECT_FALSE(LogForm.lblExchange.Visible);
        EXPECT_EQ(Log.WorkingEntry, entry);
    }
}

TEST_F(DupeCheck, ShowsTheYearsDecadeWhereTheEntryHasIt) {
    OpenNewLog(kCqWw);
    LogEntry &entry = Put("W1AW");
    entry.Date = DateCode(2026, 11, 7);
    Check("W1AW");
    DupeLabelShow();
    EXPECT_EQ(LogForm.lblDupe.Caption, "DUPE - 11/07/06  1437Z  My #1");
    entry.Reserved = "2";
    DupeLabelShow();
    EXPECT_EQ(LogForm.lblDupe.Caption, "DUPE - 11/07/26  1437Z  My #1");
}

TEST_F(DupeCheck, ShowsADupeOfAnOldLog) {
    OpenNewLog(kCqWw);
    Log.CurrentFormat = false;
    OldEntry26 &entry = Log.OldEntries26[1];
    entry.Callsign = "W1AW";
    entry.BandIndex = k20Cw;
    entry.SentNumber = 1;
    entry.Date = DateCode(1998, 10, 24);
    entry.Time = 2359;
    Log.LogEntries[1].Reserved = "2"; // of another log
    Log.NextEntry = 2;
    RecordCall(1, "W1AW", k20Cw, PortableTie::Right);
    Check("W1AW");
    ExpectFound(true, true, true);
    DupeLabelShow();
    EXPECT_EQ(LogForm.lblDupe.Caption, "DUPE - 10/24/98  2359Z  My #1");
    EXPECT_EQ(Log.WorkingOld26, entry);
}

TEST_F(DupeCheck, ShowsNoEntryThatIsNotInTheLog) {
    OpenNewLog(kCqWw);
    LogForm.lblDupe.Visible = false;
    DupeLabelShow();
    EXPECT_FALSE(LogForm.lblDupe.Visible);
    Put("W1AW");
    Check("W1AW");
    --Log.NextEntry;
    DupeLabelShow();
    EXPECT_FALSE(LogForm.lblDupe.Visible);
}

TEST_F(DupeCheck, TellsWhetherACheckStillHolds) {
    OpenNewLog(kCqWw);
    Put("W1AW");
    Check("K1ZZ");
    EXPECT_TRUE(IsCheckedAlready("K1ZZ?"));
    EXPECT_FALSE(IsCheckedAlready("K1ZZA"));
    Radios.BandIndex = k40Cw;
    EXPECT_FALSE(IsCheckedAlready("K1ZZ"));
    Radios.BandIndex = k20Cw;
    Put("K1ZZ");
    EXPECT_FALSE(IsCheckedAlready("K1ZZ"));
}

// ---- the call-match lines

TEST_F(DupeCheck, ListsTheCallsThatBeginAsTyped) {
    OpenNewLog(kCqWw);
    for (const char *call : {"K1ZZ", "K1Z/4", "K1ZA", "K1Y", "K2ZZ"})
        Put(call, k20Cw);
    Put("K1ZZ", k40Cw);
    Put("K1ZB", k40Cw);
    Radios.BandIndex = k20Cw;
    ShowCallMatches("K1Z");
    EXPECT_EQ(LogForm.CallMatchLabel1.Caption, "This band: K1Z/4 K1ZA K1ZZ ");
    EXPECT_EQ(LogForm.CallMatchLabel2.Caption, "Other bands: K1ZB K1ZZ ");
    EXPECT_TRUE(LogForm.CallMatchLabel1.Visible);
    EXPECT_TRUE(LogForm.CallMatchLabel2.Visible);
    EXPECT_EQ(LogForm.CallMatchLabel1.ForeColor, Color::Black);
    EXPECT_EQ(LogForm.CallMatchLabel2.ForeColor, Color::Black);
    EXPECT_FALSE(LogForm.OldCallMatchLabel.Visible);
    ShowCallMatches("N");
    EXPECT_EQ(LogForm.CallMatchLabel1.Caption, "This band: ");
    EXPECT_EQ(LogForm.CallMatchLabel2.Caption, "Other bands: ");
}

TEST_F(DupeCheck, ListsCallsForATextInAnyForm) {
    OpenNewLog(kCqWw);
    Put("K\xC4"
        "1"); // Latin-1
    for (const char *text : {" k\xC3\x84", "K\xC3\x84"
                                           "1  "}) {
        ShowCallMatches(text);
        EXPECT_EQ(LogForm.CallMatchLabel1.Caption, "This band: K\xC3\x84"
                                                   "1 ");
    }
}

TEST_F(DupeCheck, NamesTheMatchLinesByContest) {
    for (i16 contest = 1; contest <= kContests; ++contest) {
        SCOPED_TRACE(contest);
        OpenNewLog(contest);
        ShowCallMatches("K");
        const bool bothOnManyBands =
            contest == kZrt || contest == kPaqp || contest == kNeqp || contest == kGeneric;
        const bool ten = contest == kTenMeter;
        EXPECT_EQ(LogForm.CallMatchLabel1.Caption, bothOnManyBands ? "This bd/md: "
                                                   : ten           ? "This mode: "
                                                                   : "This band: ");
        EXPECT_EQ(LogForm.CallMatchLabel2.Caption, bothOnManyBands ? "Other bd/mds: "
                                                   : ten           ? "Other mode: "
                                                                   : "Other bands: ");
        EXPECT_EQ(LogForm.CallMatchLabel2.ForeColor, contest == kSs ? Color::Red : Color::Black);
    }
}

TEST_F(DupeCheck, ListsAtMost100Calls) {
    OpenNewLog(kCqWw);
    for (int i = 100; i < 300; ++i)
        Put("K1A" + std::to_string(i));
    ShowCallMatches("K1A");
    const std::string &line = LogForm.CallMatchLabel1.Caption;
    EXPECT_EQ(std::count(line.begin(), line.end(), ' '), 2 + 100);
    EXPECT_NE(line.find("K1A199 "), std::string::npos);
    EXPECT_EQ(line.find("K1A200"), std::string::npos);
}

TEST_F(DupeCheck, ListsSevenOldCallsIfTheyAreWanted) {
    OpenNewLog(kCqWw);
    for (int i = 9; i >= 1; --i)
        InsertOldCall("K1A" + std::to_string(i), "WW5");
    InsertOldCall("K1", "WW5");
    InsertOldCall("N1", "WW5");
    OldCalls.ShowCurrentCalls = false;
    OldCalls.ShowOldCalls = true;
    ShowCallMatches("K1A");
    EXPECT_EQ(LogForm.OldCallMatchLabel.Caption, "Old logs: K1A1 K1A2 K1A3 K1A4 K1A5 K1A6 K1A7 ");
    EXPECT_TRUE(LogForm.OldCallMatchLabel.Visible);
    EXPECT_FALSE(LogForm.CallMatchLabel1.Visible);
    ShowCallMatches("N");
    EXPECT_EQ(LogForm.OldCallMatchLabel.Caption, "Old logs: N1 ");
}

TEST_F(DupeCheck, ClearsTheMatchLinesForAnEmptyField) {
    OpenNewLog(kCqWw);
    Put("K1ZZ");
    ShowCallMatches("K");
    ASSERT_FALSE(LogForm.CallMatchLabel1.Caption.empty());
    ShowCallMatches("");
    for (Label *label :
         {&LogForm.CallMatchLabel1, &LogForm.CallMatchLabel2, &LogForm.OldCallMatchLabel}) {
        EXPECT_EQ(label->Caption, "");
        EXPECT_FALSE(label->Visible);
    }
}

TEST_F(DupeCheck, MatchesNothingThatIsLongerThanACall) {
    OpenNewLog(kCqWw);
    Put("VP2E/K1ABC");
    ShowCallMatches("VP2E/K1ABC");
    EXPECT_EQ(LogForm.CallMatchLabel1.Caption, "This band: VP2E/K1ABC ");
    ShowCallMatches("VP2E/K1ABCD");
    EXPECT_EQ(LogForm.CallMatchLabel1.Caption, "This band: ");
}

} // namespace
} // namespace zrt
