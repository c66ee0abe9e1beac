#include "entry/partial_calls.h"

#include "entry/dupes.h"
#include "entry/old_calls.h"
#include "session/contests.h"
#include "session/log_file.h"
#include "session/reference_data.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <span>
#include <utility>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace zrt {

PartialState Partials;

namespace {

// As block.find(text, from), for a text that is not empty. A call that is known nowhere is looked
// for in half a million bytes with each key: where it may begin is told by its first and its last
// byte, sixteen places at a time.
std::size_t FindIn(std::string_view block, std::string_view text, std::size_t from) {
#ifdef __SSE2__
    constexpr std::size_t kPlaces = 16;
    const auto load = [](const char *bytes) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i *>(bytes));
    };
    const std::size_t lastAt = text.size() - 1;
    const __m128i first = _mm_set1_epi8(text.front());
    const __m128i last = _mm_set1_epi8(text.back());
    for (; from + lastAt + kPlaces <= block.size(); from += kPlaces) {
        const char *bytes = block.data() + from;
        const __m128i fits = _mm_and_si128(_mm_cmpeq_epi8(load(bytes), first),
                                           _mm_cmpeq_epi8(load(bytes + lastAt), last));
        for (auto mask = static_cast<unsigned>(_mm_movemask_epi8(fits)); mask != 0;
             mask &= mask - 1) {
            const auto i = static_cast<std::size_t>(std::countr_zero(mask));
            if (std::memcmp(bytes + i, text.data(), text.size()) == 0)
                return from + i;
        }
    }
#endif
    return block.find(text, from);
}

// A row within a block. `Next` is where the row behind it begins.
struct RowPlace {
    std::size_t Begin, End, Next;
};

// Hands the rows of the block that hold the text to `take`, in their order, until it returns
// false. `rowAt` tells the row that a place belongs to; what runs from one row into the next is no
// match.
template <typename RowAt, typename Take>
void ForRowsWith(std::string_view block, std::string_view text, RowAt rowAt, Take take) {
    std::size_t from = 0;
    for (;;) {
        const std::size_t place = FindIn(block, text, from);
        if (place == std::string_view::npos)
            return;
        const RowPlace row = rowAt(place);
        if (place < row.Begin || place + text.size() > row.End) {
            from = place + 1;
            continue;
        }
        if (!take(row))
            return;
        from = row.Next;
    }
}

std::size_t InstaMatches() {
    return Partials.MatchEntries.size() + Partials.OldEntries.size();
}

void FindInLog(std::string_view text) {
    constexpr std::size_t kWidth = decltype(OldEntry26::Callsign)::kSize;
    static_assert(sizeof(Dupes.CallText[0]) == kWidth);
    const auto entries = static_cast<std::size_t>(Log.NextEntry - 1);
    const auto bytes = std::as_bytes(std::span(Dupes.CallText).subspan(1, entries));
    const std::string_view block(reinterpret_cast<const char *>(bytes.data()), bytes.size());
    const auto rowAt = [](std::size_t place) {
        const std::size_t begin = place - place % kWidth;
        return RowPlace{begin, begin + kWidth, begin + kWidth};
    };
    ForRowsWith(block, text, rowAt, [](const RowPlace &row) {
        Partials.MatchEntries.push_back(static_cast<i16>(row.Begin / kWidth + 1));
        return InstaMatches() < kMostPartials;
    });
}

void FindInOldCalls(std::string_view text) {
    PrepareOldCallBlock();
    const auto rowAt = [](std::size_t place) {
        const auto &start = OldCalls.Start;
        const auto next = std::upper_bound(start.begin(), start.end(), place);
        return RowPlace{*(next - 1), *next - 1, *next};
    };
    ForRowsWith(OldCalls.Block, text, rowAt, [](const RowPlace &row) {
        const auto &start = OldCalls.Start;
        const auto place = std::lower_bound(start.begin(), start.end(), row.Begin);
        Partials.OldEntries.push_back(static_cast<i16>(place - start.begin()));
        return InstaMatches() < kMostPartials;
    });
}

bool PassesSelection(char mark) {
    if (Contest.SCPSelection == "US")
        return mark == '+' || mark == '*';
    return Contest.SCPSelection != "DX" || mark != '*';
}

void FindInKnownCalls(std::string_view text) {
    const std::string_view block = Reference.SCPTable;
    const auto rowAt = [block](std::size_t place) {
        const std::size_t begin = block.rfind('\n', place) + 1; // npos + 1 is 0
        const std::size_t end = block.find('\n', place);
        return RowPlace{begin, end, end + 1};
    };
    ForRowsWith(block, text, rowAt, [block](const RowPlace &row) {
        if (PassesSelection(block[row.Begin]))
            Partials.ScpEntries.push_back(SCPRowAt(row.Begin));
        return Partials.ScpEntries.size() < kMostKnownPartials;
    });
}

// Exchanges over a gap that is halved. Calls that are equal change places by it, and the operator
// sees which band stands first: any other sort would show another order.
void SortByCall(std::vector<PartialCall> &calls) {
    for (std::size_t gap = calls.size() / 2; gap > 0; gap /= 2) {
        bool exchanged = true;
        while (exchanged) {
            exchanged = false;
            for (std::size_t i = 0; i + gap < calls.size(); ++i) {
                if (calls[i + gap].Call < calls[i].Call) {
                    std::swap(calls[i], calls[i + gap]);
                    exchanged = true;
                }
            }
        }
    }
}

} // namespace

void FindPartials(std::string_view text) {
    Partials = {};
    text = Trim(text);
    if (text.empty())
        return;
    FindInLog(text);
    if (OldCalls.ShowOldCalls && InstaMatches() < kMostPartials)
        FindInOldCalls(text);
    for (const i16 n : Partials.MatchEntries)
        Partials.PartialCalls.push_back(
            {Dupes.CallText[static_cast<std::size_t>(n)].Trimmed(), EntryFields(n).BandIndex});
    SortByCall(Partials.PartialCalls);
    if (Reference.SCPLoaded)
        FindInKnownCalls(text);
}

std::string_view ScpCall(i32 row) {
    std::string_view call = SCPRow(row);
    if (call.starts_with('*') || call.starts_with('+'))
        call.remove_prefix(1);
    return call;
}

} // namespace zrt
