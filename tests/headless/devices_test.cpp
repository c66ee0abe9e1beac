#include "headless/devices.h"

#include "platform/events.h"
#include "platform/files.h"
#include "platform/help.h"
#include "platform/program.h"
#include "platform/sound.h"
#include "platform/station_lines.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <stdexcept>

namespace zrt {
namespace {

bool Never() {
    return false;
}

class DevicesTest : public testing::Test {
  protected:
    void SetUp() override {
        InstallHeadlessDoors();
        std::string folder =
            (std::filesystem::temp_directory_path() / "devices-test-XXXXXX").string();
        ASSERT_NE(::mkdtemp(folder.data()), nullptr);
        Devices.ProgramFolder = folder;
    }
    void TearDown() override { std::filesystem::remove_all(Devices.ProgramFolder); }
    static void Put(const std::string &name, const std::string &text) {
        ASSERT_EQ(ReplaceFile(ProgramFolders.UserFolder() + name, std::as_bytes(std::span(text))),
                  0);
    }
    static void Wait(int milliseconds) {
        PumpUntil(Clock.Steady() + milliseconds * kMillisecond, Never);
    }
};

// ---- time and events

TEST_F(DevicesTest, AWaitJumpsToItsDeadlineExactly) {
    const Microseconds began = Clock.Steady();
    PumpUntil(began + 1234567, Never);
    EXPECT_EQ(Clock.Steady(), began + 1234567);
}

TEST_F(DevicesTest, TimersTickAtTheirTimeAndAtTheDeadlineItself) {
    const Microseconds began = Clock.Steady();
    std::vector<Microseconds> ticks;
    Timer timer;
    timer.Tick = [&] { ticks.push_back(Clock.Steady() - began); };
    StartTimer(timer, 100);
    Wait(300);
    EXPECT_EQ(ticks, (std::vector<Microseconds>{100000, 200000, 300000}));
    StopTimer(timer);
}

TEST_F(DevicesTest, EventsAreServedInOrderOfTime) {
    std::string order;
    Timer timer;
    timer.Tick = [&] { order += 't'; };
    StartTimer(timer, 20);
    Schedule(Clock.Steady() + 30 * kMillisecond, [&] { order += 'c'; });
    Schedule(Clock.Steady() + 10 * kMillisecond, [&] { order += 'a'; });
    Schedule(Clock.Steady() + 20 * kMillisecond, [&] { order += 'b'; });
    Post([&] { order += 'p'; });
    Wait(35);
    EXPECT_EQ(order, "pabtc");
    StopTimer(timer);
}

TEST_F(DevicesTest, DoneIsTestedBeforeTheFirstEventAndAfterEach) {
    int served = 0;
    for (int i = 0; i < 3; ++i)
        Post([&] { ++served; });
    PumpUntil(kNoDeadline, [] { return true; });
    EXPECT_EQ(served, 0);
    PumpUntil(kNoDeadline, [&] { return served == 2; });
    EXPECT_EQ(served, 2);
}

TEST_F(DevicesTest, APastDeadlineStillServesWhatIsDue) {
    bool served = false;
    Post([&] { served = true; });
    PumpUntil(0, Never);
    EXPECT_TRUE(served);
}

TEST_F(DevicesTest, TheEndOfTheProgramEndsEveryWait) {
    Schedule(Clock.Steady() + 5, [] { EndProgram(3); });
    const Microseconds began = Clock.Steady();
    PumpUntil(kNoDeadline, Never);
    EXPECT_EQ(Clock.Steady(), began + 5);
    PumpUntil(began + kSecond, Never);
    EXPECT_EQ(Clock.Steady(), began + 5);
    EXPECT_EQ(Program.ExitStatus, 3);
}

TEST_F(DevicesTest, ANestedWaitTakesTimeFromTheOuterOne) {
    const Microseconds began = Clock.Steady();
    Schedule(began + 10, [&] { PumpUntil(began + 500, Never); });
    PumpUntil(began + 100, Never);
    EXPECT_EQ(Clock.Steady(), began + 500);
}

TEST_F(DevicesTest, ATimerWithoutIntervalLetsTimeGoOn) {
    int ticks = 0;
    Timer timer;
    timer.Tick = [&] { ++ticks; };
    StartTimer(timer, 0);
    const Microseconds began = Clock.Steady();
    Wait(10);
    EXPECT_EQ(Clock.Steady(), began + 10 * kMillisecond);
    EXPECT_GE(ticks, 10);
    StopTimer(timer);
}

TEST_F(DevicesTest, ATimerWithoutIntervalLeavesTheOperatorHisTurn) {
    Timer timer;
    StartTimer(timer, 0);
    int turns = 0;
    Devices.Operator = [&] { return ++turns < 5; };
    PumpUntil(kNoDeadline, Never);
    EXPECT_EQ(turns, 5);
    StopTimer(timer);
}

TEST_F(DevicesTest, TheClockStandsStillWhileTheOperatorActs) {
    const Microseconds began = Clock.Steady();
    Timer timer;
    int ticks = 0;
    timer.Tick = [&] { ++ticks; };
    StartTimer(timer, 10);
    int turns = 0;
    Devices.Operator = [&] { return ++turns < 100; };
    PumpUntil(kNoDeadline, Never);
    EXPECT_EQ(Clock.Steady(), began);
    EXPECT_EQ(ticks, 0);
    EXPECT_TRUE(Program.Ending);
    StopTimer(timer);
}

TEST_F(DevicesTest, WithoutAnOperatorAnEndlessWaitGoesOnToTheNextEvent) {
    bool arrived = false;
    Schedule(Clock.Steady() + 70 * kSecond, [&] { arrived = true; });
    PumpUntil(kNoDeadline, [&] { return arrived; });
    EXPECT_TRUE(arrived);
}

TEST_F(DevicesTest, AWaitThatNothingCanEndIsAProgrammingError) {
    EXPECT_DEATH(PumpUntil(kNoDeadline, Never), "waits for an operator");
}

TEST_F(DevicesTest, AWaitThatOnlyATimerKeepsAliveIsAProgrammingErrorToo) {
    Timer timer;
    StartTimer(timer, 1000);
    EXPECT_DEATH(PumpUntil(kNoDeadline, Never), "waits for an operator");
    StopTimer(timer);
}

TEST_F(DevicesTest, PostingWithoutEndIsAProgrammingError) {
    std::function<void()> again = [&] { Post(again); };
    again();
    EXPECT_DEATH(Wait(1), "posts events without end");
    ForgetEvents();
}

TEST_F(DevicesTest, TheWallClockGoesWithTheSteadyOne) {
    SetUtc({2015, 12, 31, 23, 59, 58});
    Devices.ZoneMinutes = -300;
    Wait(3000);
    const MachineTime utc = Clock.Utc();
    EXPECT_EQ(utc.Year, 2016);
    EXPECT_EQ(utc.Month, 1);
    EXPECT_EQ(utc.Day, 1);
    EXPECT_EQ(utc.Second, 1);
    const MachineTime local = Clock.Local();
    EXPECT_EQ(local.Year, 2015);
    EXPECT_EQ(local.Month, 12);
    EXPECT_EQ(local.Day, 31);
    EXPECT_EQ(local.Hour, 19);
}

TEST_F(DevicesTest, InstallingAgainStartsAfresh) {
    Post([] { FAIL() << "an event of the run before"; });
    EndProgram(2);
    Devices.Answers.push_back(BoxAnswer::Ok);
    InstallHeadlessDoors();
    EXPECT_FALSE(Program.Ending);
    EXPECT_TRUE(Devices.Answers.empty());
    PumpUntil(0, Never);
}

// ---- boxes

const MessageBox kBox{"Sure?", "Question", BoxButtons::YesNo, BoxIcon::Question, 1};

TEST_F(DevicesTest, BoxesTakeTheQueuedAnswersInOrder) {
    Devices.Answers = {BoxAnswer::No, BoxAnswer::Yes};
    EXPECT_EQ(ShowMessageBox(kBox), BoxAnswer::No);
    EXPECT_EQ(ShowMessageBox(kBox), BoxAnswer::Yes);
    ASSERT_EQ(Devices.Boxes.size(), 2U);
    EXPECT_EQ(Devices.Boxes[0].Box.Text, "Sure?");
    EXPECT_EQ(Devices.Boxes[0].Answer, BoxAnswer::No);
    EXPECT_FALSE(Devices.Boxes[0].Expected);
}

TEST_F(DevicesTest, ABoxWithoutAnAnswerAborts) {
    EXPECT_DEATH((void)ShowMessageBox(kBox),
                 "no answer for the box \"Question\" \"Sure\\?\" \\[Yes, No\\]");
}

TEST_F(DevicesTest, AnAnswerThatIsNoButtonAborts) {
    Devices.Answers = {BoxAnswer::Retry};
    EXPECT_DEATH((void)ShowMessageBox(kBox), "no button \"Retry\" in the box \"Question\"");
}

TEST_F(DevicesTest, EveryKindOfBoxHasItsButtons) {
    const std::pair<BoxButtons, const char *> rows[] = {
        {BoxButtons::Ok, "[Ok]"},
        {BoxButtons::OkCancel, "[Ok, Cancel]"},
        {BoxButtons::AbortRetryIgnore, "[Abort, Retry, Ignore]"},
        {BoxButtons::YesNoCancel, "[Yes, No, Cancel]"},
        {BoxButtons::YesNo, "[Yes, No]"},
        {BoxButtons::RetryCancel, "[Retry, Cancel]"},
    };
    for (const auto &[buttons, text] : rows)
        EXPECT_TRUE(DescribeBox({"", "", buttons}).ends_with(text)) << text;
}

TEST_F(DevicesTest, FileDialogsAnswerWithPathsInTheProgramFolder) {
    Put("a.zrt", "x");
    Devices.FileAnswers = {"a", std::nullopt, "/elsewhere/b"};
    EXPECT_EQ(ShowFileDialog({"Open", "", "", "zrt", false}),
              ProgramFolders.UserFolder() + "a.zrt");
    EXPECT_EQ(ShowFileDialog({"Open", "", "", "", false}), std::nullopt);
    EXPECT_EQ(ShowFolderDialog("Folder", ""), "/elsewhere/b");
    EXPECT_EQ(Devices.FileDialogs.size(), 3U);
}

TEST_F(DevicesTest, AFileDialogWithoutAnAnswerAborts) {
    EXPECT_DEATH((void)ShowFileDialog({"Open", "", "", "", false}),
                 "no answer for the file dialog \"Open\"");
}

TEST_F(DevicesTest, OpeningAFileThatIsMissingAborts) {
    Devices.FileAnswers = {"none.zrt"};
    EXPECT_DEATH((void)ShowFileDialog({"Open", "", "", "", false}), "has no file none.zrt");
}

// ---- the disk

TEST_F(DevicesTest, AFullDiskRefusesWritesAndReadsOn) {
    Put("a.txt", "old");
    Devices.Disk = DiskMode::Full;
    const std::string text = "new";
    const std::string path = ProgramFolders.UserFolder() + "a.txt";
    EXPECT_EQ(ReplaceFile(path, std::as_bytes(std::span(text))), ENOSPC);
    std::string read;
    EXPECT_EQ(ReadTextFile(path, read), 0);
    EXPECT_EQ(read, "old");
}

TEST_F(DevicesTest, ABrokenDiskFailsInWriteAndSync) {
    OpenedFile file;
    ASSERT_EQ(file.Open(ProgramFolders.UserFolder() + "a.txt", OpenMode::Create), 0);
    Devices.Disk = DiskMode::Broken;
    const std::byte byte{1};
    EXPECT_EQ(file.WriteAt(0, std::span(&byte, 1)), EIO);
    EXPECT_EQ(file.Sync(), EIO);
    Devices.Disk = DiskMode::Full;
    EXPECT_EQ(file.Sync(), 0);
    EXPECT_EQ(file.Close(), 0);
}

TEST_F(DevicesTest, AnotherCopyHoldsEveryLock) {
    const std::string path = ProgramFolders.UserFolder() + "lock";
    Devices.OtherCopyRunning = true;
    EXPECT_EQ(Files.Lock(path).Result, LockResult::Held);
    FileLock log;
    Files.LockOpenFile(path, log);
    EXPECT_EQ(log.Result, LockResult::Held);
    Devices.OtherCopyRunning = false;
    EXPECT_EQ(Files.Lock(path).Result, LockResult::Taken);
    Files.LockOpenFile(path, log);
    EXPECT_EQ(log.Result, LockResult::Taken);
    Files.Unlock(log);
}

TEST_F(DevicesTest, AllFoldersAreTheProgramFolder) {
    EXPECT_EQ(ProgramFolders.ExecutableFolder(), Devices.ProgramFolder + "/");
    EXPECT_EQ(ProgramFolders.UserFolder(), ProgramFolders.ExecutableFolder());
    EXPECT_EQ(ProgramFolders.DefaultsFolder(), ProgramFolders.ExecutableFolder());
}

TEST_F(DevicesTest, HelpOpensOnlyWhereThereIsAFile) {
    EXPECT_FALSE(Help.Open(ProgramFolders.UserFolder() + "help.chm", 7));
    EXPECT_EQ(Devices.HelpTopic, -1);
    Put("help.chm", "x");
    EXPECT_TRUE(Help.Open(ProgramFolders.UserFolder() + "help.chm", 7));
    EXPECT_EQ(Devices.HelpTopic, 7);
}

// ---- ports

TEST_F(DevicesTest, PortsOpenWriteAndReceive) {
    SerialPort port;
    port.PortName = "Com3";
    std::string received;
    port.Received = [&] { received += Serial.Read(port) + "|"; };
    EXPECT_EQ(Serial.Write(port, "x"), EBADF);
    ASSERT_EQ(Serial.Open(port), 0);
    EXPECT_EQ(Serial.Write(port, "FA;"), 0);
    EXPECT_EQ(Devices.Ports["COM3"].Written, "FA;");
    EXPECT_TRUE(ArriveAtPort("com3", "IF0"));
    EXPECT_TRUE(ArriveAtPort("Com3", ";"));
    EXPECT_EQ(received, "IF0|;|");
    Serial.Close(port);
    EXPECT_FALSE(ArriveAtPort("Com3", "x"));
}

TEST_F(DevicesTest, APortCanBeAbsentFailingOrTaken) {
    SerialPort port;
    port.PortName = "Com2";
    Devices.Ports["Com2"].Mode = PortMode::Absent;
    EXPECT_EQ(Serial.Open(port), ENOENT);
    EXPECT_EQ(Serial.Present(), (std::vector<std::string>{"Com1", "Com3", "Com4"}));
    Devices.Ports["Com2"].Mode = PortMode::Failing;
    EXPECT_EQ(Serial.Open(port), EIO);
    Devices.Ports["Com2"].Mode = PortMode::Present;
    EXPECT_EQ(Serial.Open(port), 0);
    SerialPort second;
    second.PortName = "Com2";
    EXPECT_EQ(Serial.Open(second), EBUSY);
    Devices.Ports["Com2"].Mode = PortMode::Failing;
    EXPECT_EQ(Serial.Write(port, "x"), EIO);
    Serial.Close(port);
}

TEST_F(DevicesTest, RepliesComeFiveMillisecondsAfterTheirRequest) {
    SerialPort port;
    port.PortName = "Com1";
    std::vector<std::pair<Microseconds, std::string>> received;
    const Microseconds began = Clock.Steady();
    port.Received = [&] { received.emplace_back(Clock.Steady() - began, Serial.Read(port)); };
    SetReply("Com1", "IF;", "old");
    SetReply("Com1", "IF;", "IF1;");
    SetReply("Com1", "FA;", "FA2;");
    ASSERT_EQ(Serial.Open(port), 0);
    ASSERT_EQ(Serial.Write(port, "I"), 0);
    Wait(10);
    ASSERT_EQ(Serial.Write(port, "F;xFA;"), 0);
    Wait(20);
    using Event = std::pair<Microseconds, std::string>;
    EXPECT_EQ(received, (std::vector<Event>{{15000, "IF1;"}, {15000, "FA2;"}}));
    Serial.Close(port);
}

TEST_F(DevicesTest, LineChangesAreRecordedWithTheirTimes) {
    SerialPort port;
    port.PortName = "Com1";
    port.DtrAtOpen = true;
    EXPECT_EQ(Serial.SetRts(port, true), 0);
    ASSERT_EQ(Serial.Open(port), 0);
    const Microseconds began = Clock.Steady();
    Wait(24);
    EXPECT_EQ(Serial.SetDtr(port, false), 0);
    EXPECT_EQ(Serial.SetDtr(port, false), 0);
    StationLines.DlPortWritePortUchar(890, 4);
    Serial.Close(port);
    std::string seen;
    for (const LineChange &change : Devices.Lines)
        seen += change.Line + "=" + std::to_string(change.Value) + " ";
    EXPECT_EQ(seen, "Com1 DTR=1 Com1 RTS=1 Com1 DTR=0 890=4 Com1 RTS=0 ");
    EXPECT_EQ(Devices.Lines[2].At, began + 24 * kMillisecond);
    EXPECT_EQ(StationLines.DlPortReadPortUchar(890), 4);
    EXPECT_EQ(StationLines.DlPortReadPortUchar(634), 0);
}

TEST_F(DevicesTest, RelaysSwitchAsFarAsThereAreAny) {
    EXPECT_TRUE(StationLines.ModuleRelayOn(8));
    EXPECT_FALSE(StationLines.ModuleRelayOn(9));
    EXPECT_FALSE(StationLines.ModuleRelayOff(0));
    EXPECT_TRUE(StationLines.ModuleRelayOff(8));
    EXPECT_EQ(Devices.Lines.size(), 2U);
}

// ---- sound

class SoundTest : public DevicesTest {
  protected:
    // 8000 bytes a second.
    static void PutWave(const std::string &name, std::size_t milliseconds) {
        std::string wave("RIFF....WAVEfmt \x10\0\0\0\1\0\1\0\x40\x1f\0\0\x40\x1f\0\0\1\0\10\0data",
                         40);
        const auto size = static_cast<std::uint32_t>(milliseconds * 8);
        for (unsigned shift = 0; shift < 32; shift += 8)
            wave += static_cast<char>(size >> shift & 0xFFU);
        Put(name, wave + std::string(size, '\x80'));
    }
    void SetUp() override {
        DevicesTest::SetUp();
        PutWave("A.wav", 250);
        Player.FileName = ProgramFolders.UserFolder() + "A.wav";
        Player.Notify = [this] { Notified.push_back(Clock.Steady() - Began); };
        Began = Clock.Steady();
    }

