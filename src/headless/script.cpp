#include "headless/script.h"

#include <charconv>

namespace zrt {

namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

// Takes the lines of a text one by one, without their ends.
struct LineReader {
    std::string_view Rest;
    int Number = 0;

    bool Next(std::string_view &line) {
        if (Rest.empty())
            return false;
        const auto end = Rest.find('\n');
        line = Rest.substr(0, end);
        Rest.remove_prefix(end == std::string_view::npos ? Rest.size() : end + 1);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        ++Number;
        return true;
    }
};

// Takes one escape behind its backslash. False for an escape that there isn't.
bool TakeEscape(std::string_view &rest, std::string &text) {
    if (rest.empty())
        return false;
    const char c = rest.front();
    rest.remove_prefix(1);
    switch (c) {
    case '"':
    case '\\': text += c; return true;
    case 'n': text += '\n'; return true;
    case 't': text += '\t'; return true;
    case 'x': {
        const int high = !rest.empty() ? HexDigit(rest[0]) : -1;
        const int low = rest.size() > 1 ? HexDigit(rest[1]) : -1;
        if (high < 0 || low < 0)
            return false;
        text += static_cast<char>(high * 16 + low);
        rest.remove_prefix(2);
        return true;
    }
    default: return false;
    }
}

// Takes a quoted part behind its opening quote. Returns what is wrong with it, if anything.
std::string TakeQuoted(std::string_view &rest, std::string &text) {
    while (!rest.empty()) {
        const char c = rest.front();
        rest.remove_prefix(1);
        if (c == '"')
            return {};
        if (c != '\\')
            text += c;
        else if (!TakeEscape(rest, text))
            return "a backslash that stands before none of \" \\ n t xHH";
    }
    return "a text without its closing quote";
}

std::string SplitWords(std::string_view rest, std::vector<ScriptWord> &words) {
    for (rest = Trimmed(rest); !rest.empty(); rest = Trimmed(rest)) {
        ScriptWord word;
        while (!rest.empty() && !IsBlank(rest.front())) {
            const char c = rest.front();
            rest.remove_prefix(1);
            if (c != '"') {
                word.Text += c;
                continue;
            }
            word.Quoted = true;
            if (std::string error = TakeQuoted(rest, word.Text); !error.empty())
                return error;
        }
        words.push_back(word);
    }
    return {};
}

bool OpensBlock(const ScriptWord &word) {
    return !word.Quoted && word.Text.size() > 2 && word.Text.starts_with("<<");
}

// Takes the lines of the block that the line's last words open, if they do.
void TakeBlock(LineReader &reader, ScriptLine &line) {
    auto &words = line.Words;
    std::string_view lineEnd = "\r\n";
    const bool unixEnds = words.size() > 1 && words.back().Text == "lf" && !words.back().Quoted &&
                          OpensBlock(words[words.size() - 2]);
    if (unixEnds) {
        lineEnd = "\n";
        words.pop_back();
    }
    if (words.empty() || !OpensBlock(words.back()))
        return;
    const std::string endWord = words.back().Text.substr(2);
    words.pop_back();
    std::string block;
    std::string_view text;
    while (reader.Next(text)) {
        if (text == endWord) {
            line.Block = block;
            return;
        }
        block += text;
        block += lineEnd;
    }
    line.Error = "a block without its closing " + endWord;
}

} // namespace

std::vector<ScriptLine> ParseScript(std::string_view text) {
    std::vector<ScriptLine> lines;
    LineReader reader{text};
    std::string_view raw;
    while (reader.Next(raw)) {
        ScriptLine line;
        line.Number = reader.Number;
        line.Text = Trimmed(raw);
        if (line.Text.empty())
            continue;
        line.Comment = line.Text.front() == '#';
        if (!line.Comment) {
            line.Error = SplitWords(line.Text, line.Words);
            if (line.Error.empty())
                TakeBlock(reader, line);
        }
        lines.push_back(line);
    }
    return lines;
}

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\')
            quoted += {'\\', c};
        else if (c == '\n')
            quoted += "\\n";
        else if (c == '\t')
            quoted += "\\t";
        else if (byte < 0x20 || byte == 0x7F)
            quoted += {'\\', 'x', kHexDigits[byte >> 4U], kHexDigits[byte & 15U]};
        else
            quoted += c;
    }
    return quoted + "\"";
}

std::optional<long long> WholeNumber(std::string_view text) {
    long long number = 0;
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (text.empty() || result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return number;
}

std::optional<std::string> BytesOf(const std::vector<ScriptWord> &words, std::size_t first) {
    std::string bytes;
    for (std::size_t i = first; i < words.size(); ++i) {
        const std::string &text = words[i].Text;
        if (words[i].Quoted) {
            bytes += text;
            continue;
        }
        if (text.size() % 2 != 0)
            return std::nullopt;
        for (std::size_t at = 0; at < text.size(); at += 2) {
            const int high = HexDigit(text[at]);
            const int low = HexDigit(text[at + 1]);
            if (high < 0 || low < 0)
                return std::nullopt;
            bytes += static_cast<char>(high * 16 + low);
        }
    }
    return bytes;
}

std::string HexText(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (!text.empty())
            text += ' ';
        text += {kHexDigits[byte >> 4U], kHexDigits[byte & 15U]};
    }
    return text;
}

} // namespace zrt
