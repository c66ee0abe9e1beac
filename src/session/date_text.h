// The date of an entry as text. All that shows or prints a date calls it.
#pragma once

#include "session/fixed_text.h"

#include <string>

namespace zrt {

// Month, day and two digits of the year with "/" between; a month below 10 has one digit. `decade`
// is the first byte of the entry's Reserved: with "2" to "9" there, the year of a code that reads
// as 2000 to 2009 is of that decade.
std::string DateText(i16 dateCode, char decade);

// YYYY-MM-DD, as the files after a contest have it, with the digits of the code as they stand;
// empty for a code that is no date.
std::string IsoDateText(i16 dateCode, char decade);

// The date of entry n (1 to NextEntry - 1) of the open log.
std::string EntryDateText(i16 n);
// The first byte of its Reserved; a blank in a log of an old form.
char DecadeOfEntry(i16 n);

} // namespace zrt
