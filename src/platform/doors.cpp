// The doors, empty until qt/ or headless/ installs its own procedures.
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/help.h"
#include "platform/keys.h"
#include "platform/program.h"
#include "platform/serial_port.h"
#include "platform/sound.h"
#include "platform/station_lines.h"

#include <cassert>

namespace zrt {

ClockDoor Clock;
DialogDoor Dialogs;
HelpDoor Help;
KeyStateDoor KeyState;
ProgramDoor ProgramFolders;
SerialDoor Serial;
SoundDoor Sound;
StationLinesDoor StationLines;

ProgramState Program;

void EndProgram(int status) {
    Program.Ending = true;
    Program.ExitStatus = status;
}

BoxAnswer AnswerOfClosing(BoxButtons buttons) {
    switch (buttons) {
    case BoxButtons::Ok: return BoxAnswer::Ok;
    case BoxButtons::AbortRetryIgnore: return BoxAnswer::Abort;
    case BoxButtons::YesNo: return BoxAnswer::No;
    case BoxButtons::OkCancel:
    case BoxButtons::YesNoCancel:
    case BoxButtons::RetryCancel: return BoxAnswer::Cancel;
    }
    return BoxAnswer::Cancel;
}

BoxAnswer ShowMessageBox(const MessageBox &box) {
    assert(Dialogs.Box != nullptr);
    return Program.Ending ? AnswerOfClosing(box.Buttons) : Dialogs.Box(box);
}

std::optional<std::string> ShowFileDialog(const FileDialog &dialog) {
    assert(Dialogs.File != nullptr);
    return Program.Ending ? std::nullopt : Dialogs.File(dialog);
}

std::optional<std::string> ShowFolderDialog(const std::string &title, const std::string &start) {
    assert(Dialogs.Folder != nullptr);
    return Program.Ending ? std::nullopt : Dialogs.Folder(title, start);
}

} // namespace zrt
