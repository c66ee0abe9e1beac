// The headless doors by kind, installed together by InstallHeadlessDoors of devices.h.
#pragma once

namespace zrt {

void InstallDialogDoor();
void InstallSerialDoor();
void InstallSoundDoor();
void InstallStationLinesDoor();

} // namespace zrt
