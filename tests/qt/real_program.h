// The real zrtlog binary in a process of its own, on the offscreen platform or on X11, with the
// keyboard of the testkeys plugin. For the tests that kill it or type much.
#pragma once

#include <string>
#include <sys/types.h>

namespace zrt {

class RealProgram {
  public:
    // `home` gets the program's folder and the two pipes.
    explicit RealProgram(std::string home, std::string platform = "offscreen");
    ~RealProgram();
    RealProgram(const RealProgram &) = delete;
    RealProgram &operator=(const RealProgram &) = delete;

    void Start();
    // Sends one line to the keyboard. False when the program is gone.
    bool Send(const std::string &line);
    // Sends a line that has an answer and waits for it; empty `gone` tells that the program lives.
    std::string Ask(const std::string &line, bool &gone);
    void Kill(); // SIGKILL; returns when the process is gone
    // Waits for the process to end by itself and returns its exit status.
    int Wait();
    pid_t Process() const { return Pid; }

    std::string Folder() const { return Home + "/zrtlog/"; }
    std::string TemporaryLog() const { return Folder() + "!temp%!!.zrb"; }

  private:
    std::string ReadLine(bool &gone);

    std::string Home;
    std::string Platform;
    std::string Buffer;
    pid_t Pid = -1;
    int In = -1, Out = -1;
};

} // namespace zrt
