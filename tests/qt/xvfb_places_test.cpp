// The real program on an X server of 1366x768 with a window manager: its windows come up on the
// screen with their frames, and a place that the screen does not reach stays in the settings. Needs
// DISPLAY; see under_xvfb.sh.
#include "qt/real_session.h"

#include <fstream>
#include <iterator>
#include <sstream>

#include <gmock/gmock.h>

namespace zrt {
namespace {

constexpr const char *kFarRow = "LOGFORM OPEN 9000 12000 5880 11400";

std::string TextOf(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The entry window of every contest below and to the right of the screen.
void WriteFarRows(const std::string &path) {
    const std::string near = "LOGFORM OPEN 0 0 5880 11400";
    std::string text = TextOf(path);
    for (auto at = text.find(near); at != std::string::npos; at = text.find(near, at))
        text.replace(at, near.size(), kFarRow);
    std::ofstream(path, std::ios::binary) << text;
}

// Left, top, width and height of the active window's frame.
struct Frame {
    int Left = -1, Top = -1, Width = 0, Height = 0;
    bool InSight() const {
        return Left >= 0 && Top >= 0 && Left + Width <= 1366 && Top + Height <= 768;
    }
};

Frame FrameOf(RealProgram &program) {
    bool gone = false;
    std::istringstream numbers(program.Ask("frame", gone));
    EXPECT_FALSE(gone);
    Frame frame;
    numbers >> frame.Left >> frame.Top >> frame.Width >> frame.Height;
    return frame;
}

TEST(RealPlaces, AWindowFromALargerScreenComesIntoSightAndKeepsItsPlace) {
    const TemporaryHome home;
    RealProgram program(home.Path, "xcb");
    const std::string settings = program.Folder() + "zrtlog125.ini";
    WriteFarRows(settings);
    ASSERT_NE(TextOf(settings).find(kFarRow), std::string::npos);
    ASSERT_NO_FATAL_FAILURE(StartGenericLog(program));
    // Moved from the middle of the screen, and with its frame: the answers of the window manager
    // come in their own time.
    Frame frame;
    for (int turn = 0; turn < 2000 && !(frame.InSight() && frame.Left > 500); ++turn)
        frame = FrameOf(program);
    EXPECT_TRUE(frame.InSight()) << frame.Left << ' ' << frame.Top << ' ' << frame.Width << ' '
                                 << frame.Height;
    EXPECT_EQ(frame.Left + frame.Width, 1366);
    EXPECT_EQ(frame.Top + frame.Height, 768);
    EXPECT_GT(frame.Height, 392) << "no title bar";
    program.Send("menu mnuFileExit");
    ASSERT_TRUE(Comes(program, "window", "Save Log?"));
    EXPECT_TRUE(FrameOf(program).InSight());
    program.Send("click No");
    EXPECT_EQ(program.Wait(), 0);
    EXPECT_NE(TextOf(settings).find(kFarRow), std::string::npos);
    EXPECT_THAT(TextOf(settings), testing::Not(testing::ContainsRegex("LOGFORM OPEN [0-8]")));
}

} // namespace
} // namespace zrt
