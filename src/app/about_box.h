// Aboutzrt: the splash at start, and Help, About.
#pragma once

#include "platform/controls.h"

namespace zrt {

struct AboutzrtWindow : Form {
    Label lblProgram, lblVersion, lblPurpose;
    Button cmdClose;
    Timer Timer1;
};
extern AboutzrtWindow Aboutzrt;

void RegisterAboutBox();

void ShowSplash();   // closes by its own timer; may pump
void ShowAboutBox(); // until it is closed; may pump

} // namespace zrt
