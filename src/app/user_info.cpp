#include "app/user_info.h"

#include "platform/dialogs.h"
#include "platform/events.h"
#include "session/fixed_text.h"
#include "session/settings.h"
#include "session/user_profiles.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace zrt {

UserInfoWindow UserInfo;

namespace {

struct InfoRow {
    const char *Caption;
    const char *Purpose;
};
constexpr std::array<InfoRow, 11> kInfoRows = {{
    {"Callsign:", "Callsign used in the contest"},
    {"Operators:", "Calls of the operators"},
    {"Location:", "Location, as the contest's sponsor names it"},
    {"Name:", "Name of the operator"},
    {"Address:", "Address, first line: the street"},
    {"City:", "Address, second line: the city"},
    {"Country:", "Address, third line: the country"},
    {"Club:", "Club or team"},
    {"Rig:", "Radios and amplifiers"},
    {"Antennas:", "Antennas"},
    {"Email:", "Email address"},
}};
static_assert(kInfoRows.size() + 1 == std::tuple_size_v<decltype(kUserProfileFields)>);

// The profile's field behind Textinfo(i): the first of a profile is its name.
const UserProfileField &FieldOf(std::size_t i) {
    return kUserProfileFields[i + 1];
}
const UserProfileField &NameField() {
    return kUserProfileFields[0];
}

std::size_t Displayed() {
    return static_cast<std::size_t>(UserInfo.lstProfiles.ListIndex);
}

void SetText(TextBox &box, const std::string &text) {
    box.Text = text;
    box.SelStart = static_cast<int>(text.size());
    box.SelLength = 0;
}

// What is typed or pasted beyond the field's length goes at once, so that the operator sees what
// is kept.
void Fit(TextBox &box, std::size_t length) {
    const std::string text(CutAt(box.Text, length));
    if (text == box.Text)
        return;
    box.Text = text;
    const int end = static_cast<int>(box.Text.size());
    box.SelStart = std::min(box.SelStart, end);
    box.SelLength = std::min(box.SelLength, end - box.SelStart);
}

void ShowFields(const UserProfile &profile) {
    for (std::size_t i = 0; i < UserInfo.Textinfo.size(); ++i)
        SetText(UserInfo.Textinfo[i], profile.*FieldOf(i).Text);
}

// Takes the displayed fields into a profile; its name stays.
void TakeFields(UserProfile &profile) {
    for (std::size_t i = 0; i < UserInfo.Textinfo.size(); ++i)
        profile.*FieldOf(i).Text = Trim(UserInfo.Textinfo[i].Text);
}

void ShowRenaming(bool renaming) {
    UserInfo.lblProfile.Caption = renaming ? "New Name:" : "User Profile:";
    UserInfo.lstProfiles.Visible = !renaming;
    for (Control *control : std::initializer_list<Control *>{
             &UserInfo.TextName, &UserInfo.cmdNameOK, &UserInfo.cmdNameCancel})
        control->Visible = renaming;
    for (std::size_t i = 0; i < UserInfo.Textinfo.size(); ++i)
        UserInfo.lblInfo[i].Enabled = UserInfo.Textinfo[i].Enabled = !renaming;
    for (Control *control : std::initializer_list<Control *>{&UserInfo.mnuEdit, &UserInfo.mnuSave,
                                                             &UserInfo.mnuCopy, &UserInfo.mnuRename,
                                                             &UserInfo.cmdOK, &UserInfo.cmdCancel})
        control->Enabled = !renaming;
    UserInfo.mnuPaste.Enabled = !renaming && UserInfo.Copied.has_value();
}

// ---- the buttons and the menu

void SelectProfile() {
    ShowFields(Profiles.Table[Displayed()]);
}

void Store(bool stayOpen) {
    UserProfile &profile = Profiles.Table[Displayed()];
    TakeFields(profile);
    Profiles.Current = UserInfo.lstProfiles.ListIndex + 1;
    Profiles.CurrentUserProfileName = profile.ProfileName;
    WriteSettings(false);
    if (!stayOpen)
        HideForm(UserInfo);
}

void Copy() {
    TakeFields(UserInfo.Copied.emplace());
    UserInfo.mnuPaste.Enabled = true;
}

void Paste() {
    const BoxAnswer answer = ShowMessageBox(
        {"Do you want to replace the User Data on the displayed Profile?",
         "Warning -- Information will be overwritten", BoxButtons::YesNo, BoxIcon::Exclamation});
    if (answer == BoxAnswer::Yes)
        ShowFields(*UserInfo.Copied);
}

// ---- renaming

void SelectName() {
    UserInfo.TextName.SelStart = 0;
    UserInfo.TextName.SelLength = static_cast<int>(UserInfo.TextName.Text.size());
    SetFocus(UserInfo.TextName);
}

void Rename() {
    ShowRenaming(true);
    SetText(UserInfo.TextName, Profiles.Table[Displayed()].ProfileName);
    SelectName();
}

void EndRenaming() {
    ShowRenaming(false);
    SetFocus(UserInfo.lstProfiles);
}

void RefuseName(const char *text, const char *title) {
    ShowMessageBox({text, title, BoxButtons::Ok, BoxIcon::Exclamation});
    SelectName();
}

bool IsOfAnother(std::string_view name) {
    for (std::size_t i = 0; i < Profiles.Table.size(); ++i)
        if (i != Displayed() && Trim(Profiles.Table[i].ProfileName) == name)
            return true;
    return false;
}

void AcceptName() {
    const std::string name(Trim(UserInfo.TextName.Text));
    if (name.empty()) {
        RefuseName("Blank Names are not allowed.  Try again.", "Error -- Blank Name");
        return;
    }
    if (IsOfAnother(name)) {
        RefuseName("The new name is the same as that of another User Profile.  Choose another "
                   "name.",
                   "Error -- Duplicate Name");
        return;
    }
    Profiles.Table[Displayed()].ProfileName = name;
    // The file tells the current profile by its name.
    Profiles.CurrentUserProfileName = CurrentProfile().ProfileName;
    UserInfo.lstProfiles.Rows[Displayed()] = name;
    WriteSettings(false);
    EndRenaming();
}

// ---- how it is made

void SetMenu(MenuItem &item, const char *caption, std::function<void()> click) {
    item.Caption = caption;
    item.Parent = "mnuEdit";
    item.Click = std::move(click);
}

void SetButtons(Button &ok, std::function<void()> accept, Button &cancel,
                std::function<void()> dismiss) {
    ok.Caption = "OK";
    ok.Default = true;
    ok.Click = std::move(accept);
    cancel.Caption = "Cancel";
    cancel.Cancel = true;
    cancel.Click = std::move(dismiss);
}

void SetFields() {
    for (std::size_t i = 0; i < UserInfo.Textinfo.size(); ++i) {
        UserInfo.lblInfo[i].Caption = kInfoRows[i].Caption;
        TextBox &box = UserInfo.Textinfo[i];
        box.Columns = static_cast<int>(FieldOf(i).Length);
        box.Change = [&box, i] { Fit(box, FieldOf(i).Length); };
    }
    UserInfo.TextName.Columns = static_cast<int>(NameField().Length);
    UserInfo.TextName.Change = [] { Fit(UserInfo.TextName, NameField().Length); };
}

std::vector<NamedControl> NameControls() {
    std::vector<NamedControl> controls = {
        {"mnuEdit", &UserInfo.mnuEdit, "What can be done with a profile"},
        {"mnuSave", &UserInfo.mnuSave, "Store the profile, and go on"},
        {"mnuCopy", &UserInfo.mnuCopy, "Remember what stands in the fields"},
        {"mnuPaste", &UserInfo.mnuPaste, "Put what was copied into the fields"},
        {"mnuRename", &UserInfo.mnuRename, "Give the profile another name"},
        {"lblProfile", &UserInfo.lblProfile, "What stands beside it"},
        {"lstProfiles", &UserInfo.lstProfiles, "User profile"},
        {"TextName", &UserInfo.TextName, "New name of the profile"},
        {"cmdNameOK", &UserInfo.cmdNameOK, "Take the new name"},
        {"cmdNameCancel", &UserInfo.cmdNameCancel, "Keep the old name"},
    };
    for (std::size_t i = 0; i < UserInfo.Textinfo.size(); ++i) {
        const std::string place = "(" + std::to_string(i) + ")";
        controls.push_back({"lblInfo" + place, &UserInfo.lblInfo[i], "What the field holds"});
        controls.push_back({"Textinfo" + place, &UserInfo.Textinfo[i], kInfoRows[i].Purpose});
    }
    controls.push_back({"cmdOK", &UserInfo.cmdOK, "Store the profile and make it the current one"});
    controls.push_back({"cmdCancel", &UserInfo.cmdCancel, "Close, and store nothing"});
    return controls;
}

} // namespace

