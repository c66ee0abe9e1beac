// The help pages: which file answers a topic, and the door that shows it.
// Called by app/help_menu; the doors of qt/ and headless/ ask HelpPage.
#pragma once

#include <string>

namespace zrt {

inline constexpr int kHelpContents = 0;

// The file that answers a topic. The pages stand beside the help file and carry its name: for
// "x/abc.chm" topic 0 is "x/abc.html", topic 101 is "x/abc-101.html". The help file itself answers
// where it is there and the pages are not. Empty if nothing answers.
std::string HelpPage(const std::string &helpFile, int topic);
// The name, without folder, that the page of a topic has to have.
std::string HelpPageName(const std::string &helpFile, int topic);

struct HelpDoor {
    // Shows the page of a topic, in a program of the system's choice. False if there is no page, or
    // nothing to show it with.
    bool (*Open)(const std::string &helpFile, int topic) = nullptr;
};
extern HelpDoor Help;

} // namespace zrt
