// Windows as text: finds forms, controls and properties by their names, and lists them. Called by
// the scenario runner.
#pragma once

#include "platform/controls.h"

#include <optional>
#include <string>
#include <string_view>

namespace zrt {

struct Target {
    const NamedForm *Form = nullptr;
    const NamedControl *Control = nullptr; // null when the form itself is meant
    std::string Property;                  // empty when none is named
};

// Reads "FORM", "FORM.CONTROL", "CONTROL", each with ".PROPERTY" if `withProperty`. A control alone
// is one of the active form. Form is null if nothing has this name.
Target FindTarget(const std::string &name, bool withProperty);
std::string NameOfTarget(const Target &target); // "LogForm.lblDupe.Caption"

// Flags are True and False, rows and painted texts stand between "|". Nothing for a property that
// the control does not have.
std::optional<std::string> PropertyText(const Target &target);

// The whole of a control in one line, of a form in a line for each visible control.
std::string ShowControl(const NamedControl &control);
std::string ShowForm(const NamedForm &form);

// Every registered form with its controls, their kinds and purposes.
std::string ListForms();

} // namespace zrt
