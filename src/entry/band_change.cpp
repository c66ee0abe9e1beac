#include "entry/band_change.h"

#include "entry/log_form.h"
#include "entry/station_hooks.h"
#include "entry/typing.h"
#include "session/band_plan.h"
#include "session/bands.h"
#include "session/contests.h"
#include "session/radio_state.h"

#include <algorithm>

namespace zrt {

BandChangeHooks BandHooks;

namespace {

// 10, 12, 15, 17, 20, 30, 40, 80, 160 m, 2 m, 6 m, as band positions.
constexpr std::array<int, kBandPositions> kBandRing = {1, 9, 2, 10, 3, 11, 4, 5, 6, 8, 7};

bool ARadioLogs() {
    return Radios.LogRadio == 1 || Radios.LogRadio == 2;
}

bool IsActive(int position) {
    return Contest.ActiveBands[static_cast<std::size_t>(position) - 1];
}

// In these contests the map shows the band that is being logged.
void RedrawMapOfBand() {
    if (Contest.ContestId == kNaqp || Contest.ContestId == kArrlDx)
        Station.RedrawMap();
}

void TakeBand(i16 bandIndex) {
    CurrentBand() = bandIndex;
    if (ARadioLogs())
        Radios.RadioBandMode[Radios.LogRadio - 1] = bandIndex;
}

// The radio does not wait for a box that the check of the call may bring.
void ChooseBand(i16 bandIndex) {
    TakeBand(bandIndex);
    BandHooks.BandChosen();
    ShowBandAnew();
}

} // namespace

void ChangeBand(i16 bandIndex) {
    if (bandIndex == CurrentBand())
        return;
    TakeBand(bandIndex);
    ShowBandAnew();
}

void ShowBandAnew() {
    WriteQSONrLabel();
    RedrawMapOfBand();
    ShowCallAnew();
}

void StepBand(bool upwards) {
    const int position = BandPosition(CurrentBand());
    const auto here = std::find(kBandRing.begin(), kBandRing.end(), position);
    auto place = static_cast<std::size_t>(here == kBandRing.end() ? 0 : here - kBandRing.begin());
    const std::size_t step = upwards ? kBandRing.size() - 1 : 1;
    for (std::size_t i = 0; i < kBandRing.size(); ++i) {
        place = (place + step) % kBandRing.size();
        if (IsActive(kBandRing[place]))
            break;
    }
    ChooseBand(CodeInMode(kBandRing[place], IsPhone(CurrentBand())));
}

void SwitchMode(bool phone) {
    const int position = BandPosition(CurrentBand());
    const bool allowed = phone ? Contest.ModePhone : Contest.ModeCW;
    if (!allowed || position == kNoBandPosition || phone == IsPhone(CurrentBand()))
        return;
    const i16 bandIndex = CodeInMode(position, phone);
    if (ARadioLogs()) {
        auto &frequencies = Radios.RadioFrequency[Radios.LogRadio - 1];
        frequencies[bandIndex] = frequencies[CurrentBand()];
    }
    ChooseBand(bandIndex);
}

void TakeTypedFrequency(float kHz) {
    const i16 bandIndex = FrequencyToBandMode(kHz);
    if (bandIndex == 0 || !IsActive(BandPosition(bandIndex)))
        return;
    if (ARadioLogs())
        Radios.RadioFrequency[Radios.LogRadio - 1][bandIndex] = kHz;
    ChangeBand(bandIndex);
}

} // namespace zrt
