// Sets to and from files: whole or not at all, and the session knows what is saved.
#include <algorithm>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

#include "host/exchange/SetTable.h"
#include "host/session/Session.h"
#include "host/text/PathText.h"
#include "tests/host/text/Failing.h"
#include "tests/host/undo/WholeSet.h"
#include "tests/support/FailingOs.h"
#include "tests/support/TempFolder.h"

namespace {

using host::ExportFormat;
using host::Session;
using Paths = std::vector<CString>;

struct Viewer {
  explicit Viewer(int dipoles) : set(filledSet(dipoles)), session(*set) {}

  Set set;
  Session session;
  TempFolder folder;
};

// Everything of a session that a failure must not change.
struct State {
  explicit State(Viewer& viewer)
      : set(wholeSet(*viewer.set)),
        path(viewer.session.setPath()),
        recent(viewer.session.recentSets().paths()),
        isUnsaved(viewer.session.isUnsaved()),
        undoSteps(viewer.session.history().undoSteps()) {}

  WholeSet set;
  CString path;
  Paths recent;
  bool isUnsaved;
  std::size_t undoSteps;

  bool operator==(const State&) const = default;
};

// A session that has a name, a step to undo, and something to save.
void prepare(Viewer& viewer) {
  viewer.session.saveSet(viewer.folder.path("mine.dipset"));
  viewer.set->m_dipoles[0]->m_label = _T("changed");
  viewer.session.noteChange();
}

std::string failureOfOpening(Viewer& viewer, const CString& path) {
  return failureOf([&] { viewer.session.openSet(path); });
}

// The bytes of a set of one dipole up to its count, which becomes another one. It is the first thing that the
// same set without dipoles has otherwise.
std::string upToCount(const std::string& one, const std::string& none, int count) {
  const auto place =
      static_cast<std::size_t>(std::mismatch(one.begin(), one.end(), none.begin()).first - one.begin());
  std::string bytes = one.substr(0, place + sizeof count);
  std::memcpy(bytes.data() + place, &count, sizeof count);
  return bytes;
}

}  // namespace

TEST(SessionFiles, SavedSetComesBackWholeWhenOpened) {
  Viewer viewer(5);
  const std::string bytes = currentBytes(*viewer.set);
  const CString path = viewer.folder.path("a.dipset");
  viewer.session.saveSet(path);
  EXPECT_EQ(viewer.folder.read("a.dipset"), bytes);
  EXPECT_EQ(viewer.folder.names(), Texts{"a.dipset"});
  viewer.session.newSet();
  EXPECT_EQ(viewer.set->m_totalDipoles, 0);
  viewer.session.openSet(path);
  EXPECT_EQ(currentBytes(*viewer.set), bytes);
  EXPECT_EQ(viewer.session.setPath(), path);
  EXPECT_EQ(viewer.session.recentSets().paths(), Paths{path});
}

TEST(SessionFiles, OpenedSetHasNothingOfTheOneBefore) {
  Viewer other(2);
  other.set->m_fiducialMri.resetAllFiducialPt();
  other.set->m_sphereCtf = CSpherezq();
  other.session.saveSet(other.folder.path("other.dipset"));
  Viewer viewer(9);
  viewer.session.openSet(other.folder.path("other.dipset"));
  const auto expected = std::make_unique<CDipoleFace9File>();
  ASSERT_EQ(readCurrent(currentBytes(*other.set), *expected), 1);
  expected->m_managerTitle = viewer.set->m_managerTitle;  // the window's own
  EXPECT_TRUE(isSame(wholeSet(*viewer.set), wholeSet(*expected)));
  EXPECT_EQ(viewer.session.history().undoSteps(), 0U);
}

TEST(SessionFiles, SetsOf2001OpenWithTheirSpheresAndPoints) {
  Viewer viewer(1);
  const Set old = filledSet(3);
  const CString path = viewer.folder.write("old.dipset", obsoleteBytes(*old));
  viewer.session.openSet(path);
  EXPECT_EQ(obsoleteBytes(*viewer.set), obsoleteBytes(*old));
}

TEST(SessionFiles, NewSetIsAsANewCollection) {
  Viewer viewer(4);
  prepare(viewer);
  viewer.session.newSet();
  const auto fresh = std::make_unique<CDipoleFace9File>();
  fresh->m_managerTitle = viewer.set->m_managerTitle;  // the window's own
  EXPECT_TRUE(isSame(wholeSet(*viewer.set), wholeSet(*fresh)));
  EXPECT_TRUE(viewer.session.setPath().IsEmpty());
  EXPECT_FALSE(viewer.session.isUnsaved());
  EXPECT_EQ(viewer.session.history().undoSteps(), 0U);
  EXPECT_EQ(viewer.session.recentSets().paths(), Paths{viewer.folder.path("mine.dipset")});
}

