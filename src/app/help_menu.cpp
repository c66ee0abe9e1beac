#include "app/help_menu.h"

#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/help.h"
#include "platform/program.h"
#include "session/session_flags.h"

namespace zrt {

namespace {

// Topic numbers of the help file; the pages carry them in their names (tools/make_help.py).
constexpr int kContestRules = 100;
constexpr int kKeyboardCommands = 101;

void ShowTopic(int topic) {
    // A folder that an older version filled has no pages; the installation does.
    const std::string shipped =
        WithSeparator(ProgramFolders.DefaultsFolder()) + NameOf(Session.HelpFile);
    if (Help.Open(Session.HelpFile, topic) || Help.Open(shipped, topic))
        return;
    std::string page = HelpPage(Session.HelpFile, topic);
    if (page.empty())
        page = HelpPage(shipped, topic);
    const std::string why =
        page.empty() ? "There is no help page " + HelpPageName(Session.HelpFile, topic) +
                           ".  It belongs in the folder " + FolderOf(Session.HelpFile)
                     : "No program opens the help page.  Open it in a web browser: " + page;
    ShowMessageBox({why, "Help", BoxButtons::Ok, BoxIcon::Exclamation});
}

} // namespace

void ShowHelpContents() {
    ShowTopic(kHelpContents);
}

void ShowHelpContestRules() {
    ShowTopic(kContestRules);
}

void ShowHelpKeyboardCommands() {
    ShowTopic(kKeyboardCommands);
}

} // namespace zrt
