// The help pages.
#pragma once

#include <string>

namespace zrt {

struct HelpDoor {
    // Opens the help file at a topic number; 0 is its first page. False if there is none.
    bool (*Open)(const std::string &helpFile, int topic) = nullptr;
};
extern HelpDoor Help;

} // namespace zrt
