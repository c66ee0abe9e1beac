// The commands that make the world of a scenario: its program folder, the clock, ports and disk.
#include "headless/scenario_run.h"
#include "platform/events.h"
#include "platform/program.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

namespace zrt {

namespace {

namespace fs = std::filesystem;

const std::string &Word(const ScriptLine &line, std::size_t index) {
    return line.Words[index].Text;
}

void WriteFile(const std::string &path, std::string_view bytes) {
    std::error_code error;
    fs::create_directories(fs::path(path).parent_path(), error);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        CannotDo("can't write " + path);
}

// ---- the program folder

void FillFrom(const std::string &folder) {
    if (Run.FolderFilled)
        CannotDo("the program folder has been filled; this line must stand before");
    std::error_code error;
    if (!fs::is_directory(folder, error))
        CannotDo("no such folder: " + folder);
    fs::copy(folder, Devices.ProgramFolder,
             fs::copy_options::recursive | fs::copy_options::overwrite_existing, error);
    if (error)
        CannotDo("can't copy " + folder + ": " + error.message());
    Run.FolderFilled = true;
}

void DoFolder(const ScriptLine &line) {
    FillFrom(BesideFile(Word(line, 1)));
}

void DoData(const ScriptLine &line) {
    if (Word(line, 1) == "minimal")
        FillFrom(Run.Program.MinimalData);
    else if (Word(line, 1) == "shipped")
        FillFrom(Run.Program.ShippedData);
    else
        CannotDo("no such data: " + Word(line, 1));
}

void DoPut(const ScriptLine &line) {
    if (!line.Block)
        CannotDo("put wants a block");
    FillFolder();
    WriteFile(InProgramFolder(Word(line, 1)), *line.Block);
}

void DoPutHex(const ScriptLine &line) {
    const auto bytes = BytesOf(line.Words, 2);
    if (!bytes)
        CannotDo("not hex bytes");
    FillFolder();
    WriteFile(InProgramFolder(Word(line, 1)), *bytes);
}

std::string LittleEndian(std::uint32_t number, std::size_t size) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i, number >>= 8U)
        bytes += static_cast<char>(number & 0xFFU);
    return bytes;
}

// Copies a file from beside the scenario.
void DoTake(const ScriptLine &line) {
    FillFolder();
    WriteFile(InProgramFolder(Word(line, 1)), TextOfFile(BesideFile(Word(line, 2))));
}

// A silent wave: 8000 samples a second, one byte each.
void DoPutWave(const ScriptLine &line) {
    const auto length = WholeNumber(Word(line, 2));
    if (!length || *length < 0 || *length > 600'000)
        CannotDo("not a length in milliseconds: " + Word(line, 2));
    constexpr std::uint32_t rate = 8000;
    const auto size = static_cast<std::uint32_t>(*length) * rate / 1000;
    const std::string format = LittleEndian(1, 2) + LittleEndian(1, 2) + LittleEndian(rate, 4) +
                               LittleEndian(rate, 4) + LittleEndian(1, 2) + LittleEndian(8, 2);
    FillFolder();
    WriteFile(InProgramFolder(Word(line, 1)),
              "RIFF" + LittleEndian(36 + size, 4) + "WAVEfmt " + LittleEndian(16, 4) + format +
                  "data" + LittleEndian(size, 4) + std::string(size, '\x80'));
}

void DoRemove(const ScriptLine &line) {
    FillFolder();
    std::error_code error;
    if (!fs::remove(InProgramFolder(Word(line, 1)), error))
        CannotDo("no such file: " + Word(line, 1));
}

// Keeps the first bytes of a file, as a copy that broke off does.
void DoCut(const ScriptLine &line) {
    const auto length = WholeNumber(Word(line, 2));
    FillFolder();
    const std::string path = InProgramFolder(Word(line, 1));
    std::error_code error;
    const auto before = fs::file_size(path, error);
    if (error || !length || *length < 0 || static_cast<std::uintmax_t>(*length) > before)
        CannotDo("cut wants a file and a length within it");
    fs::resize_file(path, static_cast<std::uintmax_t>(*length), error);
    if (error)
        CannotDo("can't cut " + path + ": " + error.message());
}

// ---- the settings file, as text

std::string Trimmed(const std::string &text) {
    const auto first = text.find_first_not_of(" \t\r");
    const auto last = text.find_last_not_of(" \t\r");
    return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
}

std::vector<std::string> LinesOf(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (line.ends_with('\r'))
            line.pop_back(); // blanks stay: they count in some sections
        lines.push_back(line);
    }
    return lines;
}

