#include "platform/user_folder.h"

#include <cstdlib>

#include <pwd.h>
#include <unistd.h>

namespace zrt {

namespace {

std::string Variable(const char *name) {
    const char *value = std::getenv(name);
    return value == nullptr ? "" : value;
}

bool IsAbsolute(const std::string &path) {
    return path.starts_with('/');
}

} // namespace

UserEnvironment ReadUserEnvironment() {
    const uid_t user = ::geteuid();
    const passwd *account = ::getpwuid(user);
    const bool hasHome = account != nullptr && account->pw_dir != nullptr;
    return {Variable("XDG_DATA_HOME"), Variable("HOME"), hasHome ? account->pw_dir : "", user == 0};
}

std::string DataHomeOf(const UserEnvironment &environment) {
    if (IsAbsolute(environment.DataHome))
        return environment.DataHome;
    for (const std::string &home : {environment.Home, environment.AccountHome})
        if (IsAbsolute(home))
            return home + "/.local/share";
    return "";
}

bool IsRootWithoutHome(const UserEnvironment &environment) {
    return environment.IsRoot && !IsAbsolute(environment.DataHome) && !IsAbsolute(environment.Home);
}

} // namespace zrt
