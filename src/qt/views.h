// The windows as an operator sees them: one view for each registered form. Called by main() and by
// the demonstration.
#pragma once

namespace zrt {

// Builds the view of every registered form. Once, after RegisterWindows().
void BuildViews();
// Deletes them, before the application object ends.
void DestroyViews();

} // namespace zrt
