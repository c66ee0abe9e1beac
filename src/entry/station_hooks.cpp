#include "entry/station_hooks.h"

#include "session/bands.h"
#include "session/radio_state.h"
#include "session/settings.h"

#include <utility>

namespace zrt {

StationRequests Requests;
StationHooks Station;

void NoteRequest(std::string request) {
    constexpr std::size_t kMost = 1000; // of a whole contest without a transmitter
    if (Requests.Made.size() >= kMost)
        Requests.Made.erase(Requests.Made.begin());
    Requests.Made.push_back(std::move(request));
}

bool SendMessage(int keyCode, bool repeat) {
    if (IsCw(CurrentBand()) && !(Settings.CWActivated && Station.KeyingIsReady()))
        return false;
    Station.SendMacro(keyCode, repeat);
    return true;
}

} // namespace zrt
