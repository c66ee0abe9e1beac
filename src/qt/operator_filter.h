// Watches what the operator does with keyboard and windows, and brings it to the records; keeps the
// state of the keys. Installed by doors.cpp.
#pragma once

#include <functional>

namespace zrt {

void InstallOperatorFilter(std::function<void()> quitAsked);

// As KeyStateDoor::Pressed. Keys and clicks that come in meanwhile are kept and served later, in
// their order.
bool KeyPressed(int keyCode);

} // namespace zrt
