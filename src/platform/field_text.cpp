#include "platform/field_text.h"

#include "platform/characters.h"

#include <algorithm>

namespace zrt {

namespace {

bool IsContinuation(char byte) {
    return (byte & 0xC0) == 0x80;
}

std::string_view WithoutBlanksAtEnds(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

std::string TextTaken(const TextBox &box, std::string_view text) {
    const bool isTyped = text == " ";
    std::string taken;
    while (!text.empty())
        if (const int character = CharacterTaken(box, TakeCharacter(text)))
            taken += Utf8(character);
    return isTyped ? taken : std::string(WithoutBlanksAtEnds(taken));
}

// False if nothing is left of the text.
bool Replace(TextBox &box, std::size_t start, std::size_t length, std::string_view text) {
    const std::string taken = TextTaken(box, text);
    start = std::min(start, box.Text.size());
    if (taken.empty() && !text.empty())
        return false;
    box.Text.replace(start, length, taken);
    box.SelStart = static_cast<int>(start + taken.size());
    box.SelLength = 0;
    return true;
}

bool RunChange(const TextBox &box, const std::string &before) {
    if (box.Text == before)
        return false;
    if (const auto change = box.Change)
        change();
    return true;
}

} // namespace

void InsertText(TextBox &box, std::string_view text) {
    const std::string before = box.Text;
    (void)Replace(box, static_cast<std::size_t>(box.SelStart),
                  static_cast<std::size_t>(box.SelLength), text);
    RunChange(box, before);
}

bool TakeEdit(TextBox &box, const std::string &shown, int selStart, int selLength) {
    const std::string before = box.Text;
    const std::size_t caret =
        std::min(static_cast<std::size_t>(selStart + selLength), shown.size());
    // What stands behind the caret was there before, and so was what both texts begin with.
    const std::size_t behind =
        before.ends_with(std::string_view(shown).substr(caret)) ? shown.size() - caret : 0;
    const std::size_t oldEnd = before.size() - behind;
    const std::size_t newEnd = shown.size() - behind;
    const auto differ = std::mismatch(before.begin(), before.begin() + static_cast<long>(oldEnd),
                                      shown.begin(), shown.begin() + static_cast<long>(newEnd));
    auto start = static_cast<std::size_t>(differ.second - shown.begin());
    while (start > 0 && ((start < newEnd && IsContinuation(shown[start])) ||
                         (start < oldEnd && IsContinuation(before[start]))))
        --start;
    const bool taken =
        Replace(box, start, oldEnd - start, std::string_view(shown).substr(start, newEnd - start));
    if (taken && box.Text == shown) {
        box.SelStart = selStart;
        box.SelLength = selLength;
    }
    return RunChange(box, before);
}

} // namespace zrt
