// Tables come into a session and out of it, and what they leave unknown lives there until it is saved away.
#include <gtest/gtest.h>
#include <memory>

#include "collection/SelectedDipoles.h"
#include "host/session/Session.h"
#include "platform/Utf.h"
#include "tests/host/exchange/HostileSet.h"
#include "tests/host/undo/WholeSet.h"
#include "tests/support/TempFolder.h"

namespace {

using host::DipoleValue;
using host::Session;

struct Viewer {
  Viewer() : set(std::make_unique<CDipoleFace9File>()), session(*set) {}

  Session::ImportResult import(const char* name) {
    return session.importFiles({folder.path(name)}, [](int, int, const CString&) { return true; });
  }

  Set set;
  Session session;
  TempFolder folder;
};

host::ExportFormat formatOf(const char* name) {
  return host::exportFormatsOf(CString(name)).at(0);
}

const std::string threeDipoles =
    "x_left_mm,y_up_mm,z_front_mm,latency_ms,fit_error_percent,moment_nAm,label\n"
    "1,2,3,10,5,20,a\n4,5,6,,5,20,b\n7,8,9,30,,20,c\n";

int latencyAndError(const Viewer& viewer, int slot) {
  return viewer.session.unknown().of(*viewer.set->m_dipoles[slot]) & 3;
}

}  // namespace

TEST(SessionTables, EveryFormatComesBackThroughTheSession) {
  for (const char* name : {"a.csv", "a.tsv", "a.JSON"}) {
    HostileValues hostile(3);
    Viewer viewer;
    *viewer.set = *hostile.set(50);
    const host::UnknownValues unknown = hostile.unknown(50);
    viewer.session.markUnknown(unknown);
    viewer.session.noteChange();
    viewer.session.exportSet(viewer.folder.path(name), formatOf(name));

    const Session::ImportResult result = viewer.import(name);
    EXPECT_EQ(result.dipoles, 50);
    ASSERT_EQ(viewer.set->m_totalDipoles, 100);
    while (viewer.set->m_totalDipoles > 50) {
      viewer.set->deleteDipole(0, 1);
    }
    viewer.session.noteChange();
    HostileValues same(3);
    const Set wanted = same.set(50);
    EXPECT_EQ(differences(membersInTables(*wanted, unknown),
                          membersInTables(*viewer.set, viewer.session.unknown().in(*viewer.set))),
              Lines());
    viewer.session.exportSet(viewer.folder.path(std::string("again.") + (name + 2)), formatOf(name));
    EXPECT_EQ(viewer.folder.read(std::string("again.") + (name + 2)), viewer.folder.read(name));
  }
}

TEST(SessionTables, AnImportIsOneStepThatTakesTheUnknownWithIt) {
  Viewer viewer;
  viewer.folder.write("a.csv", threeDipoles);
  EXPECT_EQ(viewer.import("a.csv").dipoles, 3);
  EXPECT_EQ(viewer.set->m_momentInNAm, 1);
  EXPECT_EQ(latencyAndError(viewer, 1), 1);
  EXPECT_EQ(latencyAndError(viewer, 2), 2);
  EXPECT_EQ(toUtf8(viewer.session.history().undoText()), "Undo Import");
  EXPECT_EQ(viewer.session.undo(), host::UndoHistory::Moved::done);
  EXPECT_EQ(viewer.set->m_totalDipoles, 0);
  EXPECT_EQ(viewer.session.redo(), host::UndoHistory::Moved::done);
  EXPECT_EQ(latencyAndError(viewer, 0), 0);
  EXPECT_EQ(latencyAndError(viewer, 1), 1);
  EXPECT_EQ(latencyAndError(viewer, 2), 2);
}

TEST(SessionTables, ASortByTheManagerAndADeleteTakeTheUnknownAlong) {
  Viewer viewer;
  viewer.folder.write("a.csv", threeDipoles);
  (void)viewer.import("a.csv");
  viewer.set->sortDipoles(9);
  viewer.set->sortDipoles(1);  // the unknown latency is 0 in the module
  deleteDipoles(*viewer.set, {1});
  viewer.session.noteChange();
  EXPECT_EQ(toUtf8(viewer.set->m_dipoles[0]->m_label), "b");
  EXPECT_EQ(latencyAndError(viewer, 0), 1);
  EXPECT_EQ(latencyAndError(viewer, 1), 2);
}

TEST(SessionTables, SavingTellsWhatASetFileCannotHold) {
  Viewer viewer;
  EXPECT_EQ(viewer.session.lossOfSaving(), "");
  viewer.folder.write("a.csv", threeDipoles);
  (void)viewer.import("a.csv");
  EXPECT_EQ(
      viewer.session.lossOfSaving(),
      "This file cannot hold that values are unknown, it gives them as if they were known: latency of 1 "
      "dipole, fit error of 1 dipole, orientation of 3 dipoles. A .csv, .tsv or .json file keeps it.");
  viewer.session.saveSet(viewer.folder.path("a.dipset"));
  viewer.session.openSet(viewer.folder.path("a.dipset"));
  EXPECT_EQ(viewer.session.lossOfSaving(), "");
}

TEST(SessionTables, ABadTableIsToldWithItsPlaceAndLeavesNothing) {
  Viewer viewer;
  viewer.folder.write("a.csv", threeDipoles + "1,2\n");
  const WholeSet before = wholeSet(*viewer.set);
  const Session::ImportResult result = viewer.import("a.csv");
  ASSERT_EQ(result.failed.size(), 1U);
  EXPECT_EQ(result.failed[0].cause, "line 5, column 3: this line has 2 cells, the titles are 7");
  EXPECT_TRUE(isSame(wholeSet(*viewer.set), before));
  EXPECT_TRUE(viewer.session.unknown().isEmpty());
}

TEST(SessionTables, ATableThatFindsNoRoomIsLeftOutWhole) {
  Viewer viewer;
  for (int i = 0; i < DipoleTable::capacity - 2; ++i) {
    viewer.set->addDipole();
  }
  viewer.folder.write("a.csv", threeDipoles);
  const Session::ImportResult result = viewer.import("a.csv");
  ASSERT_EQ(result.failed.size(), 1U);
  EXPECT_EQ(result.failed[0].cause, "the set has room for 2 more dipoles, the file holds 3");
  EXPECT_EQ(viewer.set->m_totalDipoles, DipoleTable::capacity - 2);
}