void RegisterUserInfo() {
    UserInfo = {};
    UserInfo.Caption = "User Information";
    UserInfo.mnuEdit.Caption = "Edit";
    UserInfo.mnuEdit.AltLetter = 'E';
    SetMenu(UserInfo.mnuSave, "Save", [] { Store(true); });
    SetMenu(UserInfo.mnuCopy, "Copy", Copy);
    SetMenu(UserInfo.mnuPaste, "Paste", Paste);
    SetMenu(UserInfo.mnuRename, "Rename", Rename);
    UserInfo.lstProfiles.Click = SelectProfile;
    SetFields();
    const auto cancel = [] { HideForm(UserInfo); };
    SetButtons(UserInfo.cmdNameOK, AcceptName, UserInfo.cmdNameCancel, EndRenaming);
    SetButtons(
        UserInfo.cmdOK, [] { Store(false); }, UserInfo.cmdCancel, cancel);
    UserInfo.CloseBox = cancel;
    ShowRenaming(false);
    RegisterForm(UserInfo, "UserInfo", "The details of the operator", NameControls());
}

void ShowUserInfo() {
    UserInfo.lstProfiles.Rows.clear();
    for (const UserProfile &profile : Profiles.Table)
        UserInfo.lstProfiles.Rows.push_back(profile.ProfileName);
    UserInfo.lstProfiles.ListIndex = std::clamp(Profiles.Current, 1, 4) - 1;
    ShowRenaming(false);
    ShowFields(CurrentProfile());
    UserInfo.ActiveControl = &UserInfo.Textinfo[0];
    ShowModal(UserInfo);
}

} // namespace zrt
