// The common answer to a failed file operation.
#pragma once

#include <string>

namespace zrt {

// The program's own numbers of file errors.
enum FileErrorNumber : int {
    kBadFileName = 52,
    kBadFileNameOrNumber = 64,
    kDeviceUnavailable = 68,
    kDiskNotReady = 71,
    kDeviceIoError = 57,
    kOtherFileError = 75
};

// What the caller is to do.
enum class FileAction { Ok = 0, Ignore = 1, Cancel = 2, NoBox = 3, Retry = 4 };

// The number for a system error (errno), and its text for the operator.
int ErrorNumberOf(int systemError);
std::string SystemErrorText(int systemError);

// Shows the box of an error that has one and returns the operator's answer; NoBox for all others.
// May pump.
FileAction FileErrorAction(int errorNumber);

// For the writing of a contact, which is never silent: an error without a box of its own shows
// the system's text with Retry and Cancel. May pump.
FileAction WriteErrorAction(int systemError);

// Runs a step that touches the disk, and returns 0 or the system's error, until it works. False if
// the operator gives it up. May pump.
template <typename Step> [[nodiscard]] bool WithRetry(Step step) {
    while (const int error = step())
        if (WriteErrorAction(error) != FileAction::Retry)
            return false;
    return true;
}

} // namespace zrt
