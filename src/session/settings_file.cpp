#include "session/settings_file.h"

#include "platform/controls.h"
#include "platform/files.h"
#include "platform/program.h"
#include "session/data_files.h"
#include "session/file_errors.h"
#include "session/session_flags.h"
#include "session/settings.h"
#include "session/settings_keys.h"
#include "session/user_profiles.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <map>

namespace zrt {

namespace {

constexpr std::string_view kBarePrefix = "[RADIO0][PLAY1]";
constexpr std::size_t kMessageRows = 9; // the macros that carry a prefix

// ---- reading

bool IsContinuation(char c) {
    return (c & 0xC0) == 0x80;
}

// The length of the UTF-8 character that the text begins with; 0 if it is none.
std::size_t CharacterLength(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead < 0xC2   ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || length > text.size() ||
        !std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(length),
                     IsContinuation))
        return 0;
    const auto second = static_cast<unsigned char>(text[1]);
    const bool outOfRange = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                            (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
    return outOfRange ? 0 : length;
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

// Where the reading stands.
struct Reader {
    const Section *Current = nullptr;
    std::size_t Row = 0;                           // in the section of bare rows
    std::map<const Section *, std::size_t> Groups; // in a section of groups: for the whole file
    std::string_view Key, Value;                   // of the last line that had a "="
};

const Section *SectionOf(std::string_view header) {
    for (const Section &section : SettingsSections())
        if (section.Header == header)
            return &section;
    return nullptr;
}

void BeginSection(Reader &reader, const Section &section) {
    reader.Current = &section;
    reader.Row = 0;
    if (section.InFile != nullptr)
        *section.InFile = true;
}

void TakeKeyLine(Reader &reader, std::string_view line) {
    const auto equals = line.find('=');
    if (equals != std::string_view::npos) {
        reader.Key = Trim(line.substr(0, equals));
        reader.Value = Trim(line.substr(equals + 1));
    } // else the last key and value count again
    const auto &groups = reader.Current->Groups;
    std::size_t &group = reader.Groups[reader.Current];
    const auto row = std::find_if(groups[group].begin(), groups[group].end(),
                                  [&](const KeyRow &r) { return r.Key == reader.Key; });
    if (row == groups[group].end())
        return;
    TakeValue(row->Target, reader.Value);
    if (row->EndsGroup && group + 1 < groups.size())
        ++group;
}

// Files of old versions have macros without the prefix. An empty exchange or dupe message is
// written as the bare prefix, because a blank line would not count as a row.
std::string MacroOfLine(std::size_t row, std::string_view line) {
    if (row >= kMessageRows)
        return std::string(line == kBarePrefix ? std::string_view() : line);
    return std::string(line.substr(0, 4) == "[RAD" ? std::string_view() : kBarePrefix).append(line);
}

// Name, state, top, left, height and width.
WindowInfo WindowOfLine(std::string_view line) {
    std::array<std::string_view, 6> fields;
    for (std::string_view &field : fields) {
        line = TrimLeft(line);
        const auto end = std::min(line.find(' '), line.size());
        field = line.substr(0, end);
        line.remove_prefix(end);
    }
    WindowInfo window;
    window.Name = CutAt(fields[0], 20);
    window.State = CutAt(fields[1], 6);
    window.Top = ValueI16(fields[2]);
    window.Left = ValueI16(fields[3]);
    window.Height = ValueI16(fields[4]);
    window.Width = ValueI16(fields[5]);
    return window;
}

void TakeRow(Reader &reader, std::string_view line) {
    const Section &section = *reader.Current;
    const std::size_t row = reader.Row++;
    if (row < section.Macros.size())
        section.Macros[row] = MacroOfLine(row, line);
    if (row < section.Labels.size())
        section.Labels[row] = line;
    if (row < section.Windows.size())
        section.Windows[row] = WindowOfLine(line);
}

void TakeLine(Reader &reader, std::string_view line) {
    const std::string_view trimmed = Trim(line);
    if (trimmed.empty())
        return;
    const Section *section = trimmed.front() == '[' ? SectionOf(trimmed) : nullptr;
    if (section != nullptr)
        BeginSection(reader, *section);
    else if (reader.Current == nullptr || reader.Current->Ignored)
        return;
    else if (!reader.Current->Groups.empty())
        TakeKeyLine(reader, line);
    else
        TakeRow(reader, line);
}

// ---- writing

// A line end inside a value would make another line of it.
void AppendLine(std::string &text, std::string_view line) {
    std::copy_if(line.begin(), line.end(), std::back_inserter(text),
                 [](char c) { return c != '\r' && c != '\n'; });
    text += "\r\n";
}

bool IsBlank(std::string_view row) {
    return row.find_first_not_of(" \r\n") == std::string_view::npos;
}

// A row that would be blank, and so be skipped on reading, is written as what stands for it.
void AppendRow(std::string &text, std::string_view row, std::string_view ifBlank) {
    AppendLine(text, IsBlank(row) ? ifBlank : row);
}

void AppendWindow(std::string &text, const WindowInfo &window, std::size_t place) {
    const std::string name(CutAt(Trim(window.Name), 20));
    const std::string state(CutAt(Trim(window.State), 6));
    AppendLine(text, (IsBlank(name) ? UpperCase(kWindowNames[place]) : name) + ' ' +
                         (IsBlank(state) ? "CLOSED" : state) + ' ' + std::to_string(window.Top) +
                         ' ' + std::to_string(window.Left) + ' ' + std::to_string(window.Height) +
                         ' ' + std::to_string(window.Width));
}

void AppendKey(std::string &text, const KeyRow &row) {
    const auto *spaced = std::get_if<SpacedFlag>(&row.Target);
    const char *equals = spaced != nullptr && !*spaced->Flag ? " = " : "=";
    AppendLine(text, row.Key + equals + ValueText(row.Target));
    if (row.BlankAfter)
        AppendLine(text, "");
}

void AppendSection(std::string &text, const Section &section) {
    AppendLine(text, section.Header);
    for (const auto &group : section.Groups)
        for (const KeyRow &row : group)
            AppendKey(text, row);
    for (const std::string &macro : section.Macros)
        AppendRow(text, macro, kBarePrefix);
    for (const std::string &label : section.Labels)
        AppendRow(text, label, "$");
    for (std::size_t i = 0; i < section.Windows.size(); ++i)
        AppendWindow(text, section.Windows[i], i);
    AppendLine(text, "");
}

// ---- windows

i16 Twips(int value) {
    using Limits = std::numeric_limits<i16>;
    return static_cast<i16>(std::clamp<int>(value, Limits::min(), Limits::max()));
}

// Takes the place of the window into its row. A window that was never placed has none: the row
// keeps the one it has.
void TakePlace(WindowInfo &row, WindowRow window) {
    const NamedForm *named = FindForm(kWindowNames[window]);
    if (named == nullptr)
        return;
    const Form &form = *named->Record;
    row.Name = UpperCase(kWindowNames[window]);
    row.State = form.Visible ? "OPEN" : "CLOSED";
    if (!HasPlace(form))
        return;
    row.Left = Twips(form.Left);
    row.Top = Twips(form.Top);
    row.Height = Twips(form.Height);
    row.Width = Twips(form.Width);
}

// Files of old versions have no row of the window of partial calls: every contest gets one.
void AddPartialRows() {
    for (auto &windows : Settings.Windows) {
        WindowInfo &row = windows[kPartial];
        row = {};
        TakePlace(row, kPartial);
        row.Name = UpperCase(kWindowNames[kPartial]);
        row.State = "CLOSED";
    }
}

void UpdateWindows(bool withWindows) {
    if (Contest.ContestId < 1 || Contest.ContestId > kContests)
        return;
    auto &rows = Settings.Windows[static_cast<std::size_t>(Contest.ContestId - 1)];
    if (!EqualIgnoringCase(rows[kPartial].Name, kWindowNames[kPartial]))
        AddPartialRows();
    if (withWindows)
        for (const WindowRow window :
             {kLogForm, kViewMult, kQSOStats, kViewMac, kAudio, kZTCTY, kViewZnCty, kPartial})
            TakePlace(rows[window], window);
}

} // namespace

void TakeSettingsText(std::string_view bytes) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; // some editors put it in front
    const bool utf8 = IsUtf8(bytes);
    const std::string converted = utf8 ? std::string() : FromLatin1(bytes);
    std::string_view rest = utf8 ? bytes : std::string_view(converted);
    if (rest.substr(0, kByteOrderMark.size()) == kByteOrderMark)
        rest.remove_prefix(kByteOrderMark.size());
    Reader reader;
    while (!rest.empty())
        TakeLine(reader, NextLine(rest));
}

