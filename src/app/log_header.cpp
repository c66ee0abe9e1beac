#include "app/log_header.h"

#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/contests.h"
#include "session/file_errors.h"
#include "session/log_file.h"
#include "session/settings.h"

#include <cerrno>

namespace zrt {

namespace {

void TellNotALog() {
    ShowMessageBox({"The file " + NameOf(Log.LogFileName) + " is not a ZRT log.",
                    "File or Disk Error", BoxButtons::Ok, BoxIcon::Exclamation});
}

bool RefuseIncompatible(const LogHeader &header) {
    if (header.IncompatibleMark <= 0)
        return false;
    ShowMessageBox(
        {"The log selected was written with an earlier version of this program or with version "
         "3.5 or earlier of ZRT for DOS.  This program and versions 4.1 and later of ZRT for DOS "
         "use a slightly different file format that is incompatible with earlier versions.  If "
         "you wish to convert the log file to this new format, load the file into ZRT for DOS, "
         "version 4.5 or later and follow instructions.",
         "Incompatible file format error", BoxButtons::Ok, BoxIcon::Critical});
    EndProgram(0);
    return true;
}

// False if the file can't be read, or is no log: too short for a header, or of no contest.
bool TakeHeader() {
    bool tooShort = false;
    const bool read = WithRetry([&tooShort] {
        const int error = ReadHeader(Log.LogFileName, Log.Header);
        tooShort = error == EINVAL;
        return tooShort ? 0 : error;
    });
    if (!read)
        return false;
    if (tooShort || (Contest.ContestId == kNoContest &&
                     ContestOfTag(Log.Header.ContestTag.Whole()) == kNoContest)) {
        TellNotALog();
        return false;
    }
    Log.KeptHeader = Log.Header;
    return true;
}

} // namespace

// The mark is asked of logs alone: a photo that was chosen by mistake must not end the program.
bool TakeLogHeader() {
    if (!TakeHeader() || RefuseIncompatible(Log.Header))
        return false;
    Log.CurrentFormat = Log.Header.FormatFlag == 1;
    TakeContest(Log.Header);
    if (Extensions.InAreaContests)
        TakeArea(Log.Header);
    return true;
}

} // namespace zrt
