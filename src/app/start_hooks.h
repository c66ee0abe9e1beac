// What the start and the exit routine ask of modules that come and go with the station's
// equipment and data. Each does nothing until it is installed.
#pragma once

namespace zrt {

struct StartHooks {
    void (*ReadCountries)() = [] {};
    void (*ReadMasterScp)() = [] {};
    void (*ReadCallMatch)() = [] {};
    void (*CopyRadioSettings)() = [] {}; // the user's values of each radio's model
    void (*ReadStartupData)() = [] {};   // may end the program
    void (*WriteSettings)(bool withWindows) = [](bool) {};
    void (*CloseWinkeyer)() = [] {};
};
extern StartHooks Starting;

} // namespace zrt
