// One file is read by the format that its reader is told, whole or not at all, and several become one set.
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "host/exchange/ImportFile.h"
#include "host/exchange/JoinedSet.h"
#include "host/exchange/SetFile.h"
#include "host/text/PathText.h"
#include "tests/host/exchange/NotedOperator.h"
#include "tests/host/text/Failing.h"
#include "tests/host/undo/WholeSet.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPlaces.h"

namespace {

using host::DipoleFormat;
using host::ImportedFile;
using host::JoinedSet;

CString example(const char* name) {
  return CString(examplesFolder().c_str()) + CString(name);
}

std::string rowsOf(int count, const std::string& more = "") {
  std::string rows = "Dipoles\n{\n// xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Label\n";
  for (int row = 1; row <= count; ++row) {
    rows += std::to_string(row) + ": 1.0 2.0 3.0 1.0 0.0 0.0 " + std::to_string(row) + " label\n";
  }
  return rows + more + "}\n";
}

std::string sphere(const std::string& radius) {
  return "MEG_Sphere\n{\nORIGIN_X: 0\nORIGIN_Y: 0\nORIGIN_Z: 5\nRADIUS: " + radius + "\n}\n";
}

std::vector<int> numbersOf(const CDipoleFace& set) {
  std::vector<int> numbers;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    numbers.push_back(set.m_dipoles[slot] == nullptr ? 0 : set.m_dipoles[slot]->m_number);
  }
  return numbers;
}

struct ImportFile : testing::Test {
  ImportedFile imported(const std::string& name, const std::string& text, DipoleFormat format) {
    return host::importFile(folder.write(name, text), format);
  }
  CString setFile(const char* name, const std::string& text) {
    const ImportedFile file = imported("source.dip", text, DipoleFormat::ctf);
    const CString path = folder.path(name);
    host::writeSet(*file.set, path);
    return path;
  }

  TempFolder folder;
  NotedOperator user;
};

}  // namespace

TEST_F(ImportFile, FormatDoesNotDependOnTheName) {
  EXPECT_EQ(imported("rows.data", rowsOf(3), DipoleFormat::ctf).dipoles(), 3);
  EXPECT_EQ(imported("rows.txt", rowsOf(2), DipoleFormat::ctf).dipoles(), 2);
  const CString set = setFile("set.dip", rowsOf(4));
  EXPECT_EQ(host::importFile(set, DipoleFormat::set).dipoles(), 4);
  const ImportedFile table = host::importFile(example("median.txt"), DipoleFormat::msi);
  const CString renamed = folder.path("median.DIP");
  std::filesystem::copy_file(host::pathOf(example("median.txt")), host::pathOf(renamed));
  EXPECT_GT(table.dipoles(), 0);
  EXPECT_EQ(host::importFile(renamed, DipoleFormat::msi).dipoles(), table.dipoles());
}

TEST_F(ImportFile, TablesAreTheModulesOwnImportToo) {
  const KeptCurrentFolder kept;
  for (const char* name : {"median.txt", "spikes.dip"}) {
    const ImportedFile file = host::importFile(example(name), *host::dipoleFormatOf(example(name)));
    const auto direct = std::make_unique<CDipoleFace9File>();
    CString path = example(name);
    ASSERT_EQ(direct->importDipoleX(path, false), 1);
    EXPECT_TRUE(isSame(wholeSet(*file.set), wholeSet(*direct))) << name;
  }
}

TEST_F(ImportFile, MessagesAndAnswersAreKept) {
  user.answer(IDNO);
  user.answer(IDNO);
  const ImportedFile file =
      imported("moving.dip", "Fit_Results\n{\n}\n" + rowsOf(1, "2: 99 0 0 0 0 1 5 far\n"), DipoleFormat::ctf);
  ASSERT_EQ(file.messages.size(), 4U);
  EXPECT_TRUE(file.messages[0].isQuestion);
  EXPECT_FALSE(file.messages[0].isYes);
  EXPECT_EQ(file.messages[3].text, "Total imported dipoles:1 (0-1)");
  EXPECT_FALSE(file.messages[3].isQuestion);
}

TEST_F(ImportFile, FileThatCannotBeOpenedIsToldOnceAndTheModuleSaysNothing) {
  for (const DipoleFormat format : {DipoleFormat::ctf, DipoleFormat::msi, DipoleFormat::set}) {
    const ImportedFile gone = host::importFile(folder.path("gone"), format);
    EXPECT_EQ(gone.failure, std::error_code(2, std::system_category()).message());
    EXPECT_EQ(host::importFile(folder.path(), format).failure, "it is a folder, not a file");
    EXPECT_EQ(gone.dipoles(), 0);
  }
  EXPECT_TRUE(user.messages.empty());
}

