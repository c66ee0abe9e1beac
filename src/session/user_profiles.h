// The operator's details for the headers of the files that a contest sponsor gets: four named
// profiles, one of them current. Kept in the settings file; the post-contest files read them.
#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace zrt {

// Texts in UTF-8, each of at most so many characters.
struct UserProfile {
    std::string ProfileName; // 20
    std::string Callsign;    // 12
    std::string Operators;   // 20
    std::string Location;    // 20
    std::string Name;        // 30
    std::string Address;     // 30
    std::string City;        // 30
    std::string Country;     // 25
    std::string Club;        // 40
    std::string Rig;         // 60
    std::string Ant;         // 60
    std::string Email;       // 30
    friend bool operator==(const UserProfile &, const UserProfile &) = default;
};

// A field, the name of its key in the file behind "UserProfile.", and its length in characters.
struct UserProfileField {
    const char *Key;
    std::string UserProfile::*Text;
    std::size_t Length;
};
// In the order of the file. The dialog's texts are those behind the first.
extern const std::array<UserProfileField, 12> kUserProfileFields;

struct ProfilesState {
    std::array<UserProfile, 4> Table;
    int Current = 1; // 1 to 4
    std::string CurrentUserProfileName;
    friend bool operator==(const ProfilesState &, const ProfilesState &) = default;
};
extern ProfilesState Profiles;

UserProfile &CurrentProfile();

// Makes the first profile of the name CurrentUserProfileName current; profile 1 if there is none.
void FindCurrentProfile();

// "Custom Profile " and the lowest number from 1 that makes a name no profile has.
std::string NextFreeProfileName();

// Gives each profile without a name the next free one. True if any was given.
bool NameProfiles();

} // namespace zrt
