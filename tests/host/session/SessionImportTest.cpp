// Imports come as one step, from the files that can be imported, and leave nothing of the others.
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>

#include "host/session/Session.h"
#include "platform/Utf.h"
#include "tests/host/Failing.h"
#include "tests/host/WholeSet.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/FailingOs.h"
#include "tests/support/TempFolder.h"

namespace {

using host::Session;
using Paths = std::vector<CString>;

CString example(const char* name) {
  return CString(DIPOLE_TEST_DATA "/../examples/") + CString(name);
}

struct Viewer {
  Viewer() : set(std::make_unique<CDipoleFace9File>()), session(*set) {}

  Set set;
  Session session;
  ScriptedOperator user;
};

}  // namespace

TEST(SessionImport, BringsTheDipolesOfEveryFileAsOneStep) {
  Viewer viewer;
  const WholeSet before = wholeSet(*viewer.set);
  const auto result = viewer.session.importFiles({example("auditory.dip"), example("median.txt")}, nullptr);
  EXPECT_EQ(result.files, 2);
  EXPECT_EQ(result.dipoles, viewer.set->m_totalDipoles);
  EXPECT_GT(result.dipoles, 2);
  EXPECT_FALSE(result.cancelled);
  EXPECT_TRUE(result.failed.empty());
  EXPECT_EQ(viewer.session.history().undoSteps(), 1U);
  EXPECT_EQ(toUtf8(viewer.session.history().undoText()), "Undo Import");
  EXPECT_TRUE(viewer.session.isUnsaved());
  viewer.session.undo();
  EXPECT_TRUE(isSame(wholeSet(*viewer.set), before));
  EXPECT_FALSE(viewer.session.isUnsaved());
}

TEST(SessionImport, IsTheModulesOwn) {
  Viewer viewer;
  viewer.session.importFiles({example("auditory.dip")}, nullptr);
  const auto direct = std::make_unique<CDipoleFace9File>();
  const KeptCurrentFolder folder;
  CString path = example("auditory.dip");
  ASSERT_EQ(direct->importDipoleX(path, false), 1);
  EXPECT_TRUE(isSame(wholeSet(*viewer.set), wholeSet(*direct)));
}

TEST(SessionImport, CurrentFolderStays) {
  Viewer viewer;
  const TempFolder folder;
  const KeptCurrentFolder kept;
  ASSERT_NE(SetCurrentDirectory(folder.path()), FALSE);
  const CString before = currentFolder();
  viewer.session.importFiles({example("auditory.dip")}, nullptr);
  EXPECT_EQ(currentFolder(), before);
}

TEST(SessionImport, ProgressIsAskedBeforeEachFileAndMayStop) {
  Viewer viewer;
  Texts asked;
  const auto result =
      viewer.session.importFiles({example("auditory.dip"), example("median.txt"), example("spikes.dip")},
                                 [&](int done, int total, const CString& path) {
                                   asked.push_back(std::to_string(done) + "/" + std::to_string(total) + " " +
                                                   toUtf8(path.Mid(path.ReverseFind(_T('/')) + 1)));
                                   return done < 2;
                                 });
  EXPECT_EQ(asked, (Texts{"0/3 auditory.dip", "1/3 median.txt", "2/3 spikes.dip"}));
  EXPECT_TRUE(result.cancelled);
  EXPECT_EQ(result.files, 2);
  EXPECT_EQ(result.dipoles, viewer.set->m_totalDipoles);
  EXPECT_EQ(viewer.session.history().undoSteps(), 1U);
}

TEST(SessionImport, StoppedAtOnceChangesNothing) {
  Viewer viewer;
  const WholeSet before = wholeSet(*viewer.set);
  const auto result =
      viewer.session.importFiles({example("auditory.dip")}, [](int, int, const CString&) { return false; });
  EXPECT_TRUE(result.cancelled);
  EXPECT_EQ(result.files, 0);
  EXPECT_TRUE(isSame(wholeSet(*viewer.set), before));
  EXPECT_EQ(viewer.session.history().undoSteps(), 0U);
}

TEST(SessionImport, FilesThatBringNothingAreNamedAndLeaveNothing) {
  Viewer viewer;
  const TempFolder folder;
  const Paths bad = {folder.path("gone.dip"),
                     folder.write("other.csv", "1,2,3"),
                     folder.makeFolder("folder.dip"),
                     folder.write("header.dip", "File_Info\n{\nPATIENT:\tSomebody\n}\n"),
                     folder.write("header.txt", "Disk Media:\nMRI/CT Patient: Somebody\n"),
                     folder.write("empty.txt", "")};
  const WholeSet before = wholeSet(*viewer.set);
  auto result = viewer.session.importFiles(bad, nullptr);
  EXPECT_EQ(result.failed, bad);
  EXPECT_EQ(result.files, 0);
  EXPECT_EQ(result.dipoles, 0);
  EXPECT_TRUE(isSame(wholeSet(*viewer.set), before));
  EXPECT_EQ(viewer.session.history().undoSteps(), 0U);
  result = viewer.session.importFiles({bad[0], example("auditory.dip"), bad[3]}, nullptr);
  EXPECT_EQ(result.failed, (Paths{bad[0], bad[3]}));
  EXPECT_EQ(result.files, 1);
  EXPECT_NE(toUtf8(viewer.set->m_patient).find("Somebody"), 0U);
}

TEST(SessionImport, FileThatBreaksOffLeavesNothing) {
  Viewer viewer;
  viewer.session.importFiles({example("median.txt")}, nullptr);
  const WholeSet before = wholeSet(*viewer.set);
  const TempFolder folder;
  std::string rows = "Dipoles\n{\n// xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Label\n";
  for (int row = 1; row < 400; ++row) {
    rows += "\t" + std::to_string(row) + ":\t1.0\t2.0\t3.0\t1.0\t0.0\t0.0\t12.0\tlabel\n";
  }
  const CString path = folder.write("long.dip", rows + "}\n");
  Session::ImportResult result;
  {
    FailingOs os;
    os.failAt(FailingOs::Call::read, 3, CFileException::hardIO, Lasting::fromThenOn);
    result = viewer.session.importFiles({path}, nullptr);
    EXPECT_TRUE(os.failed);
  }
  EXPECT_EQ(result.failed, Paths{path});
  EXPECT_TRUE(isSame(wholeSet(*viewer.set), before));
  EXPECT_EQ(viewer.session.history().undoSteps(), 1U);
  EXPECT_EQ(viewer.session.importFiles({path}, nullptr).dipoles, 399);
}

TEST(SessionImport, WhatProgressThrowsEndsItWithNothing) {
  Viewer viewer;
  const WholeSet before = wholeSet(*viewer.set);
  EXPECT_EQ(failureOf([&] {
              viewer.session.importFiles({example("auditory.dip"), example("median.txt")},
                                         [](int done, int, const CString&) {
                                           if (done == 1)
                                             throw std::runtime_error("window gone");
                                           return true;
                                         });
            }),
            "window gone");
  EXPECT_TRUE(isSame(wholeSet(*viewer.set), before));
  EXPECT_EQ(viewer.session.history().undoSteps(), 0U);
}

TEST(SessionImport, WhatWasNotNotedBeforeIsAStepOfItsOwn) {
  Viewer viewer;
  viewer.set->addDipole();
  viewer.session.importFiles({example("auditory.dip")}, nullptr);
  EXPECT_EQ(viewer.session.history().undoSteps(), 2U);
  viewer.session.undo();
  EXPECT_EQ(viewer.set->m_totalDipoles, 1);
}
