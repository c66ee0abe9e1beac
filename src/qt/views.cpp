#include "qt/views.h"

#include "app/about_box.h"
#include "app/background.h"
#include "app/band_mode.h"
#include "app/contest_chooser.h"
#include "app/partial_window.h"
#include "app/post_contest.h"
#include "app/user_info.h"
#include "entry/log_form.h"
#include "qt/mirror.h"
#include "qt/view_parts.h"

#include <algorithm>
#include <cassert>

namespace zrt {

namespace {

struct View {
    Form *Record;
    void (*Build)();
};

const View kViews[] = {
    {&LogForm, BuildLogFormView},     {&ChCoForm, BuildContestChooserView},
    {&BandMode, BuildBandModeView},   {&Aboutzrt, BuildAboutView},
    {&BkgdForm, BuildBackgroundView}, {&Partial, BuildPartialView},
    {&UserInfo, BuildUserInfoView},   {&PostContest, BuildPostContestView},
};

} // namespace

void BuildViews() {
    for (const NamedForm &form : RegisteredForms()) {
        const auto *view = std::find_if(std::begin(kViews), std::end(kViews),
                                        [&](const View &v) { return v.Record == form.Record; });
        assert(view != std::end(kViews)); // each window has a view
        view->Build();
        FinishBinding(*form.Record);
    }
}

void DestroyViews() {
    ForgetBindings();
}

} // namespace zrt
