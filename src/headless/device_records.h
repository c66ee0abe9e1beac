// The small records that the headless devices consist of. Part of devices.h.
#pragma once

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/serial_port.h"

#include <functional>
#include <string>
#include <vector>

namespace zrt {

enum class DiskMode { Ok, Full, Broken };         // every write fails: no space, or an I/O error
enum class PortMode { Present, Absent, Failing }; // a failing port is listed but can't be opened

struct ShownBox {
    MessageBox Box;
    BoxAnswer Answer = BoxAnswer::Ok;
    bool Expected = false; // somebody has looked at it
};

struct PortReply {
    std::string Request, Reply;
};

struct PortState {
    PortMode Mode = PortMode::Present;
    std::string Written;    // since the last look
    std::string Unanswered; // written, and no reply rule has matched it yet
    std::string Arrived;    // not yet read by the program
    std::vector<PortReply> Replies;
    SerialPort *Owner = nullptr; // who has it open
    bool Dtr = false, Rts = false;
};

struct NoCaseLess {
    bool operator()(const std::string &a, const std::string &b) const;
};

// Line is "Com3 DTR", "Com3 RTS", "890" (an I/O port) or "Relay 1"; Value 0 or 1, or the byte.
struct LineChange {
    Microseconds At = 0;
    std::string Line;
    int Value = 0;
};

struct Tone {
    int Hertz = 0, Milliseconds = 0;
};

struct ScheduledEvent {
    Microseconds Due = 0;
    std::function<void()> Run;
};

} // namespace zrt
