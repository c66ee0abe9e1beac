// A library to preload: fails calls of libc in the program under attack, and keeps a record of
// those calls that touch files. See README.md for the rules.
//
//   ZRT_FAIL_UNDER   the folders whose files count, separated by ":"; other calls pass untouched
//   ZRT_FAIL         rules from the start on
//   ZRT_FAIL_FILE    a file of rules that take their place as soon as it is there, or is another
//   one ZRT_FAIL_RECORD  where the record goes
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <sys/file.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kKill = -1;  // the program ends at this call, as if the power had gone
constexpr int kShort = -2; // a write takes half of its bytes

struct ErrorName {
    const char *Name;
    int Number;
};

constexpr ErrorName kErrorNames[] = {
    {"KILL", kKill},          {"SHORT", kShort},          {"EPERM", EPERM},
    {"ENOENT", ENOENT},       {"EINTR", EINTR},           {"EIO", EIO},
    {"ENXIO", ENXIO},         {"EBADF", EBADF},           {"EAGAIN", EAGAIN},
    {"ENOMEM", ENOMEM},       {"EACCES", EACCES},         {"EBUSY", EBUSY},
    {"EEXIST", EEXIST},       {"EXDEV", EXDEV},           {"ENODEV", ENODEV},
    {"ENOTDIR", ENOTDIR},     {"EISDIR", EISDIR},         {"EINVAL", EINVAL},
    {"ENFILE", ENFILE},       {"EMFILE", EMFILE},         {"EFBIG", EFBIG},
    {"ENOSPC", ENOSPC},       {"EROFS", EROFS},           {"ENOLCK", ENOLCK},
    {"ENOSYS", ENOSYS},       {"EDQUOT", EDQUOT},         {"ESTALE", ESTALE},
    {"ETIMEDOUT", ETIMEDOUT}, {"EOPNOTSUPP", EOPNOTSUPP}, {"ENAMETOOLONG", ENAMETOOLONG},
};

// CALL[:PATTERN]:COUNT:ERROR. COUNT is "3" (the third such call), "3+" (from it on), "3-7".
struct Rule {
    std::string Call, Pattern;
    long First = 1, Last = 1;
    int Error = EIO;
    long Seen = 0;
};

struct Library {
    std::mutex Mutex;
    bool Ready = false;
    std::vector<std::string> Folders;
    std::vector<Rule> Rules;
    std::string RuleFile;
    ino_t RuleInode = 0;
    int Record = -1;
};

Library &Lib() {
    static Library *library = new Library; // never destroyed: calls come until the very end
    return *library;
}

