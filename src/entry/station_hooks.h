// What the keys of the entry window ask of the transmitter, the radios and the voice keyer. Those
// modules install themselves here; until then a request is only noted, so that it can be seen.
#pragma once

#include "session/fixed_text.h"

#include <string>
#include <string_view>
#include <vector>

namespace zrt {

struct StationRequests {
    std::vector<std::string> Made; // in the order of the requests, none of them carried out
};
extern StationRequests Requests;
void NoteRequest(std::string request);

struct StationHooks {
    // Whether CW can be keyed: a Winkeyer that is chosen is open.
    bool (*KeyingIsReady)() = [] { return true; };
    bool (*CwIsBeingSent)() = [] { return false; };
    // Ends a repeat, a message or a recording that plays. True if there was one: Esc has done its
    // work then.
    bool (*CancelSending)() = [] { return false; };
    void (*SendMacro)(int keyCode, bool repeat) = [](int keyCode, bool repeat) {
        NoteRequest("macro F" + std::to_string(keyCode - 111) + (repeat ? " repeated" : ""));
    };
    // The Insert key: the next call message is the first one to this station.
    void (*BeginFirstCall)() = [] {};
    // Sends a text; one of the rows 10, 11 and 12 of the contest's macros.
    void (*SendText)(std::string_view text) = [](std::string_view text) {
        NoteRequest("text " + std::string(text));
    };
    void (*SendRow)(int row) = [](int row) { NoteRequest("row " + std::to_string(row)); };
    void (*OpenKeyboardCw)() = [] { NoteRequest("keyboard CW"); };
    // By so many steps of CWSpeedIncrement.
    void (*ChangeCWSpeed)(int steps) = [](int steps) {
        NoteRequest("speed " + std::to_string(steps));
    };
    bool (*WinkeyIsOpen)() = [] { return false; };
    void (*CycleWinkeySpeedMode)() = [] { NoteRequest("Winkeyer speed mode"); };
    void (*SayCallAndExchange)(bool call, bool exchange) = [](bool call, bool exchange) {
        NoteRequest(std::string("say") + (call ? " call" : "") + (exchange ? " exchange" : ""));
    };
    void (*VoiceModeChanged)() = [] { NoteRequest("voice mode"); };
    void (*SetActiveRadio)() = [] { NoteRequest("active radio"); };
    void (*SwapTransmitRadio)() = [] { NoteRequest("transmit radio"); };
    void (*SetRadioFrequency)(double kHz) = [](double kHz) {
        NoteRequest("frequency " + std::to_string(static_cast<int>(kHz * 1000)) + " Hz");
    };
    void (*StoreRadio)() = [] { NoteRequest("store radio"); };
    // False if no radio is stored.
    bool (*RecallRadio)() = [] {
        NoteRequest("recall radio");
        return false;
    };
    void (*SetPower)(std::string_view watts) = [](std::string_view watts) {
        NoteRequest("power " + std::string(watts));
    };
    void (*ToggleTimingDisplay)() = [] { NoteRequest("timing display"); };
    void (*RedrawMap)() = [] {};
};
extern StationHooks Station;

// A message by its function key, if it can go out: on phone always, on CW while keying is on and
// ready. False if it can't.
bool SendMessage(int keyCode, bool repeat);

} // namespace zrt