TEST_F(ImportFile, SetThatIsNotTheWholeFileIsRefused) {
  const CString path = setFile("a.dipset", rowsOf(2));
  const std::string bytes = folder.read("a.dipset");
  const auto failureOfBytes = [&](const std::string& changed) {
    return imported("b.dipset", changed, DipoleFormat::set).failure;
  };
  EXPECT_EQ(failureOfBytes(bytes), "");
  EXPECT_EQ(failureOfBytes(bytes + '\0'), "it goes on behind the end of the dipole set");
  EXPECT_EQ(failureOfBytes(bytes.substr(0, bytes.size() - 1)),
            "it could not be read to its end: it breaks off, or is damaged");
  EXPECT_EQ(failureOfBytes("\x05hello" + std::string(90, ' ')), "it is no dipole set");
  EXPECT_EQ(imported("b.dipset", bytes + "x", DipoleFormat::set).dipoles(), 0);
}

TEST_F(ImportFile, JoinedFilesFollowEachOtherAndAreKnownBySlots) {
  JoinedSet joined;
  joined.add(imported("none.dip", "File_Info\n{\nPATIENT: None\n}\n", DipoleFormat::ctf));
  joined.add(imported("a.dip", "File_Info\n{\nPATIENT: A\n}\n" + rowsOf(2), DipoleFormat::ctf));
  joined.add(host::importFile(setFile("b.dipset", rowsOf(2)), DipoleFormat::set));
  joined.add(imported("c.dip", "File_Info\n{\nPATIENT: C\n}\n" + rowsOf(3), DipoleFormat::ctf));
  EXPECT_EQ(numbersOf(joined.set()), (std::vector<int>{1, 2, 1, 2, 5, 6, 7}));
  ASSERT_EQ(joined.parts().size(), 3U);
  EXPECT_EQ(joined.parts()[2].firstSlot, 4);
  EXPECT_EQ(joined.parts()[2].endSlot, 7);
  EXPECT_EQ(joined.patients(), (std::vector<std::string>{"A", "C"}));
  EXPECT_EQ(host::utf8Of(joined.set().m_patient).find("None"), std::string::npos);
}

TEST_F(ImportFile, WhatFindsNoRoomIsLeftOutAndToldWithTheFilesName) {
  JoinedSet joined(DipoleTable::capacity - 5);
  joined.add(imported("a.dip", rowsOf(4), DipoleFormat::ctf));
  joined.add(imported("b.dip", rowsOf(3), DipoleFormat::ctf));
  EXPECT_EQ(joined.set().m_totalDipoles, 5);
  EXPECT_EQ(joined.leftOut(), 2);
  ASSERT_EQ(joined.warnings().size(), 1U);
  EXPECT_TRUE(
      joined.warnings()[0].ends_with("b.dip: a set holds 30000 dipoles, 2 of this file were left out"))
      << joined.warnings()[0];
  JoinedSet narrow(DipoleTable::capacity - 1);
  narrow.add(imported("a.dip", rowsOf(4), DipoleFormat::ctf));
  EXPECT_EQ(narrow.set().m_totalDipoles, 1);
  EXPECT_EQ(narrow.set().m_currentDipole, 0);
  EXPECT_EQ(narrow.leftOut(), 3);
}

TEST_F(ImportFile, SpheresThatDifferAreTold) {
  JoinedSet joined;
  joined.add(imported("a.dip", sphere("8.0") + rowsOf(1), DipoleFormat::ctf));
  joined.add(imported("b.dip", sphere("8.2") + rowsOf(1), DipoleFormat::ctf));
  EXPECT_TRUE(joined.warnings().empty());
  joined.add(imported("c.dip", sphere("8.5") + rowsOf(1), DipoleFormat::ctf));
  ASSERT_EQ(joined.warnings().size(), 1U);
  EXPECT_NE(joined.warnings()[0].find("c.dip: its head sphere differs"), std::string::npos);
}

TEST_F(ImportFile, SetWithDipolesKeepsWhatItSaysAboutItself) {
  JoinedSet joined;
  joined.add(imported("a.dip", "File_Info\n{\nPATIENT: A\n}\n" + rowsOf(2), DipoleFormat::ctf));
  CDipoleFace9File& set = joined.set();
  JoinedSet more(set.m_totalDipoles);
  more.add(imported("b.dip", "File_Info\n{\nPATIENT: B\n}\n" + rowsOf(2), DipoleFormat::ctf));
  host::appendTo(set, more.set());
  EXPECT_EQ(numbersOf(set), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(set.m_currentDipole, 3);
  EXPECT_NE(host::utf8Of(set.m_patient).find('A'), std::string::npos);
}
