// Imports come as one step, from the files that can be imported, and leave nothing of the others.
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <system_error>

#include "host/session/Session.h"
#include "platform/Utf.h"
#include "tests/host/exchange/NotedOperator.h"
#include "tests/host/text/Failing.h"
#include "tests/host/undo/WholeSet.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/FailingOs.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPlaces.h"

namespace {

using host::Session;
using Paths = std::vector<CString>;

CString example(const char* name) {
  return CString(examplesFolder().c_str()) + CString(name);
}

// A CTF file of one dipole, the patient and the heading of the moments as given.
std::string ctfFile(const std::string& patient, const std::string& moment = "Mom(nAm)") {
  const std::string info = patient.empty() ? "" : "File_Info\n{\nPATIENT:\t" + patient + "\n}\n";
  return info + "Dipoles\n{\n// xp (cm) yp (cm) zp (cm) xo yo zo " + moment +
         " Label\n\t1:\t1.0\t2.0\t3.0\t1.0\t0.0\t0.0\t12.0\tlabel\n}\n";
}

// "name: cause" of each.
Texts told(const std::vector<Session::Failed>& failed) {
  Texts texts;
  for (const Session::Failed& file : failed) {
    const int slash = (std::max)(file.path.ReverseFind(_T('/')), file.path.ReverseFind(_T('\\')));
    texts.push_back(toUtf8(file.path.Mid(slash + 1)) + ": " + file.cause);
  }
  return texts;
}

// What the system says of a code of its own.
std::string reason(int code) {
  return std::error_code(code, std::system_category()).message();
}

constexpr int noSuchFile = 2;  // on both systems

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
                     folder.write("other.xls", "1,2,3"),
                     folder.makeFolder("folder.dip"),
                     folder.write("header.dip", "File_Info\n{\nPATIENT:\tSomebody\n}\n"),
                     folder.write("header.txt", "Disk Media:\nMRI/CT Patient: Somebody\n"),
                     folder.write("empty.txt", "")};
  const Texts causes = {
      "gone.dip: " + reason(noSuchFile),
      "other.xls: its name ends neither in .dip, .bdip, .txt, .csv, .tsv, .json nor .dipset",
      "folder.dip: it is a folder, not a file",
      "header.dip: it holds no dipoles",
      "header.txt: it holds no dipoles",
      "empty.txt: it holds no dipoles"};
  const WholeSet before = wholeSet(*viewer.set);
  auto result = viewer.session.importFiles(bad, nullptr);
  EXPECT_EQ(told(result.failed), causes);
  EXPECT_EQ(result.failed.at(0).path, bad[0]);
  EXPECT_EQ(result.files, 0);
  EXPECT_EQ(result.dipoles, 0);
  EXPECT_TRUE(isSame(wholeSet(*viewer.set), before));
  EXPECT_EQ(viewer.session.history().undoSteps(), 0U);
  result = viewer.session.importFiles({bad[0], example("auditory.dip"), bad[3]}, nullptr);
  EXPECT_EQ(told(result.failed), (Texts{causes[0], causes[3]}));
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
  EXPECT_EQ(told(result.failed), Texts{"long.dip: it could not be read to its end: " + reason(12345)});
  EXPECT_TRUE(isSame(wholeSet(*viewer.set), before));
  EXPECT_EQ(viewer.session.history().undoSteps(), 1U);
  EXPECT_EQ(viewer.session.importFiles({path}, nullptr).dipoles, 399);
}

TEST(SessionImport, FileThatCannotBeOpenedIsNamedWithTheSystemsCause) {
  Viewer viewer;
  const TempFolder folder;
  const CString path = folder.write("a.dip", ctfFile("A"));
  FailingOs os;
  os.failAt(FailingOs::Call::open, 1, CFileException::accessDenied, Lasting::fromThenOn);
  const auto result = viewer.session.importFiles({path}, nullptr);
  os.stop();
  ASSERT_EQ(result.failed.size(), 1U);
  EXPECT_EQ(result.failed[0].cause, reason(12345));
  EXPECT_EQ(viewer.set->m_totalDipoles, 0);
}

