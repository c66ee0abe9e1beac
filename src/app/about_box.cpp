#include "app/about_box.h"

#include "platform/events.h"
#include "session/version.h"

namespace zrt {

AboutzrtWindow Aboutzrt;

namespace {

// Long enough to be read as what it is, short enough not to be waited for.
constexpr int kSplashMs = 150;
// The wait for its timer ends in any case.
constexpr Microseconds kLongestSplash = 2 * kSecond;

} // namespace

void RegisterAboutBox() {
    Aboutzrt = {};
    Aboutzrt.lblProgram.Caption = "ZRTLOG";
    Aboutzrt.lblVersion.Caption = "Version " + kVersion;
    Aboutzrt.lblPurpose.Caption = "Contest logging for amateur radio";
    Aboutzrt.cmdClose.Caption = "Close";
    Aboutzrt.cmdClose.Default = Aboutzrt.cmdClose.Cancel = true;
    Aboutzrt.cmdClose.Click = [] { HideForm(Aboutzrt); };
    Aboutzrt.Timer1.Tick = [] {
        StopTimer(Aboutzrt.Timer1);
        HideForm(Aboutzrt);
    };
    RegisterForm(Aboutzrt, "Aboutzrt", "About ZRTLOG",
                 {{"cmdClose", &Aboutzrt.cmdClose, "Close"},
                  {"lblProgram", &Aboutzrt.lblProgram, "The program's name"},
                  {"lblVersion", &Aboutzrt.lblVersion, "Its version"},
                  {"lblPurpose", &Aboutzrt.lblPurpose, "What it is for"},
                  {"Timer1", &Aboutzrt.Timer1, "Closes the splash"}});
}

void ShowSplash() {
    Aboutzrt.Caption = "WELCOME";
    Aboutzrt.HasCloseBox = false;
    Aboutzrt.cmdClose.Visible = false;
    StartTimer(Aboutzrt.Timer1, kSplashMs);
    ShowModal(Aboutzrt, Clock.Steady() + kLongestSplash);
}

void ShowAboutBox() {
    Aboutzrt.Caption = "About ZRTLOG";
    Aboutzrt.HasCloseBox = true;
    Aboutzrt.cmdClose.Visible = true;
    Aboutzrt.ActiveControl = &Aboutzrt.cmdClose;
    ShowModal(Aboutzrt);
}

} // namespace zrt
