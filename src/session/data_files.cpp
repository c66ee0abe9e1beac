#include "session/data_files.h"

#include "platform/files.h"
#include "session/fixed_text.h"
#include "session/session_flags.h"

#include <algorithm>
#include <cerrno>
#include <span>

namespace zrt {

std::string PathInFolder(const std::string &path) {
    const std::string folder = FolderOf(path);
    const std::string name = NameOf(path);
    std::vector<std::string> names;
    if (Files.List(folder, names) != 0)
        return path; // whoever opens it hears of the error
    if (std::find(names.begin(), names.end(), name) != names.end())
        return path;
    const auto found = std::find_if(names.begin(), names.end(), [&name](const std::string &other) {
        return EqualIgnoringCase(name, other);
    });
    return found == names.end() ? path : folder + *found;
}

int ReadDataFile(std::string_view name, std::string &text) {
    text.clear();
    OpenedFile file;
    if (const int error =
            file.Open(PathInFolder(Session.AppPath + std::string(name)), OpenMode::Read))
        return error;
    std::uint64_t length = 0;
    if (const int error = file.Length(length))
        return error;
    if (length > kMostFileBytes)
        return EFBIG;
    text.resize(length);
    std::size_t got = 0;
    const int error = file.ReadAt(0, std::as_writable_bytes(std::span(text)), got);
    text.resize(got);
    if (error != 0)
        text.resize(text.find_last_of("\r\n") + 1); // npos + 1 is 0
    return error;
}

std::string_view NextLine(std::string_view &rest) {
    const auto end = rest.find_first_of("\r\n");
    const std::string_view line = rest.substr(0, end);
    if (end == std::string_view::npos) {
        rest = {};
        return line;
    }
    rest.remove_prefix(end);
    rest.remove_prefix(rest.starts_with("\r\n") ? 2 : 1);
    return line;
}

} // namespace zrt
