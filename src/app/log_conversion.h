// Logs of old versions, brought up to date before they are opened further. The log loader calls it
// when it has read the header.
#pragma once

namespace zrt {

// Converts the open log's file where its header says that its entries are of an old version, and
// asks what the header doesn't tell. The old file stays under the log's name with "b" as its last
// letter. Log.Header and Contest are right afterwards. False if the conversion failed: the operator
// has been told, and the file is as it was. May pump.
bool BringLogUpToDate();

} // namespace zrt
