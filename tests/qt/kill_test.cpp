// The promise of the log, kept by the real program on a real disk: a contact whose fields have
// cleared is in the file, whatever becomes of the process.
#include "qt/real_program.h"
#include "qt/real_session.h"
#include "session/log_file.h"

#include "platform/files.h"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <random>
#include <thread>

namespace zrt {
namespace {

constexpr int kRounds = 50;
constexpr int kLongestLifeMs = 250; // of logging, before the kill

std::string CallOf(int n) {
    return "K" + std::to_string(n) + "AB";
}

// Logs contacts until the process is killed; returns how many had cleared the fields.
int LogUntilKilled(RealProgram &program, std::chrono::milliseconds life) {
    std::thread killer([pid = program.Process(), life] {
        std::this_thread::sleep_for(life);
        kill(pid, SIGKILL);
    });
    int cleared = 0;
    for (;;) {
        program.Send("type " + CallOf(cleared + 1));
        program.Send("key Enter");
        // The number moves on when the fields are clear.
        if (!Comes(program, "text QSONrLabel", NextContact(cleared + 2)))
            break;
        ++cleared;
    }
    killer.join();
    EXPECT_EQ(program.Wait(), -SIGKILL); // and not by a crash of its own
    return cleared;
}

class RealDisk : public ::testing::Test {
  protected:
    RealDisk() { Files = DiskFiles(); }
};
using KilledProgram = RealDisk;
using SecondCopy = RealDisk;

TEST_F(KilledProgram, HasEveryContactWhoseFieldsHadClearedInTheFileAndRecoveryOpensIt) {
    std::mt19937 random(20261121);
    std::uniform_int_distribution<int> life(0, kLongestLifeMs);
    int contacts = 0;
    for (int round = 1; round <= kRounds; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const TemporaryHome home;
        RealProgram program(home.Path);
        ASSERT_NO_FATAL_FAILURE(StartGenericLog(program));
        const int cleared = LogUntilKilled(program, std::chrono::milliseconds(life(random)));
        contacts += cleared;

        FileBytes bytes;
        ASSERT_EQ(ReadFile(program.TemporaryLog(), bytes), 0);
        for (int n = 1; n <= cleared; ++n) {
            LogEntry entry;
            ASSERT_GE(bytes.size(), kEntryLength * (static_cast<std::size_t>(n) + 1));
            Decode(std::span(bytes).subspan(kEntryLength * static_cast<std::size_t>(n)), entry);
            ASSERT_EQ(entry.Callsign.Trimmed(), CallOf(n));
            ASSERT_EQ(entry.SentNumber, n);
        }

        program.Start();
        ASSERT_TRUE(Comes(program, "focus", "Yes")); // the question whether to open it
        program.Send("key Enter");
        const int next = EntryCountFromFile(bytes.size(), kEntryLength);
        ASSERT_TRUE(Comes(program, "text QSONrLabel", NextContact(next)));
        ASSERT_GE(next, cleared + 1);
        program.Kill();
    }
    std::printf("%d contacts in %d rounds\n", contacts, kRounds);
    EXPECT_GT(contacts, kRounds); // or the kills came before anything could be lost
}

TEST_F(SecondCopy, IsRefusedWhileTheFirstOneRuns) {
    const TemporaryHome home;
    RealProgram first(home.Path);
    ASSERT_NO_FATAL_FAILURE(StartGenericLog(first));
    const TemporaryHome pipes;
    RealProgram second(pipes.Path);
    std::filesystem::remove_all(second.Folder());
    std::filesystem::create_directory_symlink(first.Folder(), pipes.Path + "/zrtlog");
    second.Start();
    ASSERT_TRUE(Comes(second, "focus", "Ok")); // of the box that says so
    second.Send("key Enter");
    EXPECT_EQ(second.Wait(), 1);
    EXPECT_TRUE(Files.Exists(first.TemporaryLog()));
    EXPECT_TRUE(Comes(first, "text QSONrLabel", NextContact(1)));
}

} // namespace
} // namespace zrt
