// The exchange that the station sent, by contest: how it shows, the settings it is made of, and
// what is wrong with them. The post-contest dialog edits it, the summary prints it.
#pragma once

#include "session/settings.h"

#include <array>
#include <optional>
#include <span>
#include <string>

namespace zrt {

// The settings that the operator edits, up to four; null behind the last.
struct ExchangeFields {
    const char *Label; // above the text boxes
    std::array<std::string SettingsRecord::*, 4> Texts;
};
// Of the open log's contest; WPX sends a number alone and has none.
const ExchangeFields &SentExchangeFields();

// As the dialog and the summary show it: "599 05", "# OP ST".
std::string SentExchangeText();

// Whether a file for the sponsor lacks a piece of it.
bool SentExchangeIsMissing();

// What is wrong with the texts of the fields, upper-cased and trimmed; a Question may be answered
// by Yes.
struct ExchangeFault {
    std::string Text, Title;
    bool IsQuestion = false;
    int Field = 0; // the one to mend
};
std::optional<ExchangeFault> FindExchangeFault(std::span<const std::string> texts);

} // namespace zrt
