// Any bytes as a scenario: its lines and words, and each word as a key, as a text to type, as the
// name of a value and as bytes.
#include "fuzz/expect.h"
#include "headless/keyboard.h"
#include "headless/script.h"
#include "headless/state_names.h"

#include <cstdint>

namespace {

using namespace zrt;

// A line without a block, written once more from its words.
std::string Written(const ScriptLine &line) {
    std::string text;
    for (const ScriptWord &word : line.Words)
        text += (word.Quoted ? Quoted(word.Text) : word.Text) + " ";
    return text;
}

bool MayOpenBlock(const ScriptLine &line) {
    for (const ScriptWord &word : line.Words)
        if (!word.Quoted && word.Text.starts_with("<<"))
            return true;
    return false;
}

void ExpectSameWords(const ScriptLine &line) {
    const std::vector<ScriptLine> again = ParseScript(Written(line));
    Expect(again.size() == 1 && again[0].Error.empty() && !again[0].Block);
    Expect(again[0].Words.size() == line.Words.size());
    for (std::size_t i = 0; i < line.Words.size(); ++i)
        Expect(again[0].Words[i].Text == line.Words[i].Text &&
               again[0].Words[i].Quoted == line.Words[i].Quoted);
}

void ExpectSameBytes(const std::string &text) {
    const std::vector<ScriptLine> hex = ParseScript(HexText(text));
    Expect(hex.size() == (text.empty() ? 0U : 1U));
    if (!hex.empty())
        Expect(BytesOf(hex[0].Words, 0) == text);
}

void TakeAsEverything(const ScriptWord &word) {
    if (const auto key = KeyNamed(word.Text); key && word.Text.size() == 1)
        Expect(!StrokesOf(word.Text).empty());
    (void)StrokesOf(word.Text);
    (void)StateValue(word.Text);
    if (const auto number = WholeNumber(word.Text))
        Expect(WholeNumber(std::to_string(*number)) == number);
    ExpectSameBytes(word.Text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    int last = 0;
    for (const ScriptLine &line : ParseScript(std::string(data, data + size))) {
        Expect(line.Number > last && !line.Text.empty());
        last = line.Number;
        for (const ScriptWord &word : line.Words)
            TakeAsEverything(word);
        (void)BytesOf(line.Words, 1);
        if (!line.Comment && line.Error.empty() && !line.Block && !MayOpenBlock(line))
            ExpectSameWords(line);
    }
    return 0;
}
