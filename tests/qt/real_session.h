// The first steps of a test with the real program: a home, a question that is asked until its
// answer comes, an empty Generic log.
#pragma once

#include "qt/real_program.h"

#include <gtest/gtest.h>

#include <string>

namespace zrt {

class TemporaryHome {
  public:
    TemporaryHome();
    ~TemporaryHome();
    TemporaryHome(const TemporaryHome &) = delete;
    TemporaryHome &operator=(const TemporaryHome &) = delete;
    std::string Path;
};

// Asks until the answer is the expected one: the program may be on its way there.
::testing::AssertionResult Comes(RealProgram &program, const std::string &question,
                                 const std::string &expected);
// What QSONrLabel says before contact n.
std::string NextContact(int n);
// With assertions that are fatal to the calling test.
void StartGenericLog(RealProgram &program);

} // namespace zrt
