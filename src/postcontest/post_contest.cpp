#include "postcontest/post_contest.h"

#include "platform/files.h"
#include "session/contests.h"
#include "session/log_file.h"

#include <span>

namespace zrt {

PostContestState PostData;

void TakeInputPath(const std::string &path) {
    PostData = {};
    PostData.InputPath = path;
    PostData.BaseName = path.substr(0, path.size() < 4 ? 0 : path.size() - 4);
}

void TakePostContestLog() {
    TakeInputPath(Log.LogFileName);
    const ContestRow &row = ContestTable(Contest.ContestId);
    const bool bothModes = row.BothModes;
    const bool taggedCw = Log.KeptHeader.ContestTag.Trimmed().ends_with("CW");
    PostData.ContestIsCw = bothModes || taggedCw;
    PostData.ContestIsSsb = bothModes || !taggedCw;
    PostData.ContestName = Trim(row.LoadLabel);
    if (!bothModes)
        PostData.ContestName += Contest.ModeCW ? " CW" : " SSB";
    PostData.RcvdIsPower = Log.KeptHeader.QthOption.Whole() != "2";
}

int WriteOutputFile(std::string_view extension, const std::string &text) {
    const std::string path = PostData.BaseName + std::string(extension);
    if (const int error = ReplaceFile(path, std::as_bytes(std::span(text))))
        return error;
    PostData.FilesWritten.push_back(NameOf(path));
    return 0;
}

} // namespace zrt
