#include "qt/real_session.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>

namespace zrt {

TemporaryHome::TemporaryHome() {
    std::string name = (std::filesystem::temp_directory_path() / "zrtlog-XXXXXX").string();
    Path = mkdtemp(name.data());
}

TemporaryHome::~TemporaryHome() {
    std::filesystem::remove_all(Path);
}

::testing::AssertionResult Comes(RealProgram &program, const std::string &question,
                                 const std::string &expected) {
    constexpr auto kPatience = std::chrono::seconds(60); // a machine under load is slow, not dead
    const auto end = std::chrono::steady_clock::now() + kPatience;
    std::string answer;
    while (std::chrono::steady_clock::now() < end) {
        bool gone = false;
        answer = program.Ask(question, gone);
        if (gone)
            return ::testing::AssertionFailure() << question << ": the program is gone";
        if (answer == expected)
            return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << question << ": " << answer;
}

std::string NextContact(int n) {
    return "QSO Nr " + std::to_string(n) + "    (20m CW)";
}

void StartGenericLog(RealProgram &program) {
    program.Start();
    ASSERT_TRUE(Comes(program, "window", "ZRTLOG"));
    program.Send("menu mnuFileNew");
    ASSERT_TRUE(Comes(program, "window", "Choose Contest"));
    program.Send("list lstContest 12");
    program.Send("click cmdOK");
    ASSERT_TRUE(Comes(program, "text QSONrLabel", NextContact(1)));
    ASSERT_TRUE(Comes(program, "focus", "InData(0)"));
}

} // namespace zrt
