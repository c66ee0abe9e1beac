// The records and choices that the operator's preferences are made of.
#pragma once

#include "session/fixed_text.h"

#include <array>
#include <string>

namespace zrt {

// The serial details of a radio. A baud rate of today needs more than 16 bits.
struct RadioSettings {
    std::string Name, Address;
    i32 BaudRate = 0;
    i16 WordLen = 0;
    char Parity = ' '; // the first letter of "None", "Even", "Odd"
    i16 StopBits = 0;
    bool DTRHigh = false, RTSHigh = false;
    friend bool operator==(const RadioSettings &, const RadioSettings &) = default;
};

// Where a window stood, in twips. A height or width of 0 asks for the default size.
struct WindowInfo {
    std::string Name;  // in upper case; 20 characters at most
    std::string State; // "OPEN" or "CLOSED"; 6 characters at most
    i16 Left = 0, Top = 0, Height = 0, Width = 0;
    friend bool operator==(const WindowInfo &, const WindowInfo &) = default;
};

// The rows of a contest's windows, and the forms that they are of.
enum WindowRow { kLogForm, kViewMult, kQSOStats, kViewMac, kAudio, kZTCTY, kViewZnCty, kPartial };
inline constexpr std::array kWindowNames = {"LogForm", "ViewMult", "QSOStats",  "ViewMac",
                                            "Audio",   "ZTCTY",    "ViewZnCty", "Partial"};

// What the DTR line of a radio's port keys.
enum class DtrFunction : i16 { None, CW, PTT, F9, DVKMicSwitch };

// Which recordings speak a call and an exchange.
enum class CallExchMode : i16 { AlwaysFast, AlwaysNormal, MixedMode };

} // namespace zrt