std::string SettingsText() {
    std::string text;
    for (const Section &section : SettingsSections())
        if (!section.Ignored && (section.InFile == nullptr || *section.InFile))
            AppendSection(text, section);
    return text;
}

std::string FirstFolder() {
    constexpr std::string_view kDocuments = "{documents}";
    std::string folder = Extensions.LogFolder;
    if (folder.starts_with(kDocuments)) {
        std::string documents = ProgramFolders.DocumentsFolder();
        if (documents.empty())
            return Session.AppPath;
        folder.replace(0, kDocuments.size(), WithoutSeparator(documents));
    }
    return folder.empty() ? Session.AppPath : folder;
}

int ReadSettings() {
    FileBytes bytes;
    if (const int error =
            ReadFileUpTo(Session.AppPath + kSettingsFile, kLongestSettingsFile, bytes))
        return error;
    TakeSettingsText({reinterpret_cast<const char *>(bytes.data()), bytes.size()});
    Session.SettingsRead = true;
    CheckTimingMethod();
    // The program's folder with its separator is what was written before one was chosen.
    if (Settings.OpenFilePath.empty() || Settings.OpenFilePath == Session.AppPath)
        Settings.OpenFilePath = FirstFolder();
    const bool named = NameProfiles();
    FindCurrentProfile();
    if (named)
        WriteSettings(false);
    return 0;
}

int TryWriteSettings(bool withWindows) {
    if (!Session.SettingsRead)
        return 0;
    UpdateWindows(withWindows);
    const std::string text = SettingsText();
    return ReplaceFile(Session.AppPath + kSettingsFile, std::as_bytes(std::span(text)));
}

void WriteSettings(bool withWindows) {
    for (;;) {
        const int error = TryWriteSettings(withWindows);
        if (error == 0 || FileErrorAction(ErrorNumberOf(error)) != FileAction::Retry)
            return;
    }
}

} // namespace zrt
