#include "entry/qso_recorder.h"

#include "entry/station_hooks.h"
#include "platform/keys.h"
#include "session/settings.h"

namespace zrt {

QsoRecorder Recorder;

void InstallRecorder() {
    Recorder = {};
    Settings.CWActivated = true; // or no message goes out on CW
    QsoHooks.CarryOutCallCommand = [] {
        Recorder.Calls.emplace_back("command");
        return LogForm.InData[0].Text == "TU3";
    };
    Station.SendMacro = [](int keyCode, bool repeat) {
        Recorder.Calls.push_back("send F" + std::to_string(keyCode - kKeyF1 + 1) +
                                 (repeat ? " r" : ""));
    };
    QsoHooks.Dupecheck = [](std::string_view call) {
        Recorder.Calls.push_back("dupecheck " + std::string(call));
        Entry.DupeFlag = Recorder.Dupe;
    };
    QsoHooks.DupeLabelShow = [] { Recorder.Calls.emplace_back("dupe label"); };
    QsoHooks.ParseExchange = [](ParsedExchange &parsed) {
        Recorder.Calls.push_back("parse " + parsed.Call);
        if (Recorder.ParserGives.Call.empty())
            Recorder.ParserGives.Call = parsed.Call;
        parsed = Recorder.ParserGives;
        Entry.ParseError = Recorder.Refuse;
    };
    QsoHooks.ApplyMultiplier = [](LogEntry &entry, const ParsedExchange &) {
        Recorder.Calls.emplace_back("multiplier");
        return Recorder.MultiplierRule(entry);
    };
    QsoHooks.ShowWorkedCountries = [] { Recorder.Calls.emplace_back("countries"); };
    QsoHooks.UpdateStatistics = [](bool force) {
        Recorder.Calls.push_back("statistics " + std::to_string(Log.NextEntry) +
                                 (force ? " forced" : ""));
    };
    QsoHooks.ShowNewMultiplier = [] { Recorder.Calls.emplace_back("new multiplier"); };
    QsoHooks.UpdateLogDisplay = [] {
        Recorder.Calls.push_back("display " + LogForm.InData[0].Text);
    };
    QsoHooks.ClearPartial = [] {
        Recorder.Calls.push_back("partial " + LogForm.ScoreLabel.Caption);
    };
}

} // namespace zrt
