// The program's own windows on the Qt doors, none of them shown yet, for tests of the views.
#pragma once

#include "app/start_up.h"
#include "platform/clock.h"
#include "platform/controls.h"
#include "platform/events.h"
#include "platform/program.h"
#include "qt/doors.h"
#include "qt/mirror.h"
#include "qt/views.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace zrt {

class RealWindows : public testing::Test {
  protected:
    RealWindows() {
        Program = {};
        Screen = {};
        ForgetEvents();
        InstallQtDoors([] { EndProgram(0); });
        RegisterWindows();
        for (const NamedForm &form : RegisteredForms())
            form.Record->Visible = false;
        BuildViews();
    }
    ~RealWindows() override {
        DestroyViews();
        ForgetEvents();
    }

    // Copies the records, lets Qt lay out and paint, and serves what is due.
    static void Turn() {
        for (int i = 0; i < 3; ++i) {
            MirrorRecords();
            QCoreApplication::processEvents();
            while (ServeNextEvent(Clock.Steady())) {}
        }
    }
};

} // namespace zrt
