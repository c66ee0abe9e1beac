// UserInfo, the dialog that edits the user profiles. The post-contest dialog opens it.
#pragma once

#include "platform/controls.h"
#include "session/user_profiles.h"

#include <array>
#include <optional>

namespace zrt {

struct UserInfoWindow : Form {
    MenuItem mnuEdit, mnuSave, mnuCopy, mnuPaste, mnuRename;
    Label lblProfile;    // "User Profile:", or "New Name:" while a profile is renamed
    ListBox lstProfiles; // the names of the four
    TextBox TextName;    // in place of the list while a profile is renamed
    Button cmdNameOK, cmdNameCancel;
    std::array<Label, 11> lblInfo;    // what the fields hold
    std::array<TextBox, 11> Textinfo; // named Textinfo(0) to Textinfo(10)
    Button cmdOK, cmdCancel;
    std::optional<UserProfile> Copied; // by Copy, for Paste; outlives the closing of the dialog
};
extern UserInfoWindow UserInfo;

void RegisterUserInfo();

// Shows the dialog with the current profile, and waits until it closes. May pump.
void ShowUserInfo();

} // namespace zrt
