#include "app/save_path.h"

#include "platform/dialogs.h"
#include "platform/files.h"
#include "session/fixed_text.h"

namespace zrt {

bool HasExtension(std::string_view path, std::string_view extension) {
    const std::string name = NameOf(path);
    return name.size() > extension.size() &&
           EqualIgnoringCase(name.substr(name.size() - extension.size()), extension);
}

bool MayWriteTo(const std::string &path, const std::string &what, const std::string &extension) {
    if (!HasExtension(path, extension)) {
        ShowMessageBox({what + " must have the extension " + extension, "", BoxButtons::Ok,
                        BoxIcon::Exclamation});
        return false;
    }
    if (!Files.Exists(path))
        return true;
    return ShowMessageBox(
               {"The selected output file " + path + " already exists. OK to overwrite it?", "",
                BoxButtons::OkCancel, BoxIcon::Question}) == BoxAnswer::Ok;
}

} // namespace zrt
