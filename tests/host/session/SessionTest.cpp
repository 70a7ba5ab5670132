// The session keeps one head and one set together: what each operation changes, and that it changes nothing
// when it fails.
#include <gtest/gtest.h>
#include <memory>

#include "host/session/Session.h"
#include "tests/host/WholeSet.h"
#include "tests/support/TempFolder.h"

namespace {

using host::Session;

}  // namespace

TEST(Session, BeginsWithTheRegisteredPhantomAndTheSetAsItIs) {
  const Set set = filledSet(3);
  const WholeSet before = wholeSet(*set);
  Session session(*set);
  EXPECT_EQ(session.head().name, "Phantom");
  EXPECT_TRUE(session.head().isRegistered());
  EXPECT_FALSE(session.isUnsaved());
  EXPECT_TRUE(isSame(wholeSet(session.dipoles()), before));
  EXPECT_EQ(session.window().low, session.head().volume->window().low);
}

TEST(Session, SavedSetComesBackWholeWhenOpened) {
  const TempFolder folder;
  const Set set = filledSet(5);
  Session session(*set);
  const std::string bytes = currentBytes(*set);
  session.saveSet(folder.path("a.dipset"));
  EXPECT_EQ(folder.read("a.dipset"), bytes);
  EXPECT_EQ(folder.names(), Texts{"a.dipset"});
  session.newSet();
  EXPECT_EQ(set->m_totalDipoles, 0);
  EXPECT_TRUE(session.setPath().IsEmpty());
  session.openSet(folder.path("a.dipset"));
  EXPECT_EQ(currentBytes(*set), bytes);
  EXPECT_EQ(session.setPath(), folder.path("a.dipset"));
  EXPECT_EQ(session.recentSets().paths(), std::vector<CString>{folder.path("a.dipset")});
  EXPECT_FALSE(session.isUnsaved());
}
