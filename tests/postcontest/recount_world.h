// The world of the tests of the recount: logs of a few entries, written as files and counted.
#pragma once

#include "entry/multipliers.h"
#include "postcontest/post_contest.h"
#include "postcontest/recount.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/reference_data.h"
#include "support/program.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace zrt {

// 15 January 2015 and the days after it.
inline LogEntry Qso(std::string_view call, i16 time, i16 bandIndex, char points,
                    std::string_view exchange = "", i16 number = 0, int day = 0) {
    LogEntry entry = MakeEntry(call, DateCode(2015, 1, 15 + day), time, bandIndex, points);
    entry.RcvdExchange = exchange;
    entry.RcvdNumber = number;
    return entry;
}

class RecountTest : public ProgramTest {
  protected:
    RecountTest() {
        ReadCountries();
        ReadStartupData();
        PostData = {};
        Recount = {};
    }

    static std::string Bytes(std::string_view tag, char qthOption,
                             const std::vector<LogEntry> &entries) {
        std::string bytes = HeaderBytes(tag, qthOption);
        bytes.resize(kEntryLength, '\0');
        for (const LogEntry &entry : entries)
            bytes += EntryBytes(entry);
        return bytes;
    }
    // Makes the file and takes it as the program does after a contest, but counts nothing.
    static void Take(std::string_view bytes) {
        ForgetEntries();
        MakeFile("test.ZRT", bytes);
        Log.LogFileName = PathOf("test.ZRT");
        ASSERT_EQ(ReadHeader(Log.LogFileName, Log.KeptHeader), 0);
        Log.Header = Log.KeptHeader;
        Log.CurrentFormat = Log.KeptHeader.FormatFlag == 1;
        TakeContest(Log.KeptHeader);
        SetUpContest();
        TakePostContestLog();
    }
    static void Tally(std::string_view bytes) {
        Take(bytes);
        ASSERT_EQ(PostTally(), 0);
    }
    static void Tally(std::string_view tag, char qthOption, const std::vector<LogEntry> &entries) {
        Tally(Bytes(tag, qthOption, entries));
    }

    // What the last count found.
    static std::vector<bool> NewMults() {
        return {Recount.NewMult.begin() + 1, Recount.NewMult.begin() + 1 + Recount.TotalQsos};
    }
    static std::vector<i32> Minutes() {
        return {Recount.Minutes.begin() + 1, Recount.Minutes.begin() + 1 + Recount.TotalQsos};
    }
    using Counts = std::map<std::size_t, i32>; // rows that hold 0 are left out
    template <typename Table> static Counts Shown(const Table &table) {
        Counts shown;
        for (std::size_t row = 0; row < table.size(); ++row)
            if (table[row] != 0)
                shown[row] = table[row];
        return shown;
    }
    static Counts SlotMults() {
        Counts shown;
        for (std::size_t slot = 0; slot < Recount.Slots.size(); ++slot)
            if (Recount.Slots[slot].Mults != 0)
                shown[slot] = Recount.Slots[slot].Mults;
        return shown;
    }
    static ByMode HourQsos(std::size_t hour, std::size_t slot) {
        return Recount.Hours[hour].Qsos[slot];
    }
    static void PrintTo(const ByMode &counts, std::ostream *out) {
        *out << counts.Cw << " CW " << counts.Phone << " phone";
    }
};

} // namespace zrt
