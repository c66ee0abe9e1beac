// What the views put together: each procedure makes one widget and binds it to its record. Called
// by the *_view.cpp files alone.
#pragma once

#include "platform/controls.h"
#include "qt/widgets.h"

class QCheckBox;
class QGroupBox;
class QListWidget;
class QPushButton;
class QRadioButton;
class QWidget;

namespace zrt {

PlaceLabel *NewLabel(Form &form, Label &label, const LabelLook &look);
// A label that takes clicks of the mouse.
PlaceLabel *NewClickLabel(Form &form, Label &label, const LabelLook &look);
EntryField *NewField(Form &form, TextBox &field, int columns, double scale);
QCheckBox *NewCheckBox(Form &form, CheckBox &box);
QRadioButton *NewOption(Form &form, OptionButton &option);
QListWidget *NewList(Form &form, ListBox &list);
QPushButton *NewButton(Form &form, Button &button);
QGroupBox *NewFrame(Form &form, Frame &frame);

// A window for a dialog, bound to its form.
QWidget *NewDialogWindow(Form &form);

// Lengths follow the size of the system's font: `n` of its line heights.
int Lines(double n);

// The views. Each builds and binds the window of one form.
void BuildLogFormView();
void BuildContestChooserView();
void BuildBandModeView();
void BuildAboutView();
void BuildBackgroundView();
void BuildPartialView();
void BuildUserInfoView();
void BuildPostContestView();

} // namespace zrt