template <class Function> Function *Real(const char *name) {
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

// The function that this library stands before, looked up once.
#define REAL(name)                                                                                 \
    ([] {                                                                                          \
        static auto *const real = Real<decltype(::name)>(#name);                                   \
        return real;                                                                               \
    }())

// Looked up before main(): a signal's handler may write to a pipe, and must wait for nothing here.
auto *const kRealWrite = Real<decltype(::write)>("write");

std::vector<std::string> Split(std::string_view text, std::string_view separators) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        const auto end = text.find_first_of(separators);
        if (end != 0)
            parts.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return parts;
}

[[noreturn]] void Refuse(const std::string &rule) {
    std::fprintf(stderr, "fail_calls: this rule means nothing: %s\n", rule.c_str());
    std::abort();
}

Rule ParseRule(const std::string &text) {
    const std::vector<std::string> parts = Split(text, ":");
    if (parts.size() < 3 || parts.size() > 4)
        Refuse(text);
    Rule rule;
    rule.Call = parts[0];
    rule.Pattern = parts.size() == 4 ? parts[1] : "*";
    const std::string &count = parts[parts.size() - 2];
    char *end = nullptr;
    rule.First = rule.Last = std::strtol(count.c_str(), &end, 10);
    if (*end == '+')
        rule.Last = INT32_MAX;
    else if (*end == '-')
        rule.Last = std::strtol(end + 1, nullptr, 10);
    const auto *error =
        std::find_if(std::begin(kErrorNames), std::end(kErrorNames),
                     [&](const ErrorName &row) { return parts.back() == row.Name; });
    if (rule.First < 1 || rule.Last < rule.First || error == std::end(kErrorNames))
        Refuse(text);
    rule.Error = error->Number;
    return rule;
}

void SetRules(std::string_view text) {
    Lib().Rules.clear();
    for (const std::string &rule : Split(text, ", \n"))
        Lib().Rules.push_back(ParseRule(rule));
}

void Write(const std::string &line) {
    if (Lib().Record >= 0 &&
        kRealWrite(Lib().Record, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
        std::abort(); // a record with holes would acquit the program
}

const char *Setting(const char *name) {
    const char *value = std::getenv(name);
    return value == nullptr ? "" : value;
}

void MakeReady() {
    Library &lib = Lib();
    lib.Ready = true;
    lib.Folders = Split(Setting("ZRT_FAIL_UNDER"), ":");
    lib.RuleFile = Setting("ZRT_FAIL_FILE");
    SetRules(Setting("ZRT_FAIL"));
    if (*Setting("ZRT_FAIL_RECORD") != 0)
        lib.Record =
            REAL(open)(Setting("ZRT_FAIL_RECORD"), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
}

// The driver renames a new file of rules into place: another inode, another set of rules.
void ReadRulesAnew() {
    struct stat status {};
    Library &lib = Lib();
    if (lib.RuleFile.empty() || stat(lib.RuleFile.c_str(), &status) != 0 ||
        status.st_ino == lib.RuleInode)
        return;
    lib.RuleInode = status.st_ino;
    const int file = REAL(open)(lib.RuleFile.c_str(), O_RDONLY | O_CLOEXEC);
    std::string text(static_cast<std::size_t>(status.st_size), ' ');
    const auto got = REAL(pread)(file, text.data(), text.size(), 0);
    REAL(close)(file);
    SetRules(std::string_view(text).substr(0, static_cast<std::size_t>(std::max<ssize_t>(got, 0))));
    Write("rules " + (text.empty() ? "none" : text) + "\n");
}

std::string PathOfHandle(int handle) {
    char path[4096];
    const std::string link = "/proc/self/fd/" + std::to_string(handle);
    const auto length = readlink(link.c_str(), path, sizeof path);
    return std::string(path, static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
}

// A path as a call names it, made absolute; its links stay as they are.
std::string PathAt(int folder, const char *path) {
    const std::string name = path == nullptr ? "" : path;
    if (!name.empty() && name[0] == '/')
        return name;
    if (folder != AT_FDCWD)
        return PathOfHandle(folder) + "/" + name;
    char here[4096];
    return std::string(getcwd(here, sizeof here) == nullptr ? "" : here) + "/" + name;
}

// One call on a file: decides its fate, and leaves a line in the record.
class Call {
  public:
    Call(const char *name, std::string path) : Name(name), Path(std::move(path)) {
        const int kept = errno;
        const std::lock_guard lock(Lib().Mutex);
        if (!Lib().Ready)
            MakeReady();
        Counts = std::any_of(Lib().Folders.begin(), Lib().Folders.end(), [&](const auto &folder) {
            return Path.compare(0, folder.size(), folder) == 0;
        });
        if (Counts) {
            ReadRulesAnew();
            for (Rule &rule : Lib().Rules)
                Match(rule);
        }
        errno = kept;
    }

    bool Fails() const { return Error > 0; }
    bool IsShort() const { return Error == kShort; }

    template <class Result> Result Fail(Result result) {
        errno = Error;
        return Done(result);
    }

    // Ends the call: `result` is what the program gets.
    template <class Result>
    Result Done(Result result, const std::string &more = "", int handle = -1) {
        if (!Counts)
            return result;
        const int kept = errno;
        std::string line = Name;
        if (Error != 0)
            line = "FAILED " + line;
        struct stat status {};
        if (handle >= 0 && fstat(handle, &status) == 0)
            line += " #" + std::to_string(status.st_ino);
        line += " " + Path + more + " = " + Text(result);
        if constexpr (std::is_integral_v<Result>)
            if (result < 0)
                line += " errno " + std::to_string(kept);
        Write(line + "\n");
        errno = kept;
        return result;
    }

  private:
    template <class Result> static std::string Text(Result result) {
        if constexpr (std::is_pointer_v<Result>)
            return result == nullptr ? "null" : "ok";
        else
            return std::to_string(result);
    }

    void Match(Rule &rule) {
        if (rule.Call != Name || fnmatch(rule.Pattern.c_str(), Path.c_str(), 0) != 0)
            return;
        ++rule.Seen;
        if (rule.Seen < rule.First || rule.Seen > rule.Last || Error != 0)
            return;
        if (rule.Error == kKill) {
            Write("KILLED at " + Name + " " + Path + "\n");
            kill(getpid(), SIGKILL);
        }
        Error = rule.Error;
    }

    std::string Name, Path;
    bool Counts = false;
    int Error = 0;
};

// The bytes that a call has really moved.
std::string Range(std::int64_t offset, ssize_t moved) {
    return " [" + std::to_string(offset) + "+" + std::to_string(std::max<ssize_t>(moved, 0)) + "]";
}

std::size_t Half(const Call &call, std::size_t size) {
    return call.IsShort() && size > 1 ? size / 2 : size;
}

int OpenAt(const char *name, int folder, const char *path, int flags, mode_t mode) {
    Call call(name, PathAt(folder, path));
    if (call.Fails())
        return call.Fail(-1);
    const int handle = REAL(openat)(folder, path, flags, mode);
    char how[32];
    std::snprintf(how, sizeof how, " flags 0%o", static_cast<unsigned>(flags));
    return call.Done(handle, how, handle);
}

mode_t ModeOf(int flags, va_list arguments) {
    const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return makes ? static_cast<mode_t>(va_arg(arguments, int)) : 0;
}

ssize_t WriteAt(int handle, const void *bytes, std::size_t size, off_t offset) {
    Call call("pwrite", PathOfHandle(handle));
    if (call.Fails())
        return call.Fail<ssize_t>(-1);
    const auto done = REAL(pwrite)(handle, bytes, Half(call, size), offset);
    return call.Done(done, Range(offset, done), handle);
}

ssize_t ReadAt(int handle, void *bytes, std::size_t size, off_t offset) {
    Call call("pread", PathOfHandle(handle));
    if (call.Fails())
        return call.Fail<ssize_t>(-1);
    const auto done = REAL(pread)(handle, bytes, Half(call, size), offset);
    return call.Done(done, Range(offset, done), handle);
}

// For calls with a handle and nothing else to tell.
template <class Function> int WithHandle(const char *name, int handle, Function function) {
    Call call(name, PathOfHandle(handle));
    return call.Fails() ? call.Fail(-1) : call.Done(function(), "", handle);
}

template <class Function>
int WithPath(const char *name, int folder, const char *path, Function function) {
    Call call(name, PathAt(folder, path));
    return call.Fails() ? call.Fail(-1) : call.Done(function());
}

int Rename(int fromFolder, const char *from, int toFolder, const char *to, unsigned flags) {
    Call call("rename", PathAt(fromFolder, from));
    const std::string target = " -> " + PathAt(toFolder, to);
    if (call.Fails())
        return call.Fail(-1);
    const int done = flags == 0 ? REAL(renameat)(fromFolder, from, toFolder, to)
                                : REAL(renameat2)(fromFolder, from, toFolder, to, flags);
    return call.Done(done, target);
}

} // namespace

extern "C" {

int open(const char *path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return OpenAt("open", AT_FDCWD, path, flags, mode);
}

int open64(const char *path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return OpenAt("open", AT_FDCWD, path, flags, mode);
}

int openat(int folder, const char *path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return OpenAt("open", folder, path, flags, mode);
}

int openat64(int folder, const char *path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    return OpenAt("open", folder, path, flags, mode);
}

ssize_t pwrite(int handle, const void *bytes, std::size_t size, off_t offset) {
    return WriteAt(handle, bytes, size, offset);
}

ssize_t pwrite64(int handle, const void *bytes, std::size_t size, off64_t offset) {
    return WriteAt(handle, bytes, size, offset);
}

ssize_t pread(int handle, void *bytes, std::size_t size, off_t offset) {
    return ReadAt(handle, bytes, size, offset);
}

ssize_t pread64(int handle, void *bytes, std::size_t size, off64_t offset) {
    return ReadAt(handle, bytes, size, offset);
}

ssize_t write(int handle, const void *bytes, std::size_t size) {
    struct stat status {};
    if (fstat(handle, &status) != 0 || !S_ISREG(status.st_mode))
        return kRealWrite(handle, bytes, size);
    Call call("write", PathOfHandle(handle));
    if (call.Fails())
        return call.Fail<ssize_t>(-1);
    const off_t offset = lseek(handle, 0, SEEK_CUR);
    const auto done = kRealWrite(handle, bytes, Half(call, size));
    return call.Done(done, Range(offset, done), handle);
}

ssize_t copy_file_range(int from, off64_t *fromOffset, int to, off64_t *toOffset, std::size_t size,
                        unsigned flags) {
    Call call("write", PathOfHandle(to));
    if (call.Fails())
        return call.Fail<ssize_t>(-1);
    const off_t offset = toOffset == nullptr ? lseek(to, 0, SEEK_CUR) : *toOffset;
    const auto done =
        REAL(copy_file_range)(from, fromOffset, to, toOffset, Half(call, size), flags);
    return call.Done(done, Range(offset, done), to);
}

ssize_t sendfile(int to, int from, off_t *offset, std::size_t size) {
    Call call("write", PathOfHandle(to));
    if (call.Fails())
        return call.Fail<ssize_t>(-1);
    const off_t at = lseek(to, 0, SEEK_CUR);
    const auto done = REAL(sendfile)(to, from, offset, Half(call, size));
    return call.Done(done, Range(at, done), to);
}

int fdatasync(int handle) {
    return WithHandle("fdatasync", handle, [=] { return REAL(fdatasync)(handle); });
}

int fsync(int handle) {
    return WithHandle("fsync", handle, [=] { return REAL(fsync)(handle); });
}

int ftruncate(int handle, off_t length) noexcept {
    return WithHandle("ftruncate", handle, [=] { return REAL(ftruncate)(handle, length); });
}

int ftruncate64(int handle, off64_t length) noexcept {
    return WithHandle("ftruncate", handle, [=] { return REAL(ftruncate)(handle, length); });
}

int flock(int handle, int operation) noexcept {
    return WithHandle("flock", handle, [=] { return REAL(flock)(handle, operation); });
}

// A close that fails has closed the handle all the same.
int close(int handle) {
    Call call("close", PathOfHandle(handle));
    const int done = REAL(close)(handle);
    return call.Fails() ? call.Fail(-1) : call.Done(done);
}

int fcntl(int handle, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    const bool locks = command == F_SETLK || command == F_OFD_SETLK || command == F_SETLKW;
    if (!locks)
        return REAL(fcntl)(handle, command, argument);
    return WithHandle("fcntl", handle, [=] { return REAL(fcntl)(handle, command, argument); });
}

int fcntl64(int handle, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    return fcntl(handle, command, argument);
}

int rename(const char *from, const char *to) noexcept {
    return Rename(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int renameat(int fromFolder, const char *from, int toFolder, const char *to) noexcept {
    return Rename(fromFolder, from, toFolder, to, 0);
}

int renameat2(int fromFolder, const char *from, int toFolder, const char *to,
              unsigned flags) noexcept {
    return Rename(fromFolder, from, toFolder, to, flags);
}

int link(const char *from, const char *to) noexcept {
    return WithPath("link", AT_FDCWD, to, [=] { return REAL(link)(from, to); });
}

int unlink(const char *path) noexcept {
    return WithPath("unlink", AT_FDCWD, path, [=] { return REAL(unlink)(path); });
}

int unlinkat(int folder, const char *path, int flags) noexcept {
    return WithPath("unlink", folder, path, [=] { return REAL(unlinkat)(folder, path, flags); });
}

int remove(const char *path) noexcept {
    return WithPath("unlink", AT_FDCWD, path, [=] { return REAL(remove)(path); });
}

int mkdir(const char *path, mode_t mode) noexcept {
    return WithPath("mkdir", AT_FDCWD, path, [=] { return REAL(mkdir)(path, mode); });
}

DIR *opendir(const char *path) {
    Call call("opendir", PathAt(AT_FDCWD, path));
    return call.Fails() ? call.Fail<DIR *>(nullptr) : call.Done(REAL(opendir)(path));
}

struct dirent *readdir(DIR *folder) {
    Call call("readdir", PathOfHandle(dirfd(folder)));
    return call.Fails() ? call.Fail<dirent *>(nullptr) : call.Done(REAL(readdir)(folder));
}

struct dirent64 *readdir64(DIR *folder) {
    Call call("readdir", PathOfHandle(dirfd(folder)));
    return call.Fails() ? call.Fail<dirent64 *>(nullptr) : call.Done(REAL(readdir64)(folder));
}
}
