// The country look-up as a plain loop over plain texts, slow and obvious: what the hash of the
// program must agree with.
#pragma once

#include "entry/callsign.h"
#include "session/fixed_text.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zrt {

class PlainCountries {
  public:
    explicit PlainCountries(const std::string &text) {
        std::string line;
        for (const char c : text + '\n') {
            if (c == '\r' || c == '\n') {
                TakeLine(line);
                line.clear();
            } else {
                line += c;
            }
        }
    }

    struct Answer {
        int Row = 0, Zone = 0;
        friend bool operator==(const Answer &, const Answer &) = default;
    };
    Answer Lookup(std::string call, bool arrlDx) const {
        bool equal = false;
        // Portable in Guantanamo Bay.
        const bool designator = call.substr(0, 4) == "KG4/" ||
                                (call.size() >= 4 && call.substr(call.size() - 4) == "/KG4");
        Answer answer = Run(call, arrlDx, equal);
        if (!equal && call.find('/') != std::string::npos) {
            call = WpxPrefix(call);
            answer = Run(call, arrlDx, equal);
        }
        if (call.substr(0, 3) == "KG4") {
            if (designator || call.size() == 5)
                answer.Zone = 8;
            else
                answer = {RowOf("K"), 5};
        }
        return answer;
    }

    int RowOf(const std::string &mainPrefix) const {
        int row = 0;
        for (std::size_t i = 0; i < Countries.size(); ++i)
            if (Trim(Countries[i]) == mainPrefix)
                row = static_cast<int>(i) + 1;
        return row;
    }

    struct Entry {
        std::string Text;
        int Row = 0, Zone = 0;
        bool WholeCall = false, Starred = false;
    };
    std::vector<std::string> Countries; // main prefixes, row 1 first
    std::vector<Entry> Entries;

  private:
    void TakeLine(const std::string &line) {
        std::string trimmed(Trim(line));
        if (trimmed.empty() || line[0] == '\'')
            return;
        if (trimmed.back() == ':') {
            Countries.push_back(MainPrefix(trimmed));
            return;
        }
        if (trimmed.back() != ';' && trimmed.back() != ',')
            trimmed += ',';
        std::string piece;
        for (const char c : trimmed) {
            if (c == ',') {
                Store(std::string(Trim(piece)));
                piece.clear();
            } else {
                piece += c;
            }
        }
        if (!piece.empty())
            piece.pop_back();
        if (!Trim(piece).empty())
            Store(std::string(Trim(piece)));
    }

    static std::string MainPrefix(const std::string &line) {
        std::vector<std::string> columns(1);
        for (const char c : line) {
            if (c == ':')
                columns.emplace_back();
            else
                columns.back() += c;
        }
        columns.resize(8);
        std::string prefix = UpperCase(Trim(columns[7])).substr(0, 5);
        std::replace(prefix.begin(), prefix.end(), '\0', ' '); // as in every fixed field
        return prefix;
    }

    // Takes out what stands from `opening` to `closing`, both gone; gives what was between.
    static std::string Strip(std::string &text, char opening, char closing) {
        std::string held;
        for (auto begin = text.find(opening); begin != std::string::npos;
             begin = text.find(opening)) {
            const auto end = text.find(closing, begin + 1);
            held = text.substr(begin + 1, end == std::string::npos ? end : end - begin - 1);
            text.erase(begin, end == std::string::npos ? end : end - begin + 1);
        }
        return held;
    }

    void Store(const std::string &piece) {
        Entry entry;
        entry.Text = piece;
        entry.Row = static_cast<int>(Countries.size());
        entry.Starred = !Countries.empty() && Countries.back().substr(0, 1) == "*";
        Strip(entry.Text, '[', ']');
        entry.Zone = ValueI16(Strip(entry.Text, '(', ')'));
        Strip(entry.Text, '<', '>');
        Strip(entry.Text, '{', '}');
        Strip(entry.Text, '~', '~');
        if (!entry.Text.empty() && entry.Text[0] == '=') {
            entry.WholeCall = true;
            entry.Text.erase(0, 1);
        }
        Entries.push_back(entry);
    }

    Answer Run(const std::string &call, bool arrlDx, bool &equal) const {
        const Entry *best = nullptr;
        std::size_t longest = 0;
        equal = false;
        for (const Entry &entry : Entries) {
            if ((arrlDx && entry.Starred) || entry.Text.size() > call.size())
                continue;
            if (entry.Text.size() == call.size()) {
                if (entry.Text == call) {
                    equal = true;
                    return {entry.Row, entry.Zone};
                }
            } else if (!entry.WholeCall && entry.Text.size() > longest &&
                       call.compare(0, entry.Text.size(), entry.Text) == 0) {
                best = &entry;
                longest = entry.Text.size();
            }
        }
        return best == nullptr ? Answer{} : Answer{best->Row, best->Zone};
    }
};

} // namespace zrt
