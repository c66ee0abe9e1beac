// The calls of the log as the duplicate check reads them: by entry, sorted, and the portable forms.
#pragma once

#include "session/log_file.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace zrt {

inline constexpr std::size_t kMostPortables = 80;

struct CallAndBand {
    FixedText<10> Call;
    i16 BandIndex = 0;
    friend bool operator==(const CallAndBand &, const CallAndBand &) = default;
};

struct PortableRow {
    FixedText<10> FullCall;
    FixedText<10> BaseCall;
};

struct DupeState {
    // By entry number; the row 0 stays unused.
    std::vector<i16> CallHash = std::vector<i16>(kMostEntries + 1); // see TextHash
    std::vector<FixedText<10>> CallText = std::vector<FixedText<10>>(kMostEntries + 1);
    std::vector<CallAndBand> CurrentCalls; // sorted by call
    std::vector<PortableRow> PortableTable;
};
extern DupeState Dupes;

// The side of the first "/" that counts when both are equally long. Live logging takes the left
// one, the re-scan of a log the right one; both have always done so.
enum class PortableTie { Left, Right };

// The longer side of the first "/"; the right side is everything behind it.
std::string_view BaseCall(std::string_view call, PortableTie tie);

// The place of a call in CurrentCalls. Equal calls on other bands stand behind their equals; the
// identical text is not inserted again. With findOnly nothing is inserted and the place is that of
// the first call that is not below.
std::size_t InsertCall(std::string_view call, i16 bandIndex, bool findOnly);

// Takes the trimmed call of entry n into all lists.
void RecordCall(i16 n, std::string_view call, i16 bandIndex, PortableTie tie);

} // namespace zrt
