// What the entry window shows and fills in while a call or an exchange is being typed: partial and
// matching calls, country, what is needed, the zone. app/ installs both as the fields' Change.
#pragma once

#include "session/fixed_text.h"

#include <string_view>

namespace zrt {

struct TypingHooks {
    void (*PartialCheck)(std::string_view call) = [](std::string_view) {};
    // Repaints the country's line in the window of multipliers.
    void (*ShowCountryLine)(i16 country, i16 zone) = [](i16, i16) {};
};
extern TypingHooks Typing;

// The operator has changed the text of the field; or a call has been put there as if typed. "." and
// "?" in a call are the operator's notes: an edit of nothing else leaves all that shows as it is.
void CallTextChanged();
void ExchangeTextChanged();
// The band, the mode or the radio has changed: checks the call in the field again, and shows all
// that depends on them anew. What is typed and filled in stays. May pump.
void ShowCallAnew();

// The call in the field, if there is one, is the last call from now on.
void SaveCall();
// The last contact is back in the field: it is the last call, and nothing of another one shows.
void CallPutBack();

} // namespace zrt
