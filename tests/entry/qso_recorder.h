// Records what LogQso asks of the modules around it, for the tests of its steps.
#pragma once

#include "entry/log_form.h"
#include "entry/log_qso.h"
#include "session/log_file.h"
#include "support/program.h"

#include <functional>
#include <string>
#include <vector>

namespace zrt {

struct QsoRecorder {
    std::vector<std::string> Calls; // what the pipeline has asked for, in order
    bool Dupe = false;              // what the dupe check finds
    bool Refuse = false;            // what the parser does
    ParsedExchange ParserGives;     // what it makes of the fields; an empty call keeps the call
    std::function<NewMults(LogEntry &)> MultiplierRule = [](LogEntry &) { return NewMults{}; };
};
extern QsoRecorder Recorder;

// Begins to record, with all hooks of the pipeline.
void InstallRecorder();

class LogQsoSteps : public ProgramTest {
  protected:
    LogQsoSteps() { InstallRecorder(); }

    static void ExpectNothingLogged() {
        EXPECT_EQ(Log.NextEntry, 1);
        EXPECT_EQ(Log.LogEntries[1], LogEntry{});
        EXPECT_EQ(BytesOf(kTempLog).size(), 26U);
    }
    static TextBox &Call() { return LogForm.InData[0]; }
    static TextBox &Exchange() { return LogForm.InData[1]; }
    static const LogEntry &Logged(int n = 1) { return Log.LogEntries[n]; }
};

} // namespace zrt
