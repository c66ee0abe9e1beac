// What the program knows of the two radios: written by the band keys and, when radios are
// connected, by radio/. Values are kept for both.
#pragma once

#include "session/bands.h"

#include <array>

namespace zrt {

struct RadioState {
    i16 BandIndex = 3; // band and mode that the next contact is logged on: the log radio's
    i16 LogRadio = 1;  // 1 or 2, the radio that logs
    i16 TXRadio = 1;   // the radio that transmits
    // The band and mode of each radio, index 0 for radio 1.
    std::array<i16, 2> RadioBandMode = {3, 3};
    // kHz by radio and BandIndex: the last one known.
    std::array<std::array<float, kBandCodeRows>, 2> RadioFrequency{};
    // kHz by radio and BandIndex: where a band change sets the radio. The start of the band from
    // the start-up data file, until the radio has told a frequency.
    std::array<std::array<i32, kBandCodeRows>, 2> LastFrequency{};
    std::array<bool, 2> RadioRunning{}; // the radio is under control
};
extern RadioState Radios;

// The entry window's name for the band that is being logged: the same value, never a copy.
inline i16 &CurrentBand() {
    return Radios.BandIndex;
}

} // namespace zrt
