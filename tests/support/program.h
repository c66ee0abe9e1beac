// The world of a unit test: the whole program, started fresh on the headless doors in a folder of
// its own, and the hands of an operator.
#pragma once

#include "headless/devices.h"
#include "platform/controls.h"
#include "session/contests.h"
#include "session/log_entry.h"

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace zrt {

// A new process: fresh doors, and everything that any module remembers as it is at first. The
// folder stays.
void BeginProcess(std::string programFolder);

// Every test begins with a new process in a new folder, filled like that of a first start, and
// with 14:37:00 UTC of 15 January 2015. At the end no answer to a box may be left over.
class ProgramTest : public testing::Test {
  protected:
    ProgramTest();
    ~ProgramTest() override;
    void TearDown() override;
};

// The program in the folder is killed and started again; the time goes on.
void CrashAndStart();

// ---- files, with names relative to the program's folder

std::string PathOf(std::string_view name);
bool FileExists(std::string_view name);
std::string BytesOf(std::string_view name); // fails the test if there is no such file
// Whether a write has left its side file in the folder.
bool HasSideFile(std::string_view folder = "");
void MakeFile(std::string_view name, std::string_view bytes);
inline constexpr const char *kTempLog = "!temp%!!.zrb";

// "01 02 FF" of bytes and back; blanks between the digits don't count.
std::string Hex(std::string_view bytes);
std::string FromHex(std::string_view hex);
template <typename Record> std::string HexOf(const Record &record) {
    const auto bytes = Encode(record);
    return Hex({reinterpret_cast<const char *>(bytes.data()), bytes.size()});
}
// The first 26 bytes of a log of today's format.
std::string HeaderBytes(std::string_view tag, char qthOption = ' ');

// ---- logs

// A contest as chosen for CW (both modes where the contest has them) in the USA.
ContestState CwContest(i16 contestId);
// Opens a new unnamed log without asking.
void OpenNewLog(const ContestState &contest);
void OpenNewLog(i16 contestId);
// The chooser's answer to the next New: the row of its list, what else is done, and OK.
void ChooseInDialog(
    int row, std::function<void()> more = [] {});
// The bytes of an entry, as a file holds it.
std::string EntryBytes(const LogEntry &entry);
LogEntry MakeEntry(std::string_view call, i16 date, i16 time, i16 bandIndex, char points);
// Lets the program read a log under the temporary name, as recovery does.
void LoadTemporary(std::string_view bytes);

// ---- the operator

void Answer(std::initializer_list<BoxAnswer> answers);
// The box shown last; fails the test if there was none.
MessageBox LastBox();
// Runs while the next boxes show, one a box, before their answer is given.
void WhileBoxShows(std::function<void()> deed);

// Presses a key on the active window; a field takes the character that is left for it.
void Press(int keyCode, int shift = 0, int charCode = 0);
void TypeText(std::string_view text);
// Fills both fields, with the focus on the call field; then Enter there.
void Fill(std::string_view call, std::string_view exchange);
void LogContact(std::string_view call, std::string_view exchange = "");

void SetTime(int year, int month, int day, int hour, int minute);
void PassMinutes(int minutes);

} // namespace zrt
