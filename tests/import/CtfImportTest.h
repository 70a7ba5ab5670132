// What the tests of the CTF import share: a collection whose protected operations can be called, a user who
// answers from a script, a folder for files, and texts of sections.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "import/DipoleFace8Import01_CTF.h"
#include "platform/Utf.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/TempFolder.h"

class CtfImporter : public CDipoleFace8Import01_CTF {
 public:
  using CDipoleFace8Import01_CTF::importCTFDipolesX;
  using CDipoleFace8Import01_CTF::parseCTFDipoles;

  int listUpdates = 0;
  std::size_t messagesAtUpdate = 0;
  const ScriptedOperator* user = nullptr;

 protected:
  int updateDipoleList() override {
    ++listUpdates;
    messagesAtUpdate = user != nullptr ? user->messages.size() : 0;
    return 1;
  }
};

using Texts = std::vector<std::string>;

// The body of a section between its name and its end.
inline std::string section(std::string_view name, std::string_view body) {
  return std::string(name) + "\n{\n" + std::string(body) + "}\n";
}

inline const std::string unitHeader = "// xp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\tMom(nAm)\tLabel\n";
inline const std::string movingHeader =
    "// \tTrial\tSample\tLatency (s)\txp (cm)\typ (cm)\tzp (cm)\tMom(nAm)\n";
inline const std::string oneSphere =
    section("MEG_Sphere", "ORIGIN_X:\t1\nORIGIN_Y:\t2\nORIGIN_Z:\t3\nRADIUS:\t8\n");

// Static dipoles "d1", "d2", ... at (1, 0.5, 0.25), (2, 0.5, 0.25), ... cm, after the 20th from 1 again.
inline std::string dipoles(int count) {
  std::string rows;
  for (int k = 1; k <= count; ++k) {
    const std::string number = std::to_string(k);
    const std::string x = std::to_string((k - 1) % 20 + 1);
    rows.append(number).append(": ").append(x).append(" 0.5 0.25 1 0 0 7 d").append(number).append("\n");
  }
  return section("Dipoles", unitHeader + rows);
}

// Moving dipoles "m1", ... at (-k, 0.5, 0.25) cm.
inline std::string movingDipoles(int count) {
  std::string rows;
  for (int k = 1; k <= count; ++k) {
    const std::string number = std::to_string(k);
    rows.append(number).append(": 1 ").append(number).append(" 0.125 -").append(number);
    rows.append(" 0.5 0.25 0 1 0 20 5 m").append(number).append("\n");
  }
  return section("Fit_Results", movingHeader + rows);
}

inline const std::string unitMissing = "Can't find dipole location unit is cm or mm!";
inline const std::string latencyUnitMissing = "Can't find latency unit is second or millisecond!";
inline const std::string noSpace = "No dipole space";
inline const std::string notEnoughMemory = "Not enough memory";
inline const std::string fileNotCorrect = "It seems the CTF dipole file is not correct!";
inline const std::string fewSphereValues = "MEG Sphere reading error: not enough points";
inline const std::string sphereDiffers = "The different between new and old sphere model > 3 mm";
inline const std::string noSphere = "Can't set CTF dipole fiducial points without MEG sphere";
inline const std::string movingQuestion = "This is moving dipoles, would you like to import?";
inline const std::string folderQuestion = "Would you like to select all files in the same fold?";

inline std::string totalMessage(int first, int end) {
  return "Total imported dipoles:" + std::to_string(end - first) + " (" + std::to_string(first) + "-" +
         std::to_string(end) + ")\n";
}

// A file that cannot be opened, and why (a cause of CFileException).
inline std::string openFailure(const CString& path, int cause) {
  return "Can't open file " + toUtf8(path) + ", error = " + std::to_string(cause) + "\n";
}

// Which cause CFile gives for a path that it cannot open: the framework leaves that of a folder open.
inline int causeToOpen(const CString& path) {
  CFile file;
  CFileException why;
  EXPECT_FALSE(file.Open(path, CFile::modeRead, &why));
  return why.m_cause;
}

// The files of a folder whose names have this ending of four characters, without it, in the order of a
// search, which the framework leaves open.
inline Texts titlesFound(const TempFolder& folder, LPCTSTR ending) {
  Texts titles;
  CFileFind search;
  BOOL more = search.FindFile(folder.path("*") + ending);
  while (more) {
    more = search.FindNextFile();
    const CString name = search.GetFileName();
    if (!search.IsDirectory() && name.Right(4).CompareNoCase(ending) == 0) {
      titles.push_back(toUtf8(search.GetFileTitle()));
    }
  }
  return titles;
}

class CtfImport : public testing::Test {
 protected:
  CtfImport() : set(std::make_unique<CtfImporter>()) { set->user = &user; }

  // Parses bytes as one file; returns what parseCTFDipoles returned.
  int parse(std::string_view bytes) { return set->parseCTFDipoles(folder.write("parsed.dip", bytes)); }

  // Imports bytes as one file chosen in the dialog.
  int import(std::string_view bytes) {
    user.answerFiles({folder.write("imported.dip", bytes)});
    return set->importCTFDipoles();
  }

  const CDipoleszq& dipole(int slot) const { return *set->m_dipoles[slot]; }

  // The labels of the set, in order.
  Texts labels() const {
    Texts all;
    for (int slot = 0; slot < set->m_totalDipoles; ++slot) {
      all.push_back(toUtf8(dipole(slot).m_label));
    }
    return all;
  }

  Texts shown() const { return user.texts(); }

  ScriptedOperator user;
  TempFolder folder;
  std::unique_ptr<CtfImporter> set;

 private:
  KeptCurrentFolder m_currentFolder;
};

inline void expectTriple(const double (&actual)[3], double x, double y, double z) {
  EXPECT_EQ(actual[0], x);
  EXPECT_EQ(actual[1], y);
  EXPECT_EQ(actual[2], z);
}