// Replaces the key's line in its section, or adds it behind the section's last line that is not
// blank.
void SetKey(std::vector<std::string> &lines, const std::string &section, const std::string &key,
            const std::string &value) {
    const std::string wanted = key + " = " + value;
    auto at = std::find_if(lines.begin(), lines.end(),
                           [&](const std::string &line) { return Trimmed(line) == section; });
    if (at == lines.end()) {
        lines.insert(lines.end(), {section, wanted, ""});
        return;
    }
    auto place = ++at;
    for (; at != lines.end() && !at->starts_with('['); ++at) {
        if (Trimmed(at->substr(0, at->find('='))) == key && at->find('=') != std::string::npos) {
            *at = wanted;
            return;
        }
        if (!Trimmed(*at).empty())
            place = at + 1;
    }
    lines.insert(place, wanted);
}

// "{folder}" in a value stands for the program folder, whose name no scenario can know.
std::string WithFolder(std::string value) {
    constexpr std::string_view kPlace = "{folder}";
    const auto at = value.find(kPlace);
    return at == std::string::npos ? value
                                   : value.replace(at, kPlace.size(), Devices.ProgramFolder);
}

void DoSetting(const ScriptLine &line) {
    const std::string &section = Word(line, 1);
    std::string rest;
    for (std::size_t i = 2; i < line.Words.size(); ++i)
        rest += (i > 2 ? " " : "") + Word(line, i);
    const auto equals = rest.find('=');
    if (!section.starts_with('[') || !section.ends_with(']') || equals == std::string::npos)
        CannotDo("setting wants \"[Section]\" Key=Value");
    FillFolder();
    const std::string path = InProgramFolder(Run.Program.SettingsFile);
    const std::string before = fs::exists(path) ? TextOfFile(path) : std::string();
    const bool unixEnds = !before.empty() && before.find("\r\n") == std::string::npos;
    auto lines = LinesOf(before);
    SetKey(lines, section, Trimmed(rest.substr(0, equals)),
           WithFolder(Trimmed(rest.substr(equals + 1))));
    std::string after;
    for (const std::string &text : lines)
        after += text + (unixEnds ? "\n" : "\r\n");
    WriteFile(path, after);
}

// Takes the first line of this text out of a file.
void DoDropLine(const ScriptLine &line) {
    FillFolder();
    const std::string path = InProgramFolder(Word(line, 1));
    const std::string before = fs::exists(path) ? TextOfFile(path) : std::string();
    auto lines = LinesOf(before);
    const auto at = std::find(lines.begin(), lines.end(), Word(line, 2));
    if (at == lines.end())
        CannotDo("no such line: " + Word(line, 2));
    lines.erase(at);
    std::string after;
    for (const std::string &text : lines)
        after += text + "\r\n";
    WriteFile(path, after);
}

// ---- clock, ports, disk

// Takes "2015-02-21" or "00:00:00": three numbers with `separator` between.
bool ThreeNumbers(const std::string &text, char separator, int &a, int &b, int &c) {
    std::istringstream stream(text);
    std::string parts[3];
    for (std::string &part : parts)
        std::getline(stream, part, separator);
    int *const numbers[] = {&a, &b, &c};
    for (std::size_t i = 0; i < 3; ++i) {
        const auto number = WholeNumber(parts[i]);
        if (!number || *number < 0 || *number > 9999)
            return false;
        *numbers[i] = static_cast<int>(*number);
    }
    return stream.eof() && std::count(text.begin(), text.end(), separator) == 2;
}

bool Valid(const MachineTime &time) {
    using namespace std::chrono;
    const year_month_day date(year(time.Year), month(static_cast<unsigned>(time.Month)),
                              day(static_cast<unsigned>(time.Day)));
    return date.ok() && time.Hour < 24 && time.Minute < 60 && time.Second < 60;
}

int ZoneOf(const std::string &text) {
    const bool west = text.starts_with('-');
    const bool formed = text.size() == 6 && (west || text[0] == '+') && text[3] == ':';
    const auto hours = WholeNumber(formed ? text.substr(1, 2) : "");
    const auto minutes = WholeNumber(formed ? text.substr(4, 2) : "");
    if (!hours || !minutes || *hours < 0 || *hours > 14 || *minutes < 0 || *minutes > 59)
        CannotDo("not a time zone: " + text);
    const int offset = static_cast<int>(*hours * 60 + *minutes);
    return west ? -offset : offset;
}

