#include "qt/mirror.h"

#include "platform/events.h"
#include "qt/inks.h"
#include "qt/mirror_places.h"
#include "qt/widgets.h"

#include <QApplication>
#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <cassert>
#include <memory>
#include <unordered_map>
#include <utility>

namespace zrt {

namespace {

struct BoundForm {
    Form *Record = nullptr;
    QWidget *Window = nullptr;
    std::vector<std::unique_ptr<Binding>> Controls;
    std::function<void()> Adjust;
    std::string Caption;
    WindowPlace Place;
};

struct MirrorState {
    std::vector<std::unique_ptr<BoundForm>> Forms;
    std::unordered_map<const QWidget *, Binding *> ByWidget;
    bool Mirroring = false;
    const Form *Active = nullptr; // the form that was brought to the front last
    Binding *NewFocus = nullptr;  // the operator's, not yet told to the records
    int BoxesOpen = 0;
    bool BusyShown = false;
};
MirrorState Mirror;

struct MirroringGuard {
    MirroringGuard() { Mirror.Mirroring = true; }
    ~MirroringGuard() { Mirror.Mirroring = false; }
    MirroringGuard(const MirroringGuard &) = delete;
    MirroringGuard &operator=(const MirroringGuard &) = delete;
};

BoundForm *Find(const Form &form) {
    for (const auto &bound : Mirror.Forms)
        if (bound->Record == &form)
            return bound.get();
    return nullptr;
}

BoundForm &BoundOf(const Form &form) {
    BoundForm *bound = Find(form);
    assert(bound != nullptr);
    return *bound;
}

Binding *BindingOfRecord(const BoundForm &form, const Control *control) {
    for (const auto &binding : form.Controls)
        if (binding->Record == control)
            return binding.get();
    return nullptr;
}

bool IsModal(const Form &form) {
    return std::find(Screen.Modal.begin(), Screen.Modal.end(), &form) != Screen.Modal.end();
}

void MirrorForm(BoundForm &form) {
    if (form.Record->Caption != form.Caption) {
        form.Caption = form.Record->Caption;
        form.Window->setWindowTitle(QString::fromStdString(form.Caption));
    }
    MirrorPlace(*form.Record, *form.Window, form.Place);
    // Backwards, since a menu shows itself only when one of its entries does.
    std::for_each(form.Controls.rbegin(), form.Controls.rend(),
                  [](const auto &binding) { MirrorControl(*binding); });
    if (form.Adjust)
        form.Adjust();
}

// Qt takes new flags and a new modality only at the next show.
void SetCloseBox(BoundForm &form) {
    const Qt::WindowFlags flags = form.Window->windowFlags();
    if (flags.testFlag(Qt::WindowCloseButtonHint) == form.Record->HasCloseBox)
        return;
    form.Window->hide();
    form.Window->setWindowFlag(Qt::CustomizeWindowHint);
    form.Window->setWindowFlag(Qt::WindowTitleHint);
    form.Window->setWindowFlag(Qt::WindowCloseButtonHint, form.Record->HasCloseBox);
}

// The window that a dialog stands over: the modal one beneath it, or else the one that is no
// dialog.
QWidget *OwnerOf(const BoundForm &form) {
    if (form.Window->windowType() != Qt::Dialog)
        return nullptr;
    QWidget *owner = nullptr;
    for (const auto &other : Mirror.Forms)
        if (other->Window->isVisible() && other->Window->windowType() != Qt::Dialog)
            owner = other->Window;
    for (const Form *modal : Screen.Modal) {
        if (modal == form.Record)
            break;
        if (const BoundForm *below = Find(*modal); below != nullptr && below->Window->isVisible())
            owner = below->Window;
    }
    return owner;
}

// The window manager keeps a window above the one that it belongs to.
void SetOwner(BoundForm &form) {
    const QWidget *owner = OwnerOf(form);
    // Before the native window is made: then Qt takes the place for that of the frame.
    PlaceByOwner(*form.Record, *form.Window, form.Place, owner);
    form.Window->winId(); // makes it
    form.Window->windowHandle()->setTransientParent(owner == nullptr ? nullptr
                                                                     : owner->windowHandle());
}

void ShowWindow(BoundForm &form) {
    SetCloseBox(form);
    const Qt::WindowModality modality = IsModal(*form.Record) ? Qt::ApplicationModal : Qt::NonModal;
    if (form.Window->windowModality() != modality) {
        form.Window->hide();
        form.Window->setWindowModality(modality);
    }
    if (form.Window->isVisible())
        return;
    SetOwner(form);
    form.Window->show();
}

// Windows appear with their texts already in them, and the modal ones in the order of their stack.
void MirrorWindows() {
    for (const auto &form : Mirror.Forms) {
        if (!form->Record->Visible && form->Window->isVisible()) {
            form->Window->hide();
            Mirror.Active = nullptr;
        }
    }
    for (const auto &form : Mirror.Forms)
        if (form->Record->Visible && !IsModal(*form->Record))
            ShowWindow(*form);
    for (const Form *modal : Screen.Modal)
        if (BoundForm *form = Find(*modal); form != nullptr && modal->Visible)
            ShowWindow(*form);
}

void MirrorActivation() {
    const Form *active = ActiveForm();
    if (active == Mirror.Active || Mirror.BoxesOpen > 0)
        return;
    Mirror.Active = active;
    if (active == nullptr)
        return;
    if (const BoundForm *form = Find(*active); form != nullptr && form->Window->isVisible()) {
        form->Window->raise();
        form->Window->activateWindow();
    }
}

void MirrorFocus(BoundForm &form) {
    if (form.Record->ActiveControl == nullptr ||
        (Mirror.NewFocus != nullptr && Mirror.NewFocus->Owner == form.Record))
        return;
    const Binding *binding = BindingOfRecord(form, form.Record->ActiveControl);
    if (binding == nullptr || binding->Widget == nullptr)
        return;
    QWidget *widget = binding->Widget;
    if (form.Window->focusWidget() != widget && widget->isEnabled() && widget->isVisible())
        widget->setFocus(Qt::OtherFocusReason);
}

void MirrorPointer() {
    const bool busy = Screen.BusyPointer && Mirror.BoxesOpen == 0;
    if (busy == Mirror.BusyShown)
        return;
    Mirror.BusyShown = busy;
    if (busy)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

// A form that opens without an active control gives the keyboard to its first one.
void FocusFirstControl(const BoundForm &form) {
    if (form.Record->ActiveControl != nullptr || !form.Window->isVisible())
        return;
    for (const auto &binding : form.Controls) {
        if (binding->Widget != nullptr && binding->Widget->isVisible() &&
            binding->Widget->isEnabled() && binding->Widget->focusPolicy() != Qt::NoFocus) {
            SetFocus(*binding->Record);
            return;
        }
    }
}

} // namespace

void BindWindow(Form &form, QWidget *window) {
    assert(Find(form) == nullptr);
    const NamedForm &named = RegistrationOf(form);
    window->setObjectName(QString::fromStdString(named.Name));
    window->setAccessibleDescription(QString::fromStdString(named.Purpose));
    auto bound = std::make_unique<BoundForm>();
    bound->Record = &form;
    bound->Window = window;
    Mirror.Forms.push_back(std::move(bound));
}

void SizeWindow(const Form &form, QSize size) {
    BoundForm &bound = BoundOf(form);
    bound.Place.SizeOfView = size;
    bound.Window->resize(size);
}

Binding &AddBinding(Form &form, Control &control, QWidget *widget, QAction *action) {
    BoundForm &bound = BoundOf(form);
    assert(BindingOfRecord(bound, &control) == nullptr);
    auto binding = std::make_unique<Binding>();
    binding->Owner = &form;
    binding->Record = &control;
    binding->Widget = widget;
    binding->Action = action;
    if (widget != nullptr)
        Mirror.ByWidget[widget] = binding.get();
    bound.Controls.push_back(std::move(binding));
    return *bound.Controls.back();
}

void WhenMirrored(Form &form, std::function<void()> adjust) {
    BoundOf(form).Adjust = std::move(adjust);
}

void FinishBinding(Form &form) {
    BoundForm &bound = BoundOf(form);
    std::vector<std::unique_ptr<Binding>> ordered;
    QWidget *before = nullptr;
    for (const NamedControl &named : RegistrationOf(form).Controls) {
        const auto found =
            std::find_if(bound.Controls.begin(), bound.Controls.end(),
                         [&](const auto &b) { return b != nullptr && b->Record == named.Record; });
        const bool widgetless = named.Record->Kind == ControlKind::Timer;
        assert(widgetless || found != bound.Controls.end());
        if (widgetless || found == bound.Controls.end())
            continue;
        QWidget *widget = (*found)->Widget;
        if (widget != nullptr && widget->focusPolicy() != Qt::NoFocus) {
            if (before != nullptr)
                QWidget::setTabOrder(before, widget);
            before = widget;
        }
        ordered.push_back(std::move(*found));
    }
    bound.Controls = std::move(ordered);
}

void ForgetBindings() {
    for (const auto &form : Mirror.Forms)
        delete form->Window;
    if (Mirror.BusyShown)
        QGuiApplication::restoreOverrideCursor();
    Mirror = {};
}

QWidget *ViewOf(const Form &form) {
    return BoundOf(form).Window;
}

Form *FormOfWindow(const QWidget *window) {
    for (const auto &form : Mirror.Forms)
        if (form->Window == window)
            return form->Record;
    return nullptr;
}

Binding *BindingOf(const QWidget *widget) {
    const auto found = Mirror.ByWidget.find(widget);
    return found == Mirror.ByWidget.end() ? nullptr : found->second;
}

bool Mirroring() {
    return Mirror.Mirroring;
}

void MirrorRecords() {
    if (Mirror.Mirroring)
        return;
    {
        const MirroringGuard guard;
        for (const auto &form : Mirror.Forms)
            if (form->Record->Visible || form->Window->isVisible())
                MirrorForm(*form);
        MirrorWindows();
        MirrorActivation();
        for (const auto &form : Mirror.Forms)
            if (form->Record->Visible)
                MirrorFocus(*form);
        MirrorPointer();
    }
    for (const auto &form : Mirror.Forms)
        if (form->Record->Visible)
            FocusFirstControl(*form);
}

void ActivateAgain() {
    Mirror.Active = nullptr;
}

void ColorsChanged() {
    for (const auto &form : Mirror.Forms)
        for (const auto &binding : form->Controls)
            binding->Fresh = true;
}

BoxOpen::BoxOpen() {
    ++Mirror.BoxesOpen;
}

BoxOpen::~BoxOpen() {
    --Mirror.BoxesOpen;
    ActivateAgain();
}

void FocusByOperator(Binding &binding) {
    if (binding.Owner->ActiveControl == binding.Record) {
        binding.CaretStale = true;
        return;
    }
    Mirror.NewFocus = &binding;
    Post(FinishFocus);
}

void FinishFocus() {
    if (Binding *binding = std::exchange(Mirror.NewFocus, nullptr)) {
        SetFocus(*binding->Record);
        MirrorRecords();
    }
}

void ReadPlacement(Form &form, const QWidget &window, bool bySystem) {
    if (BoundForm *bound = Find(form))
        ReadPlace(form, window, bound->Place, bySystem);
}

} // namespace zrt
