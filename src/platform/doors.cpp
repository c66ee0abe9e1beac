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

BoxAnswer ShowMessageBox(const MessageBox &box) {
    assert(Dialogs.Box != nullptr);
    return Dialogs.Box(box);
}

std::optional<std::string> ShowFileDialog(const FileDialog &dialog) {
    assert(Dialogs.File != nullptr);
    return Dialogs.File(dialog);
}

std::optional<std::string> ShowFolderDialog(const std::string &title, const std::string &start) {
    assert(Dialogs.Folder != nullptr);
    return Dialogs.Folder(title, start);
}

} // namespace zrt
