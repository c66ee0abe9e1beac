// Where the data of a user's programs stands, by the rules of the XDG base directories.
#pragma once

#include <string>

namespace zrt {

struct UserEnvironment {
    std::string DataHome;    // XDG_DATA_HOME
    std::string Home;        // HOME
    std::string AccountHome; // of the user's account
    bool IsRoot = false;
};
// Of this process; what is not set is empty.
UserEnvironment ReadUserEnvironment();

// Empty if there is no such folder. A path that is not absolute counts as none.
std::string DataHomeOf(const UserEnvironment &environment);

// Whether nothing but root's account tells the folder.
bool IsRootWithoutHome(const UserEnvironment &environment);

} // namespace zrt