TEST(SessionFiles, WindowsOfTheHostStayWhenTheSetIsReplaced) {
  Viewer viewer(2);
  viewer.set->m_managerTitle = _T("Mine");
  viewer.set->m_cbfUpdateViewers = [](bool) { return 1; };
  viewer.session.newSet();
  EXPECT_EQ(viewer.set->m_managerTitle, CString(_T("Mine")));
  EXPECT_NE(viewer.set->m_cbfUpdateViewers, nullptr);
}

TEST(SessionFiles, FileThatIsNoSetChangesNothing) {
  Viewer viewer(3);
  prepare(viewer);
  ScriptedOperator user;
  const State before(viewer);
  const std::string whole = currentBytes(*filledSet(3));
  const std::string old = obsoleteBytes(*filledSet(3));
  std::string version = whole;
  version[0x1E] = 'x';
  for (const std::string& bytes : {std::string(), std::string("no set"), std::string("\xFF\xFE\xFF"),
                                   std::string("\0\0\0", 3), version, whole + "x", old + "x"}) {
    const CString path = viewer.folder.write("bad.dipset", bytes);
    const std::string failure = failureOfOpening(viewer, path);
    EXPECT_TRUE(failure.starts_with("cannot read " + host::utf8Of(path) + ": ")) << bytes.substr(0, 8);
    EXPECT_TRUE(State(viewer) == before);
  }
}

TEST(SessionFiles, SetThatIsCutShortAnywhereChangesNothing) {
  Viewer viewer(2);
  prepare(viewer);
  ScriptedOperator user;
  const State before(viewer);
  for (const std::string& whole : {currentBytes(*filledSet(2)), obsoleteBytes(*filledSet(2))}) {
    for (std::size_t length = 0; length < whole.size(); length += length < 300 ? 1 : 97) {
      const CString path = viewer.folder.write("cut.dipset", whole.substr(0, length));
      ASSERT_NE(failureOfOpening(viewer, path), "") << length << " of " << whole.size();
      ASSERT_TRUE(State(viewer) == before) << length;
    }
  }
}

TEST(SessionFiles, SetWithoutAllOfTheDipolesThatItCountsChangesNothing) {
  Viewer viewer(2);
  prepare(viewer);
  ScriptedOperator user;
  const State before(viewer);
  const std::string dipole = currentBytes(*filledSet(1));
  const std::string oldDipole = obsoleteBytes(*filledSet(1));
  const std::string empty = currentBytes(*filledSet(0));
  const std::string oldEmpty = obsoleteBytes(*filledSet(0));
  for (const int count : {-1, 1, 2, 30000, 30001}) {
    // Nothing stands behind the count, neither dipoles nor what follows them.
    for (const std::string& bytes :
         {upToCount(dipole, empty, count), upToCount(oldDipole, oldEmpty, count)}) {
      const CString path = viewer.folder.write("count.dipset", bytes);
      ASSERT_NE(failureOfOpening(viewer, path), "") << count;
      EXPECT_TRUE(State(viewer) == before) << count;
    }
  }
}

TEST(SessionFiles, SetOfFewerThanNoDipolesIsAnEmptyOne) {
  Viewer viewer(2);
  const Set empty = filledSet(0);
  empty->m_currentDipole = std::numeric_limits<int>::min();
  empty->m_totalDipoles = -1;
  viewer.session.openSet(viewer.folder.write("current.dipset", currentBytes(*empty)));
  EXPECT_EQ(viewer.set->m_totalDipoles, 0);
  EXPECT_EQ(viewer.set->m_patient, empty->m_patient);
}

TEST(SessionFiles, FileThatIsGoneLeavesTheRecentOnes) {
  Viewer viewer(1);
  prepare(viewer);
  const CString gone = viewer.folder.path("gone.dipset");
  viewer.session.recentSets().add(gone);
  const std::string failure = failureOfOpening(viewer, gone);
  EXPECT_TRUE(failure.starts_with("cannot read " + host::utf8Of(gone) + ": ")) << failure;
  EXPECT_EQ(viewer.session.recentSets().paths(), Paths{viewer.folder.path("mine.dipset")});
  const CString bad = viewer.folder.write("bad.dipset", "bad");
  viewer.session.recentSets().add(bad);
  EXPECT_NE(failureOfOpening(viewer, bad), "");
  EXPECT_EQ(viewer.session.recentSets().paths(), (Paths{bad, viewer.folder.path("mine.dipset")}));
}

TEST(SessionFiles, FailedSaveChangesNothing) {
  Viewer viewer(2);
  prepare(viewer);
  const std::string saved = viewer.folder.read("mine.dipset");
  const State before(viewer);
  const CString folder = viewer.folder.makeFolder("folder.dipset");
  EXPECT_EQ(failureOf([&] { viewer.session.saveSet(folder); }),
            "cannot write " + host::utf8Of(folder) + ": it is a folder");
  EXPECT_NE(failureOf([&] { viewer.session.saveSet(viewer.folder.path("gone/a.dipset")); }), "");
  EXPECT_TRUE(State(viewer) == before);
  EXPECT_EQ(viewer.folder.read("mine.dipset"), saved);
}

