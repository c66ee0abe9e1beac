#include "platform/help.h"

#include "platform/files.h"

namespace zrt {

std::string HelpPageName(const std::string &helpFile, int topic) {
    const std::string name = NameOf(helpFile);
    const std::string base = name.substr(0, name.rfind('.'));
    return topic == kHelpContents ? base + ".html" : base + "-" + std::to_string(topic) + ".html";
}

std::string HelpPage(const std::string &helpFile, int topic) {
    const std::string folder = FolderOf(helpFile);
    std::string page = folder + HelpPageName(helpFile, topic);
    if (Files.Exists(page))
        return page;
    const bool havePages = Files.Exists(folder + HelpPageName(helpFile, kHelpContents));
    return !havePages && Files.Exists(helpFile) ? helpFile : "";
}

} // namespace zrt
