// Message boxes and file dialogs: one call each.
#pragma once

#include <optional>
#include <string>

namespace zrt {

enum class BoxButtons { Ok, OkCancel, AbortRetryIgnore, YesNoCancel, YesNo, RetryCancel };
enum class BoxIcon { None, Critical, Question, Exclamation, Information };

enum class BoxAnswer { Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

struct MessageBox {
    std::string Text;
    std::string Title;
    BoxButtons Buttons = BoxButtons::Ok;
    BoxIcon Icon = BoxIcon::None;
    int DefaultButton = 1; // counted from 1, in the order of the names in BoxButtons
};

struct FileDialog {
    std::string Title;
    std::string Folder;           // where the dialog opens
    std::string Filter;           // "ZRT logs (*.ZRT)|*.ZRT|All files (*.*)|*.*"
    std::string DefaultExtension; // without the dot; added to a name that has none
    bool Save = false;            // a save dialog; else the file must exist
};

struct DialogDoor {
    BoxAnswer (*Box)(const MessageBox &box) = nullptr;
    // The chosen path, or nothing after Cancel.
    std::optional<std::string> (*File)(const FileDialog &dialog) = nullptr;
    std::optional<std::string> (*Folder)(const std::string &title,
                                         const std::string &start) = nullptr;
};
extern DialogDoor Dialogs;

// What a box answers that is closed without a button: Cancel, or No where there is no Cancel, or
// the only button. Abort stands for a box that has to be answered by a button.
BoxAnswer AnswerOfClosing(BoxButtons buttons);

// Each shows itself and waits for the answer; may pump. While the program ends nothing is shown: a
// box counts as closed, a dialog as cancelled.
BoxAnswer ShowMessageBox(const MessageBox &box);
std::optional<std::string> ShowFileDialog(const FileDialog &dialog);
std::optional<std::string> ShowFolderDialog(const std::string &title, const std::string &start);

} // namespace zrt
