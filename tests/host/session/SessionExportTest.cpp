// Every writer is offered, what it writes is read back, and what it cannot hold is told.
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "host/exchange/Json.h"
#include "host/session/Session.h"
#include "platform/Utf.h"
#include "tests/host/head/CtfFile.h"
#include "tests/host/session/SmallMri.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPlaces.h"

namespace {

using host::ExportFormat;
using host::Session;
using Texts = std::vector<std::string>;

class SessionExport : public testing::Test {
 protected:
  SessionExport() {
    m_session.importFiles({CString(examplesFolder().c_str()) + CString("auditory.dip")}, nullptr);
    m_folder.write("head.nii", mri());
    m_folder.write("head.fiducials", points);
  }
  void openHead() {
    m_session.openMri(m_folder.path("head.nii"), [](const std::string&) { return true; });
  }
  Texts write(const std::string& name, ExportFormat format) {
    return m_session.exportSet(m_folder.path(name.c_str()), format);
  }
  static bool isSaid(const Texts& told, const std::string& words) {
    return std::any_of(told.begin(), told.end(),
                       [&](const std::string& text) { return text.find(words) != std::string::npos; });
  }
  // The places of the two dipoles and of the same two that are imported from the file differ by no more.
  void expectBack(const std::string& name, double mm) {
    const Session::ImportResult result = m_session.importFiles({m_folder.path(name.c_str())}, nullptr,
                                                               [](const std::string&) { return true; });
    ASSERT_EQ(result.dipoles, 2) << name;
    for (int slot = 0; slot < 2; ++slot) {
      const CDipoleszq& was = *m_set->m_dipoles[slot];
      const CDipoleszq& back = *m_set->m_dipoles[slot + 2];
      for (int axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(back.m_location[axis], was.m_location[axis], mm) << name;
        EXPECT_NEAR(back.m_orientation[axis], was.m_orientation[axis], 1e-3) << name;
      }
      EXPECT_NEAR(back.m_latency, was.m_latency, 0.051) << name;
      EXPECT_NEAR(back.m_moment, was.m_moment, 1e-3) << name;
    }
    m_session.undo();
    ASSERT_EQ(m_set->m_totalDipoles, 2);
  }

  TempFolder m_folder;
  ScriptedOperator m_user;
  std::unique_ptr<CDipoleFace9File> m_set = std::make_unique<CDipoleFace9File>();
  Session m_session{*m_set};
};

TEST_F(SessionExport, EveryFormatThatIsReadComesBack) {
  openHead();
  ASSERT_TRUE(m_session.head().isRegistered());
  const struct {
    const char* name;
    ExportFormat format;
    double mm;
  } files[] = {{"a.dipset", ExportFormat::dipset, 1e-6}, {"a.csv", ExportFormat::csv, 0.0},
               {"a.tsv", ExportFormat::tsv, 0.0},        {"a.json", ExportFormat::json, 0.0},
               {"ctf.dip", ExportFormat::ctf, 0.0},      {"mne.dip", ExportFormat::neuromag, 0.006},
               {"a.bdip", ExportFormat::bdip, 1e-4}};
  for (const auto& file : files) {
    write(file.name, file.format);
    expectBack(file.name, file.mm);
  }
}

TEST_F(SessionExport, OtherProgramsGetScannerPlacesOfARegisteredHead) {
  openHead();
  const CDipoleszq& dipole = *m_set->m_dipoles[0];
  const host::Vector3 scanner =
      m_session.head().frame.toScanner({dipole.m_location[0], dipole.m_location[1], dipole.m_location[2]});
  EXPECT_FALSE(isSaid(write("a.mrk.json", ExportFormat::slicer), "scanner is not known"));
  const auto json = nlohmann::json::parse(m_folder.read("a.mrk.json"));
  const auto place = json["markups"][0]["controlPoints"][0]["position"];
  EXPECT_NEAR(place[0].get<double>(), -scanner.x, 1e-4);  // to the left, back, up
  EXPECT_NEAR(place[1].get<double>(), -scanner.y, 1e-4);
  EXPECT_NEAR(place[2].get<double>(), scanner.z, 1e-4);
  write("arrows.mrk.json", ExportFormat::slicerArrows);
  EXPECT_NE(m_folder.read("arrows.mrk.json").find("\"Line\""), std::string::npos);
  EXPECT_FALSE(isSaid(write("a.vtp", ExportFormat::vtp), "scanner is not known"));
}

TEST_F(SessionExport, ThePhantomIsNobodysHeadInTheScanner) {
  EXPECT_TRUE(isSaid(write("a.vtp", ExportFormat::vtp), "Where the head lies in the scanner is not known"));
  EXPECT_TRUE(isSaid(write("a.dip", ExportFormat::neuromag), "ears were taken as symmetric"));
}

TEST_F(SessionExport, PlacesOfAHeadWithoutScannerCoordinatesAreToldToBeNone) {
  m_session.openMri(m_folder.write("ctf.mri", CtfFile().bytes()), [](const std::string&) { return true; });
  ASSERT_TRUE(m_session.head().isRegistered());
  const std::string words = "The MRI has no scanner coordinates";
  EXPECT_TRUE(isSaid(write("a.vtp", ExportFormat::vtp), words));
  EXPECT_TRUE(isSaid(write("a.mrk.json", ExportFormat::slicer), words));
  EXPECT_FALSE(isSaid(write("a.bdip", ExportFormat::bdip), words));
  openHead();
  EXPECT_FALSE(isSaid(write("a.vtp", ExportFormat::vtp), words));
}

TEST_F(SessionExport, WhatAFileCannotHoldIsToldByNameAndCount) {
  m_set->m_dipoles[0]->setColorValue(RGB(1, 2, 3));
  m_session.noteChange();
  const Texts told = write("a.dip", ExportFormat::ctf);
  EXPECT_TRUE(isSaid(told, "This file cannot hold: ")) << told.size();
  EXPECT_TRUE(isSaid(told, "color of ")) << told.at(0);
  EXPECT_EQ(write("a.csv", ExportFormat::csv), Texts());
}

TEST_F(SessionExport, AFileThatIsThereIsReplacedWholeAndNothingIsLeftBesideIt) {
  for (const auto& kind : host::exportKinds()) {
    const std::string name = std::string("old") + kind.ending;
    m_folder.write(name, "old");
    write(name, kind.format);
    EXPECT_GT(m_folder.read(name).size(), 100U) << name;
  }
  const Texts names = m_folder.names();
  EXPECT_EQ(std::count_if(names.begin(), names.end(),
                          [](const std::string& name) { return name.ends_with(".tmp"); }),
            0);
  EXPECT_ANY_THROW(write("missing/a.vtp", ExportFormat::vtp));
}

TEST(SetExport, EndingsTellTheFormatsAndTheLongestCounts) {
  using Formats = std::vector<ExportFormat>;
  EXPECT_EQ(host::exportFormatsOf(_T("a.MRK.json")),
            (Formats{ExportFormat::slicer, ExportFormat::slicerArrows}));
  EXPECT_EQ(host::exportFormatsOf(_T("a.json")), Formats{ExportFormat::json});
  EXPECT_EQ(host::exportFormatsOf(_T("a.Dip")), (Formats{ExportFormat::ctf, ExportFormat::neuromag}));
  EXPECT_EQ(host::exportFormatsOf(_T("a.dipset")), Formats{ExportFormat::dipset});
  EXPECT_EQ(host::exportFormatsOf(_T("a.png")), Formats{});
  EXPECT_EQ(host::exportKinds().size(), 11U);
}

}  // namespace
