#include "session/prefix_index.h"

#include <algorithm>
#include <utility>

namespace zrt {

namespace {

// FNV-1a, so that the hash of a text goes on from that of its beginning.
constexpr std::uint32_t kHashOfNothing = 2166136261U;

constexpr std::uint32_t HashOn(std::uint32_t hash, char c) {
    return (hash ^ static_cast<unsigned char>(c)) * 16777619U;
}

std::uint32_t HashOf(std::string_view text) {
    std::uint32_t hash = kHashOfNothing;
    for (const char c : text)
        hash = HashOn(hash, c);
    return hash;
}

const PrefixEntry &EntryAt(const PrefixIndex &index, i32 place) {
    return index.Entries[static_cast<std::size_t>(place) - 1];
}

// The place of a text, or the free one where it would stand. A quarter of the slots is always free.
std::size_t SlotOf(const PrefixIndex &index, std::uint32_t hash, std::string_view text) {
    const std::size_t mask = index.Slots.size() - 1;
    std::size_t place = (hash ^ (hash >> 15)) & mask;
    for (;; place = (place + 1) & mask) {
        const PrefixSlot &slot = index.Slots[place];
        if (slot.Text == 0 || (slot.Hash == hash && EntryAt(index, slot.Text).Text == text))
            return place;
    }
}

void Grow(PrefixIndex &index) {
    constexpr std::size_t kFirstSlots = 1024;
    std::vector<PrefixSlot> old(std::max(kFirstSlots, index.Slots.size() * 2));
    old.swap(index.Slots);
    for (const PrefixSlot &slot : old)
        if (slot.Text != 0)
            index.Slots[SlotOf(index, slot.Hash, EntryAt(index, slot.Text).Text)] = slot;
}

void TakeFirst(i32 &place, i32 entry) {
    if (place == 0)
        place = entry;
}

struct Mark {
    char Opening, Closing;
};
constexpr std::array kMarks = {Mark{'[', ']'}, Mark{'(', ')'}, Mark{'<', '>'}, Mark{'{', '}'},
                               Mark{'~', '~'}};

// Takes all marks of one kind out of the text; gives what the last of them held.
std::string StripMarks(std::string &text, Mark mark) {
    std::string held;
    std::size_t begin = 0;
    while ((begin = text.find(mark.Opening, begin)) != std::string::npos) {
        const std::size_t end = std::min(text.find(mark.Closing, begin + 1), text.size());
        held = text.substr(begin + 1, end - begin - 1);
        text.erase(begin, end - begin + 1);
    }
    return held;
}

} // namespace

PrefixEntry ParsePrefix(std::string_view piece, i16 row) {
    PrefixEntry entry{.Text = std::string(piece), .Row = row};
    for (const Mark mark : kMarks) {
        const std::string held = StripMarks(entry.Text, mark);
        if (mark.Opening == '(')
            entry.Zone = ValueI16(held);
    }
    entry.WholeCall = entry.Text.starts_with('=');
    if (entry.WholeCall)
        entry.Text.erase(0, 1);
    return entry;
}

void AddPrefix(PrefixIndex &index, PrefixEntry entry, bool starred) {
    if ((index.UsedSlots + 1) * 4 > index.Slots.size() * 3)
        Grow(index);
    index.Longest = std::max(index.Longest, entry.Text.size());
    index.Entries.push_back(std::move(entry));
    const PrefixEntry &added = index.Entries.back();
    const auto number = static_cast<i32>(index.Entries.size());
    const std::uint32_t hash = HashOf(added.Text);
    PrefixSlot &slot = index.Slots[SlotOf(index, hash, added.Text)];
    if (slot.Text == 0) {
        slot.Text = number;
        slot.Hash = hash;
        ++index.UsedSlots;
    }
    for (const auto kind : {StarredCountries::Count, StarredCountries::Skip}) {
        if (starred && kind == StarredCountries::Skip)
            continue;
        TakeFirst(slot.Call[static_cast<std::size_t>(kind)], number);
        if (!added.WholeCall)
            TakeFirst(slot.Beginning[static_cast<std::size_t>(kind)], number);
    }
}

FoundPrefix FindPrefix(const PrefixIndex &index, std::string_view call, StarredCountries starred) {
    if (index.Entries.empty())
        return {};
    const auto kind = static_cast<std::size_t>(starred);
    i32 longest = 0;
    std::uint32_t hash = kHashOfNothing;
    for (std::size_t length = 0; length <= std::min(call.size(), index.Longest); ++length) {
        if (length > 0)
            hash = HashOn(hash, call[length - 1]);
        const PrefixSlot &slot = index.Slots[SlotOf(index, hash, call.substr(0, length))];
        if (length == call.size() && slot.Call[kind] != 0)
            return {&EntryAt(index, slot.Call[kind]), true};
        // An empty text is the beginning of every call, and tells nothing of it.
        if (length > 0 && slot.Beginning[kind] != 0)
            longest = slot.Beginning[kind];
    }
    return {longest == 0 ? nullptr : &EntryAt(index, longest), false};
}

} // namespace zrt
