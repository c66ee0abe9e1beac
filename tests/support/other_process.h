// A second process of a test: it does something, says whether that succeeded, and stays until the
// test lets it go.
#pragma once

#include <csignal>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

namespace zrt {

class OtherProcess {
  public:
    explicit OtherProcess(const std::function<bool()> &deed) {
        int pipe[2] = {-1, -1};
        if (::pipe(pipe) != 0)
            return;
        Id = ::fork();
        if (Id == 0)
            Do(deed, pipe[1]);
        ::close(pipe[1]);
        char said = 0;
        Succeeded = ::read(pipe[0], &said, 1) == 1 && said == 1;
        ::close(pipe[0]);
    }
    ~OtherProcess() {
        if (Id <= 0)
            return;
        ::kill(Id, SIGKILL);
        ::waitpid(Id, nullptr, 0);
    }
    OtherProcess(const OtherProcess &) = delete;
    OtherProcess &operator=(const OtherProcess &) = delete;

    pid_t Id = -1;
    bool Succeeded = false;

  private:
    [[noreturn]] static void Do(const std::function<bool()> &deed, int pipe) {
        const char said = deed() ? 1 : 0;
        (void)!::write(pipe, &said, 1);
        for (;;)
            ::pause();
    }
};

} // namespace zrt
