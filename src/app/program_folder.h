// The program's folder: which one it is, and what a first installation brings into it.
#pragma once

namespace zrt {

// Sets Session.AppPath: the folder of the executable if settings stand there, else the user's own.
// The latter gets each file of the installation that it lacks, and anew each one that is only the
// beginning of the installation's, for a full disk has cut a copy of it. False if the program is
// ending, for the operator has no folder. May pump.
bool TakeProgramFolder();

} // namespace zrt