TEST(SessionFiles, UndoAndRedoComeBackToWhatWasSaved) {
  Viewer viewer(3);
  Session& session = viewer.session;
  EXPECT_FALSE(session.isUnsaved());
  viewer.set->m_dipoles[0]->m_label = _T("one");
  EXPECT_TRUE(session.noteChange());
  EXPECT_TRUE(session.isUnsaved());
  session.undo();
  EXPECT_FALSE(session.isUnsaved());
  session.redo();
  EXPECT_TRUE(session.isUnsaved());
  session.saveSet(viewer.folder.path("a.dipset"));
  EXPECT_FALSE(session.isUnsaved());
  session.undo();
  EXPECT_TRUE(session.isUnsaved());
  viewer.set->m_dipoles[0]->m_label = _T("two");
  session.noteChange();
  EXPECT_TRUE(session.isUnsaved());
  session.undo();
  EXPECT_TRUE(session.isUnsaved());  // that state was never saved here
}

TEST(SessionFiles, SaveTakesNoteOfWhatNobodyDid) {
  Viewer viewer(3);
  viewer.set->m_dipoles[0]->m_label = _T("unnoted");
  viewer.session.saveSet(viewer.folder.path("a.dipset"));
  EXPECT_FALSE(viewer.session.isUnsaved());
  EXPECT_EQ(viewer.session.history().undoSteps(), 1U);
  viewer.session.undo();
  EXPECT_TRUE(viewer.session.isUnsaved());
}

TEST(SessionFiles, SelectionAndCurrentDipoleNeedNoSave) {
  Viewer viewer(3);
  viewer.set->setCurrentDipole(0);
  viewer.set->m_dipoles[1]->m_selected = !viewer.set->m_dipoles[1]->m_selected;
  EXPECT_FALSE(viewer.session.noteChange());
  EXPECT_FALSE(viewer.session.isUnsaved());
}

TEST(SessionFiles, ExportsAreThoseOfTheModuleAndOfTheTable) {
  Viewer viewer(3);
  const State before(viewer);
  viewer.session.exportSet(viewer.folder.path("a.csv"), ExportFormat::csv);
  EXPECT_EQ(viewer.folder.read("a.csv"), host::tableOf(*viewer.set, {}, viewer.set->m_momentInNAm != 0, ','));
  ScriptedOperator user;
  user.answerFiles({viewer.folder.path("module.txt")});
  ASSERT_EQ(viewer.set->exportExelFile(), 1);
  for (const char* name : {"a.txt", "a.text", "a"}) {
    viewer.session.exportSet(viewer.folder.path(name), ExportFormat::text);
    EXPECT_EQ(viewer.folder.read(name), viewer.folder.read("module.txt"));
  }
  EXPECT_EQ(viewer.folder.names(), (Texts{"a", "a.csv", "a.text", "a.txt", "module.txt"}));
  EXPECT_EQ(user.messages.size(), 0U);
  EXPECT_TRUE(State(viewer) == before);
}

TEST(SessionFiles, ASavedSetReachesItsFileInPiecesOfTheLargeBuffer) {
  Viewer viewer(5000);
  const CString path = viewer.folder.path("large.dipset");
  FailingOs os;
  os.failAt(FailingOs::Call::write, 1000, CFileException::diskFull);
  viewer.session.saveSet(path);
  const std::size_t size = viewer.folder.read("large.dipset").size();
  ASSERT_GT(size, std::size_t{CDipoleFace9File::archiveBuffer} * 2);
  EXPECT_EQ(os.calls, static_cast<int>(size / CDipoleFace9File::archiveBuffer) + 1);
}

TEST(SessionFiles, FailedExportsLeaveTheTarget) {
  Viewer viewer(3);
  const CString folder = viewer.folder.makeFolder("folder");
  const std::string failure = "cannot write " + host::utf8Of(folder) + ": it is a folder";
  EXPECT_EQ(failureOf([&] { viewer.session.exportSet(folder, ExportFormat::csv); }), failure);
  EXPECT_EQ(failureOf([&] { viewer.session.exportSet(folder, ExportFormat::text); }), failure);
  EXPECT_EQ(viewer.folder.names(), Texts{"folder"});
}

TEST(SessionFiles, ExportToAFullDiskTellsTheCauseOnceAndLeavesTheTarget) {
  Viewer viewer(3);
  const ScriptedOperator user;
  const CString target = viewer.folder.write("a.txt", "old");
  std::string told;
  {
    const FailingOs os(FailingOs::Call::write, 1, CFileException::diskFull);
    told = failureOf([&] { viewer.session.exportSet(target, ExportFormat::text); });
  }
  const std::string start = "cannot write " + host::utf8Of(target) + ": ";
  EXPECT_EQ(told.substr(0, start.size()), start);
  EXPECT_GT(told.size(), start.size());
  EXPECT_EQ(user.texts(), Texts{});
  EXPECT_EQ(viewer.folder.read("a.txt"), "old");
  EXPECT_EQ(viewer.folder.names(), Texts{"a.txt"});
}
