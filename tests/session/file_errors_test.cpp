#include "session/file_errors.h"

#include "support/program.h"

#include <cerrno>

namespace zrt {
namespace {

class FileErrors : public ProgramTest {};

TEST_F(FileErrors, ABadNameIsToldAndAnsweredWithOk) {
    for (const int number : {52, 64}) {
        Answer({BoxAnswer::Ok});
        EXPECT_EQ(FileErrorAction(number), FileAction::Ok);
        EXPECT_EQ(LastBox().Text, "Illegal file name.");
        EXPECT_EQ(LastBox().Title, "File or Disk Error");
        EXPECT_EQ(LastBox().Buttons, BoxButtons::Ok);
        EXPECT_EQ(LastBox().Icon, BoxIcon::Exclamation);
    }
}

TEST_F(FileErrors, AMissingDeviceOrDiskAsksToRetry) {
    struct Row {
        int Number;
        const char *Text;
    };
    for (const Row &row :
         {Row{68, "Drive unavailable.  If it's a removable disk drive, insert a disk."},
          Row{71, "Insert a disk in the drive."}}) {
        Answer({BoxAnswer::Retry, BoxAnswer::Cancel});
        EXPECT_EQ(FileErrorAction(row.Number), FileAction::Retry);
        EXPECT_EQ(FileErrorAction(row.Number), FileAction::Cancel);
        EXPECT_EQ(LastBox().Text, row.Text);
        EXPECT_EQ(LastBox().Title, "File or Disk Error");
        EXPECT_EQ(LastBox().Buttons, BoxButtons::RetryCancel);
        EXPECT_EQ(LastBox().Icon, BoxIcon::Exclamation);
    }
}

TEST_F(FileErrors, AnyOtherErrorHasNoBox) {
    for (const int number : {0, 51, 53, 57, 61, 70, 75, 76, -1})
        EXPECT_EQ(FileErrorAction(number), FileAction::NoBox) << number;
    EXPECT_TRUE(Devices.Boxes.empty());
}

TEST_F(FileErrors, TheResultsAreTheNumbersOfTheCodeTable) {
    EXPECT_EQ(static_cast<int>(FileAction::Ok), 0);
    EXPECT_EQ(static_cast<int>(FileAction::Ignore), 1);
    EXPECT_EQ(static_cast<int>(FileAction::Cancel), 2);
    EXPECT_EQ(static_cast<int>(FileAction::NoBox), 3);
    EXPECT_EQ(static_cast<int>(FileAction::Retry), 4);
}

TEST_F(FileErrors, AFullDiskIsNeverSilentForAContact) {
    Answer({BoxAnswer::Retry, BoxAnswer::Cancel});
    EXPECT_EQ(WriteErrorAction(ENOSPC), FileAction::Retry);
    EXPECT_EQ(WriteErrorAction(ENOSPC), FileAction::Cancel);
    EXPECT_EQ(LastBox().Text, "No space left on device");
    EXPECT_EQ(LastBox().Title, "File or Disk Error");
    EXPECT_EQ(LastBox().Buttons, BoxButtons::RetryCancel);
}

TEST_F(FileErrors, AnErrorWithABoxOfItsOwnShowsThatForAContactToo) {
    Answer({BoxAnswer::Retry});
    EXPECT_EQ(WriteErrorAction(ENXIO), FileAction::Retry);
    EXPECT_EQ(LastBox().Text, "Drive unavailable.  If it's a removable disk drive, insert a disk.");
}

TEST_F(FileErrors, EveryWriteErrorShowsABox) {
    for (int error = 1; error < 130; ++error) {
        const bool okBox = ErrorNumberOf(error) == 52 || ErrorNumberOf(error) == 64;
        Answer({okBox ? BoxAnswer::Ok : BoxAnswer::Cancel});
        EXPECT_NE(WriteErrorAction(error), FileAction::NoBox);
        EXPECT_FALSE(LastBox().Text.empty());
    }
    EXPECT_EQ(Devices.Boxes.size(), 129U);
}

} // namespace
} // namespace zrt
