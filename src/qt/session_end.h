// The end from outside: a signal, the desktop's session, the loss of the X server. Called by
// main().
#pragma once

#include <functional>

namespace zrt {

struct SessionEnd {
    std::function<void()> Keep;  // the session may end: writes unwritten entries
    std::function<void()> Leave; // it ends: the same, and the program with it
};

// From now on SIGTERM, SIGHUP and SIGINT lead to Leave, out of the event loop of any wait, and a
// session manager's question to Keep. A broken pipe and a file that has grown too large are errors
// of the call that met them, and no signals.
void WatchSessionEnd(SessionEnd end);

// From now on Leave runs as well when other code ends the process, as Qt does when its
// connection to the X server breaks. Behind the start of the program: what is built later is gone
// before that.
void LeaveAtExit();

} // namespace zrt
