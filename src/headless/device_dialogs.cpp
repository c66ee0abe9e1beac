// Message boxes and file dialogs that take their answers from the queues.
#include "headless/device_doors.h"
#include "headless/devices.h"
#include "platform/files.h"

#include <algorithm>
#include <span>

namespace zrt {

namespace {

constexpr BoxAnswer kOk[] = {BoxAnswer::Ok};
constexpr BoxAnswer kOkCancel[] = {BoxAnswer::Ok, BoxAnswer::Cancel};
constexpr BoxAnswer kAbortRetryIgnore[] = {BoxAnswer::Abort, BoxAnswer::Retry, BoxAnswer::Ignore};
constexpr BoxAnswer kYesNoCancel[] = {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Cancel};
constexpr BoxAnswer kYesNo[] = {BoxAnswer::Yes, BoxAnswer::No};
constexpr BoxAnswer kRetryCancel[] = {BoxAnswer::Retry, BoxAnswer::Cancel};

std::span<const BoxAnswer> ButtonsOf(BoxButtons buttons) {
    switch (buttons) {
    case BoxButtons::Ok: return kOk;
    case BoxButtons::OkCancel: return kOkCancel;
    case BoxButtons::AbortRetryIgnore: return kAbortRetryIgnore;
    case BoxButtons::YesNoCancel: return kYesNoCancel;
    case BoxButtons::YesNo: return kYesNo;
    case BoxButtons::RetryCancel: return kRetryCancel;
    }
    return kOk;
}

void Trace(const std::string &text) {
    if (Devices.Trace)
        Devices.Trace(text);
}

BoxAnswer HeadlessBox(const MessageBox &box) {
    if (Devices.Answers.empty()) {
        Devices.Boxes.push_back({box, BoxAnswer::Cancel, false});
        FailDevices("no answer for the box " + DescribeBox(box));
    }
    const BoxAnswer answer = Devices.Answers.front();
    Devices.Answers.pop_front();
    Devices.Boxes.push_back({box, answer, false});
    const auto buttons = ButtonsOf(box.Buttons);
    if (std::find(buttons.begin(), buttons.end(), answer) == buttons.end())
        FailDevices(std::string("no button \"") + NameOfAnswer(answer) + "\" in the box " +
                    DescribeBox(box));
    Trace("box " + DescribeBox(box) + " answered " + NameOfAnswer(answer));
    return answer;
}

// The next answer, as a path of the machine.
std::optional<std::string> NextFileAnswer(const std::string &title) {
    if (Devices.FileAnswers.empty())
        FailDevices("no answer for the file dialog \"" + title + "\"");
    std::optional<std::string> answer = Devices.FileAnswers.front();
    Devices.FileAnswers.pop_front();
    Trace("file dialog \"" + title + "\" answered " + answer.value_or("cancel"));
    if (!answer || answer->starts_with('/'))
        return answer;
    return WithSeparator(Devices.ProgramFolder) + *answer;
}

std::optional<std::string> HeadlessFile(const FileDialog &dialog) {
    Devices.FileDialogs.push_back(dialog);
    std::optional<std::string> path = NextFileAnswer(dialog.Title);
    if (!path)
        return path;
    if (!dialog.DefaultExtension.empty() && NameOf(*path).find('.') == std::string::npos)
        *path += "." + dialog.DefaultExtension;
    if (!dialog.Save && !Files.Exists(*path))
        FailDevices("the file dialog \"" + dialog.Title + "\" has no file " + NameOf(*path));
    return path;
}

std::optional<std::string> HeadlessFolder(const std::string &title, const std::string &start) {
    FileDialog dialog;
    dialog.Title = title;
    dialog.Folder = start;
    Devices.FileDialogs.push_back(dialog);
    return NextFileAnswer(title);
}

} // namespace

void InstallDialogDoor() {
    Dialogs = {HeadlessBox, HeadlessFile, HeadlessFolder};
}

const char *NameOfAnswer(BoxAnswer answer) {
    switch (answer) {
    case BoxAnswer::Ok: return "Ok";
    case BoxAnswer::Cancel: return "Cancel";
    case BoxAnswer::Abort: return "Abort";
    case BoxAnswer::Retry: return "Retry";
    case BoxAnswer::Ignore: return "Ignore";
    case BoxAnswer::Yes: return "Yes";
    case BoxAnswer::No: return "No";
    }
    return "?";
}

std::string DescribeBox(const MessageBox &box) {
    std::string text = "\"" + box.Title + "\" \"" + box.Text + "\" [";
    for (const BoxAnswer answer : ButtonsOf(box.Buttons)) {
        if (text.back() != '[')
            text += ", ";
        text += NameOfAnswer(answer);
    }
    return text + "]";
}

} // namespace zrt
