// Serial ports, as the radio, keyer and control line modules use them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zrt {

// One port. The owner fills the first block and keeps the record where it is while it is open.
struct SerialPort {
    std::string PortName;                // "Com3", or "Com" and a device path
    std::string Settings = "9600,N,8,1"; // baud rate, parity letter, word length, stop bits
    bool DtrAtOpen = false;
    bool RtsAtOpen = false;
    std::function<void()> Received; // bytes are waiting; read them all

    bool IsOpen = false; // kept by the door
};

struct SerialDoor {
    // Each returns 0, or the system's error number.
    int (*Open)(SerialPort &port) = nullptr;
    void (*Close)(SerialPort &port) = nullptr;
    int (*Write)(SerialPort &port, std::string_view bytes) = nullptr;
    std::string (*Read)(SerialPort &port) = nullptr; // what has arrived, maybe nothing
    // On a port that is not open these keep the value and report nothing.
    int (*SetDtr)(SerialPort &port, bool on) = nullptr;
    int (*SetRts)(SerialPort &port, bool on) = nullptr;
    // Drops what has arrived, and lets what was written leave, at most 100 ms.
    void (*Settle)(SerialPort &port) = nullptr;
    std::vector<std::string> (*Present)() = nullptr; // names for PortName, stable ones first
};
extern SerialDoor Serial;

} // namespace zrt
