#include "session/file_errors.h"

#include "platform/dialogs.h"
#include "platform/files.h"

#include <cerrno>
#include <system_error>

namespace zrt {

namespace {

constexpr const char *kTitle = "File or Disk Error";

FileAction AskRetry(const std::string &text) {
    const BoxAnswer answer =
        ShowMessageBox({text, kTitle, BoxButtons::RetryCancel, BoxIcon::Exclamation});
    return answer == BoxAnswer::Retry ? FileAction::Retry : FileAction::Cancel;
}

} // namespace

int ErrorNumberOf(int systemError) {
    switch (systemError) {
    case EINVAL:
    case EILSEQ: return kBadFileName;
    case ENAMETOOLONG: return kBadFileNameOrNumber;
    case ENODEV:
    case ENXIO: return kDeviceUnavailable;
    case ENOMEDIUM: return kDiskNotReady;
    case EIO: return kDeviceIoError;
    default: return kOtherFileError;
    }
}

std::string SystemErrorText(int systemError) {
    if (systemError == kNotRegularFile)
        return "That is a pipe or a device, and no file";
    return std::generic_category().message(systemError);
}

FileAction FileErrorAction(int errorNumber) {
    switch (errorNumber) {
    case kBadFileName:
    case kBadFileNameOrNumber:
        ShowMessageBox({"Illegal file name.", kTitle, BoxButtons::Ok, BoxIcon::Exclamation});
        return FileAction::Ok;
    case kDeviceUnavailable:
        return AskRetry("Drive unavailable.  If it's a removable disk drive, insert a disk.");
    case kDiskNotReady: return AskRetry("Insert a disk in the drive.");
    default: return FileAction::NoBox;
    }
}

FileAction WriteErrorAction(int systemError) {
    const FileAction action = FileErrorAction(ErrorNumberOf(systemError));
    return action == FileAction::NoBox ? AskRetry(SystemErrorText(systemError)) : action;
}

} // namespace zrt
