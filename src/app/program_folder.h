// The program's folder: which one it is, and what a first installation brings into it.
#pragma once

namespace zrt {

// Sets Session.AppPath, and fills that folder with the files of the installation unless it holds
// settings. A file that is the beginning of one of the installation's, for an earlier copy of it
// was cut by a full disk, is copied again in any case. False if the program is ending, for the
// operator has no folder. May pump.
bool TakeProgramFolder();

} // namespace zrt
