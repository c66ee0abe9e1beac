// The calls of earlier logs with what they sent there, and the preferences of the call-match lines.
// All of it holds for the session, not for a log. The call-match lines and the fill of the exchange
// field read it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zrt {

struct OldCallRow {
    std::string Call;
    std::string Exchange; // two letters of the contest's tag, and what an entry of it holds
};

struct OldCallState {
    std::vector<OldCallRow> Rows; // sorted by call, each call once
    bool ShowOldCalls = false;
    bool ShowCurrentCalls = true; // those of the open log

    // The calls of Rows in one block for the search, each with LF behind it, and where each begins;
    // the end of the block is the last start. Only PrepareOldCallBlock fills them.
    std::string Block;
    std::vector<std::uint32_t> Start;
};
extern OldCallState OldCalls;

// The place of the first call that is not below; it may be that behind the last row.
std::size_t FindOldCall(std::string_view call);
// The place of the call, which is inserted if it is not there; a call that is keeps its exchange.
std::size_t InsertOldCall(std::string_view call, std::string_view exchange);
// Makes the block anew if calls were inserted since.
void PrepareOldCallBlock();

} // namespace zrt
