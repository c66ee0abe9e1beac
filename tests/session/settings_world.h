// The fixture of tests that read and write the text of the settings file.
#pragma once

#include "session/session_flags.h"
#include "session/settings.h"
#include "session/settings_file.h"
#include "session/user_profiles.h"
#include "support/program.h"

#include <string>
#include <string_view>

namespace zrt {

inline void ForgetSettings() {
    Settings = {};
    Extensions = {};
    Profiles = {};
    Contest = {};
}

class SettingsFile : public ProgramTest {
  protected:
    SettingsFile() { Session.AppPath = PathOf(""); }
    // Reads the text into fresh records.
    static void Read(std::string_view text) {
        ForgetSettings();
        TakeSettingsText(text);
    }
    static bool Holds(std::string_view line) {
        return ("\r\n" + SettingsText()).find("\r\n" + std::string(line) + "\r\n") !=
               std::string::npos;
    }
};

} // namespace zrt