    WavePlayer Player;
    Microseconds Began = 0;
    std::vector<Microseconds> Notified;
};

TEST_F(SoundTest, AWavePlaysForItsLength) {
    ASSERT_EQ(Sound.Open(Player), 0);
    EXPECT_EQ(Player.LengthMs, 250);
    EXPECT_EQ(Player.State, WaveState::Stopped);
    Player.NotifyInterval = 100;
    ASSERT_EQ(Sound.Play(Player), 0);
    EXPECT_EQ(Player.State, WaveState::Playing);
    Wait(1000);
    EXPECT_EQ(Player.State, WaveState::Stopped);
    EXPECT_EQ(Notified, (std::vector<Microseconds>{100000, 200000, 250000}));
    EXPECT_EQ(Devices.WavesStarted, std::vector<std::string>{Player.FileName});
    Sound.Close(Player);
}

TEST_F(SoundTest, APauseKeepsThePosition) {
    ASSERT_EQ(Sound.Open(Player), 0);
    ASSERT_EQ(Sound.Play(Player), 0);
    Wait(200);
    Sound.Pause(Player);
    EXPECT_EQ(Player.State, WaveState::Paused);
    Wait(1000);
    ASSERT_EQ(Sound.Play(Player), 0);
    Wait(1000);
    EXPECT_EQ(Notified, (std::vector<Microseconds>{1250000}));
    EXPECT_EQ(Devices.WavesStarted.size(), 1U);
    Sound.Rewind(Player);
    ASSERT_EQ(Sound.Play(Player), 0);
    EXPECT_EQ(Devices.WavesStarted.size(), 2U);
    Sound.Close(Player);
}

TEST_F(SoundTest, AStoppedOrClosedWaveTellsNothingMore) {
    ASSERT_EQ(Sound.Open(Player), 0);
    ASSERT_EQ(Sound.Play(Player), 0);
    Sound.Stop(Player);
    Wait(1000);
    ASSERT_EQ(Sound.Play(Player), 0);
    Sound.Close(Player);
    ASSERT_EQ(Sound.Open(Player), 0);
    Wait(1000);
    EXPECT_TRUE(Notified.empty());
    Sound.Close(Player);
}

TEST_F(SoundTest, WhatIsNoWaveOrHasNoDeviceIsAnError) {
    Player.FileName = ProgramFolders.UserFolder() + "none.wav";
    EXPECT_EQ(Sound.Open(Player), 30304);
    Put("text.wav", "hello");
    Player.FileName = ProgramFolders.UserFolder() + "text.wav";
    EXPECT_EQ(Sound.Open(Player), 30304);
    EXPECT_EQ(Sound.Play(Player), 30266);
    Player.FileName = ProgramFolders.UserFolder() + "A.wav";
    ASSERT_EQ(Sound.Open(Player), 0);
    Devices.SoundFails = true;
    EXPECT_EQ(Sound.Play(Player), 30266);
    Sound.Close(Player);
}

TEST_F(SoundTest, ATruncatedWavePlaysWhatItHolds) {
    std::string wave;
    ASSERT_EQ(ReadTextFile(Player.FileName, wave), 0);
    Put("B.wav", wave.substr(0, wave.size() - 800));
    Player.FileName = ProgramFolders.UserFolder() + "B.wav";
    ASSERT_EQ(Sound.Open(Player), 0);
    EXPECT_EQ(Player.LengthMs, 150);
    Sound.Close(Player);
}

TEST_F(SoundTest, ABeepTakesItsTime) {
    Sound.Beep(600, 80);
    EXPECT_EQ(Clock.Steady(), Began + 80 * kMillisecond);
    ASSERT_EQ(Devices.Tones.size(), 1U);
    EXPECT_EQ(Devices.Tones[0].Hertz, 600);
}

} // namespace
} // namespace zrt