TEST(SessionImport, NamesAreThoseOfTheFolderItWasCalledIn) {
  Viewer viewer;
  const TempFolder folder;
  folder.makeFolder("a");
  folder.write("a/one.dip", ctfFile("A"));
  folder.write("two.dip", ctfFile("A"));
  const KeptCurrentFolder kept;
  ASSERT_NE(SetCurrentDirectory(folder.path()), FALSE);
  const auto result = viewer.session.importFiles({_T("a/one.dip"), _T("two.dip"), _T("a/gone.dip")}, nullptr);
  EXPECT_EQ(result.files, 2);
  EXPECT_EQ(told(result.failed), Texts{"gone.dip: " + reason(noSuchFile)});
}

TEST(SessionImport, MomentsAreInNAmOnlyWhenEveryFileWithDipolesSaysSo) {
  const TempFolder folder;
  const CString inNAm = folder.write("known.dip", ctfFile("A"));
  const CString other = folder.write("other.dip", ctfFile("A", "Mom(Am)"));
  const CString empty = folder.write("empty.dip", "Dipoles\n{\n}\n");
  const auto unitOf = [](const std::vector<Paths>& imports, int unitBefore = 0) {
    Viewer viewer;
    viewer.set->m_momentInNAm = unitBefore;
    for (const Paths& paths : imports) {
      viewer.session.importFiles(paths, nullptr);
    }
    return viewer.set->m_momentInNAm;
  };
  EXPECT_EQ(unitOf({{inNAm}}), 1);
  EXPECT_EQ(unitOf({{inNAm, example("median.txt"), empty}}), 1);
  EXPECT_EQ(unitOf({{inNAm, other}}), 0);
  EXPECT_EQ(unitOf({{other, inNAm}}), 0);
  EXPECT_EQ(unitOf({{inNAm}, {other}}), 0);
  EXPECT_EQ(unitOf({{other}, {inNAm}}), 0);
  EXPECT_EQ(unitOf({{inNAm}, {inNAm}}), 1);
  EXPECT_EQ(unitOf({{inNAm}, {empty}}), 1);  // nothing came: nothing changes
  EXPECT_EQ(unitOf({{inNAm}, {other, empty}}), 0);
  EXPECT_EQ(unitOf({{other}}, 1), 0);  // an empty set's unit is that of no dipole
}

TEST(SessionImport, TellsWhoseDipolesItMixes) {
  const TempFolder folder;
  const CString a = folder.write("a.dip", ctfFile("A"));
  const CString again = folder.write("again.dip", ctfFile("A"));
  const CString b = folder.write("b.dip", ctfFile("B"));
  const CString nobody = folder.write("nobody.dip", ctfFile(""));
  const CString withoutDipoles = folder.write("none.dip", "File_Info\n{\nPATIENT:\tC\n}\n");
  const auto imported = [](Viewer& viewer, const Paths& paths) {
    return viewer.session.importFiles(paths, nullptr);
  };
  Viewer alone;
  auto result = imported(alone, {a, again, nobody, withoutDipoles});
  EXPECT_EQ(result.patients, Texts{"A"});
  EXPECT_FALSE(result.mixesPatients);
  result = imported(alone, {b});
  EXPECT_EQ(result.patients, (Texts{"A", "B"}));
  EXPECT_TRUE(result.mixesPatients);
  Viewer atOnce;
  result = imported(atOnce, {b, a, b});
  EXPECT_EQ(result.patients, (Texts{"B", "A"}));
  EXPECT_TRUE(result.mixesPatients);
  Viewer unnamed;
  EXPECT_EQ(imported(unnamed, {nobody}).patients, Texts{});
  result = imported(unnamed, {a});
  EXPECT_EQ(result.patients, Texts{"A"});
  EXPECT_FALSE(result.mixesPatients);
}

TEST(SessionImport, WhatTheModuleSaysOfAFileComesWithItsName) {
  Viewer viewer;
  const NotedOperator hands;
  const TempFolder folder;
  const Paths paths = {folder.write("a.dip", "Dipoles\n{\n1: 1 2 3 0 0 1 20 a\n}\n"), example("spikes.dip")};
  const auto result = viewer.session.importFiles(paths, nullptr);
  ASSERT_FALSE(result.told.empty());
  for (const std::string& text : result.told) {
    EXPECT_TRUE(text.starts_with("a.dip: ")) << text;
  }
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
