// Message boxes, file and folder dialogs in Qt: the procedures of DialogDoor. Installed by
// doors.cpp. While they are open the program's own events go on.
#pragma once

#include "platform/dialogs.h"

namespace zrt {

BoxAnswer AskInBox(const MessageBox &box);
std::optional<std::string> AskForFile(const FileDialog &dialog);
std::optional<std::string> AskForFolder(const std::string &title, const std::string &start);

} // namespace zrt
