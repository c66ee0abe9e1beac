#include "session/user_profiles.h"

#include <algorithm>

namespace zrt {

ProfilesState Profiles;

const std::array<UserProfileField, 12> kUserProfileFields = {{
    {"ProfileName", &UserProfile::ProfileName, 20},
    {"Callsign", &UserProfile::Callsign, 12},
    {"Operators", &UserProfile::Operators, 20},
    {"Location", &UserProfile::Location, 20},
    {"Name", &UserProfile::Name, 30},
    {"Address", &UserProfile::Address, 30},
    {"City", &UserProfile::City, 30},
    {"Country", &UserProfile::Country, 25},
    {"Club", &UserProfile::Club, 40},
    {"Rig", &UserProfile::Rig, 60},
    {"Ant", &UserProfile::Ant, 60},
    {"Email", &UserProfile::Email, 30},
}};

namespace {

// The place of the first profile of that name; the table's size if there is none.
std::size_t PlaceOf(const std::string &name) {
    const auto &table = Profiles.Table;
    const auto found = std::find_if(table.begin(), table.end(), [&](const UserProfile &profile) {
        return profile.ProfileName == name;
    });
    return static_cast<std::size_t>(found - table.begin());
}

} // namespace

UserProfile &CurrentProfile() {
    return Profiles.Table[static_cast<std::size_t>(std::clamp(Profiles.Current, 1, 4) - 1)];
}

void FindCurrentProfile() {
    const std::size_t place = PlaceOf(Profiles.CurrentUserProfileName);
    Profiles.Current = place < Profiles.Table.size() ? static_cast<int>(place) + 1 : 1;
}

std::string NextFreeProfileName() {
    for (int number = 1;; ++number) {
        std::string name = "Custom Profile " + std::to_string(number);
        if (PlaceOf(name) == Profiles.Table.size())
            return name;
    }
}

bool NameProfiles() {
    bool given = false;
    for (UserProfile &profile : Profiles.Table) {
        if (profile.ProfileName.find_first_not_of(' ') != std::string::npos)
            continue;
        profile.ProfileName = NextFreeProfileName();
        given = true;
    }
    return given;
}

} // namespace zrt
