// The outputs that are neither serial nor sound: bytes at I/O port addresses and USB relays.
#pragma once

#include <cstdint>

namespace zrt {

struct StationLinesDoor {
    // A byte at an I/O port address (890 for LPT1, 634 for LPT2). A port that is absent or not
    // permitted reads as 0 and takes writes silently.
    std::uint8_t (*DlPortReadPortUchar)(int address) = nullptr;
    void (*DlPortWritePortUchar)(int address, std::uint8_t value) = nullptr;
    // Relay `number` from 1; false if there is no such relay.
    bool (*ModuleRelayOn)(int number) = nullptr;
    bool (*ModuleRelayOff)(int number) = nullptr;
};
extern StationLinesDoor StationLines;

} // namespace zrt
