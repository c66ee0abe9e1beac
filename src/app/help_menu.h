// Help, Contents and its neighbours: the operator's manual in the browser. Called by the menus.
#pragma once

namespace zrt {

void ShowHelpContents();         // mnuHelpContents
void ShowHelpContestRules();     // mnuHelpContestRules
void ShowHelpKeyboardCommands(); // mnuHelpKeyboardCommands

} // namespace zrt
