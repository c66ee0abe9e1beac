// The log, or the Cabrillo file, that the post-contest dialog works on.
#pragma once

#include <string>

namespace zrt {

// Takes a file as the input of the post-contest dialog: its contest, and all of PostData that
// follows from it. False if it can't be used; the operator has been told. May pump.
bool TakePostContestInput(const std::string &path);

} // namespace zrt