void DoClock(const ScriptLine &line) {
    MachineTime time;
    if (!ThreeNumbers(Word(line, 1), '-', time.Year, time.Month, time.Day) ||
        !ThreeNumbers(Word(line, 2), ':', time.Hour, time.Minute, time.Second) || !Valid(time))
        CannotDo("not a time: " + Word(line, 1) + " " + Word(line, 2));
    if (line.Words.size() == 4 || (line.Words.size() == 5 && Word(line, 3) != "zone"))
        CannotDo("clock wants a date, a time and maybe zone -05:00");
    if (line.Words.size() == 5)
        Devices.ZoneMinutes = ZoneOf(Word(line, 4));
    SetUtc(time);
}

void DoPort(const ScriptLine &line) {
    const std::string &mode = Word(line, 2);
    PortState &port = Devices.Ports[Word(line, 1)];
    if (mode == "present")
        port.Mode = PortMode::Present;
    else if (mode == "absent")
        port.Mode = PortMode::Absent;
    else if (mode == "failing")
        port.Mode = PortMode::Failing;
    else
        CannotDo("a port is present, absent or failing");
}

void DoDisk(const ScriptLine &line) {
    const std::string &mode = Word(line, 1);
    if (mode == "ok")
        Devices.Disk = DiskMode::Ok;
    else if (mode == "full")
        Devices.Disk = DiskMode::Full;
    else if (mode == "broken")
        Devices.Disk = DiskMode::Broken;
    else
        CannotDo("a disk is ok, full or broken");
}

void DoOtherCopy(const ScriptLine &line) {
    const std::string &state = Word(line, 1);
    if (state != "running" && state != "gone")
        CannotDo("another copy is running or gone");
    Devices.OtherCopyRunning = state == "running";
}

void DoStart(const ScriptLine & /*line*/) {
    FillFolder();
    Run.Started = true;
    Run.Program.Start();
}

void DoRestart(const ScriptLine & /*line*/) {
    if (!Run.Started)
        CannotDo("the program has not been started");
    if (Run.Restart == nullptr)
        CannotDo("restart can't be done in the process of the demonstration");
    Run.Restart();
}

using Times = CommandRow::Times;

constexpr CommandRow kCommands[] = {
    {"folder", 1, 1, DoFolder, Times::BeforeStart},
    {"data", 1, 1, DoData, Times::BeforeStart},
    {"put", 1, 1, DoPut, Times::Always},
    {"put-hex", 2, kAnyNumber, DoPutHex, Times::Always},
    {"put-wave", 2, 2, DoPutWave, Times::Always},
    {"take", 2, 2, DoTake, Times::Always},
    {"cut", 2, 2, DoCut, Times::Always},
    {"drop-line", 2, 2, DoDropLine, Times::Always},
    {"remove", 1, 1, DoRemove, Times::Always},
    {"setting", 2, kAnyNumber, DoSetting, Times::BeforeStart},
    {"clock", 2, 4, DoClock, Times::Always},
    {"port", 2, 2, DoPort, Times::Always},
    {"disk", 1, 1, DoDisk, Times::Always},
    {"other-copy", 1, 1, DoOtherCopy, Times::Always},
    {"start", 0, 0, DoStart, Times::BeforeStart},
    {"restart", 0, 0, DoRestart, Times::Always},
};

} // namespace

std::span<const CommandRow> SetupCommands() {
    return kCommands;
}

void FillFolder() {
    if (!Run.FolderFilled)
        FillFrom(Run.Program.ShippedData);
}

std::string MakeProgramFolder() {
    std::string folder = (fs::temp_directory_path() / "zrtlog-XXXXXX").string();
    if (::mkdtemp(folder.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), folder);
    return folder;
}

void RemoveProgramFolder(const std::string &folder) {
    std::error_code error; // what can't be removed stays; it is a temporary folder
    fs::remove_all(folder, error);
}

std::string InProgramFolder(const std::string &name) {
    const fs::path path(name);
    const bool leaves = std::find(path.begin(), path.end(), "..") != path.end();
    if (name.empty() || path.is_absolute() || leaves)
        CannotDo("not a name in the program folder: " + name);
    return (fs::path(Devices.ProgramFolder) / path).string();
}

std::string BesideFile(const std::string &name) {
    return (fs::path(Run.File).parent_path() / name).string();
}

} // namespace zrt
