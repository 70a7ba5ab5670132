// The words for what a pane shows and what not.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "host/panes/PaneAccount.h"

using host::SliceAccount;
using Texts = std::vector<std::string>;

TEST(SliceAccount, TellsHowManyOfAllAreOnTheSlice) {
  SliceAccount account;
  account.total = 120;
  account.onSlice = 3;
  EXPECT_EQ(countText(account), "dipoles: 3 of 120 on this slice");
  EXPECT_EQ(choiceText(account), "");
  EXPECT_EQ(warningTexts(account), Texts{});
}

TEST(SliceAccount, TellsWhatWasChosenToHide) {
  SliceAccount account;
  account.switchedOff = 12;
  EXPECT_EQ(choiceText(account), "12 switched off");
  account.filtered = 3;
  EXPECT_EQ(choiceText(account), "12 switched off, 3 filtered out");
  account.switchedOff = 0;
  EXPECT_EQ(choiceText(account), "3 filtered out");
}

TEST(SliceAccount, WarnsOfWhatIsNotSeen) {
  SliceAccount account;
  account.isRegistered = false;
  account.withheld = 1;
  account.offPane = 1;
  account.outside = 2;
  account.nowhere = 1;
  EXPECT_EQ(warningTexts(account),
            (Texts{"Not registered: dipoles are not drawn on this MRI",
                   "1 dipole close to this slice not drawn: below the level of the ears",
                   "1 dipole on this slice beyond the borders of this view",
                   "2 dipoles more than 300 mm away, not drawn", "1 dipole without a valid location"}));
}

TEST(SceneAccount, TellsWhatIsSeenThroughASliceAndWhatIsNotSeen) {
  host::SceneAccount account;
  account.total = 5;
  account.shown = 4;
  EXPECT_EQ(countText(account), "dipoles: 4 of 5");
  EXPECT_EQ(behindText(account), "");
  EXPECT_EQ(warningTexts(account), Texts{});
  account.behindSlice = 2;
  account.offPane = 1;
  account.nowhere = 3;
  EXPECT_EQ(behindText(account), "2 dipoles behind a slice, seen through it");
  EXPECT_EQ(warningTexts(account),
            (Texts{"1 dipole beyond the borders of this view", "3 dipoles without a valid location"}));
}
