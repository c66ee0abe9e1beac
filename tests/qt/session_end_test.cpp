// The end from outside, as the real program meets it: signals, a limit on the size of files, the
// loss of the X server. The last one needs an X server that may be killed; see under_xvfb.sh.
#include "qt/real_program.h"
#include "qt/real_session.h"
#include "session/log_file.h"

#include "platform/files.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sys/resource.h>

namespace zrt {
namespace {

constexpr int kSignals[] = {SIGTERM, SIGHUP, SIGINT};

class EndFromOutside : public ::testing::Test {
  protected:
    explicit EndFromOutside(const char *platform = "offscreen") : Program(Home.Path, platform) {
        Files = DiskFiles();
    }

    void LogContact(const std::string &call) {
        Program.Send("type " + call);
        Program.Send("key Enter");
    }

    // The next write of a contact fails, and its box is answered with Cancel: the contact is owed.
    void OweAContact() {
        LimitFiles(kHeaderLength);
        LogContact("K2ZZ");
        ASSERT_TRUE(Comes(Program, "focus", "Retry"));
        Program.Send("click Cancel");
        ASSERT_TRUE(Comes(Program, "text QSONrLabel", NextContact(2)));
        ASSERT_EQ(LogLength(), kHeaderLength);
        LimitFiles(RLIM_INFINITY);
    }

    void LimitFiles(rlim_t length) {
        const rlimit limit{length, RLIM_INFINITY};
        ASSERT_EQ(prlimit(Program.Process(), RLIMIT_FSIZE, &limit, nullptr), 0);
    }

    std::uintmax_t LogLength() { return std::filesystem::file_size(Program.TemporaryLog()); }

    std::string SettingsPath() { return Program.Folder() + "zrtlog125.ini"; }

    // A file that is missing now is there again only if it is written at the end.
    void ForgetSettings() { ASSERT_TRUE(std::filesystem::remove(SettingsPath())); }

    void ExpectSettingsWritten() {
        std::string text;
        ASSERT_EQ(ReadTextFile(SettingsPath(), text), 0);
        EXPECT_NE(text.find("LOGFORM OPEN"), std::string::npos);
    }

    TemporaryHome Home;
    RealProgram Program;
};

class SignalledProgram : public EndFromOutside {};

TEST_F(SignalledProgram, WritesWhatIsOwedAndTheSettingsAndEnds) {
    for (const int signal : kSignals) {
        SCOPED_TRACE(strsignal(signal));
        ASSERT_NO_FATAL_FAILURE(StartGenericLog(Program));
        ASSERT_NO_FATAL_FAILURE(OweAContact());
        ASSERT_NO_FATAL_FAILURE(ForgetSettings());
        kill(Program.Process(), signal);
        EXPECT_EQ(Program.Wait(), 0);
        EXPECT_EQ(LogLength(), 2 * kEntryLength);
        ASSERT_NO_FATAL_FAILURE(ExpectSettingsWritten());
        std::filesystem::remove(Program.TemporaryLog());
    }
}

TEST_F(SignalledProgram, EndsWhileABoxStandsAndOffersTheLogAtTheNextStart) {
    ASSERT_NO_FATAL_FAILURE(StartGenericLog(Program));
    LogContact("K1ZZ");
    ASSERT_TRUE(Comes(Program, "text QSONrLabel", NextContact(2)));
    Program.Send("menu mnuFileExit");
    ASSERT_TRUE(Comes(Program, "window", "Save Log?"));
    kill(Program.Process(), SIGTERM);
    EXPECT_EQ(Program.Wait(), 0);
    EXPECT_EQ(LogLength(), 2 * kEntryLength);
    Program.Start();
    ASSERT_TRUE(Comes(Program, "focus", "Yes"));
    Program.Send("click Yes");
    EXPECT_TRUE(Comes(Program, "text QSONrLabel", NextContact(2)));
}

TEST_F(SignalledProgram, IsNotHurriedByMoreSignals) {
    ASSERT_NO_FATAL_FAILURE(StartGenericLog(Program));
    ASSERT_NO_FATAL_FAILURE(OweAContact());
    ASSERT_NO_FATAL_FAILURE(ForgetSettings());
    for (int i = 0; i < 50; ++i)
        for (const int signal : kSignals)
            kill(Program.Process(), signal);
    EXPECT_EQ(Program.Wait(), 0);
    EXPECT_EQ(LogLength(), 2 * kEntryLength);
    ExpectSettingsWritten();
}

TEST_F(SignalledProgram, OutlivesABrokenPipeAndAFileThatIsTooLong) {
    ASSERT_NO_FATAL_FAILURE(StartGenericLog(Program));
    kill(Program.Process(), SIGPIPE);
    kill(Program.Process(), SIGXFSZ);
    ASSERT_NO_FATAL_FAILURE(OweAContact());
    LogContact("K3ZZ"); // brings the other one along
    ASSERT_TRUE(Comes(Program, "text QSONrLabel", NextContact(3)));
    EXPECT_EQ(LogLength(), 3 * kEntryLength);
}

class WithoutScreen : public EndFromOutside {
  protected:
    WithoutScreen() : EndFromOutside("xcb") {}
};

TEST_F(WithoutScreen, WritesWhatIsOwedAndTheSettings) {
    const char *server = std::getenv("X_SERVER_PROCESS");
    ASSERT_NE(server, nullptr);
    ASSERT_NO_FATAL_FAILURE(StartGenericLog(Program));
    ASSERT_NO_FATAL_FAILURE(OweAContact());
    ASSERT_NO_FATAL_FAILURE(ForgetSettings());
    kill(std::atoi(server), SIGKILL);
    EXPECT_EQ(Program.Wait(), EXIT_FAILURE);
    EXPECT_EQ(LogLength(), 2 * kEntryLength);
    ExpectSettingsWritten();
}

} // namespace
} // namespace zrt
