// A set goes out in Neuromag's forms to the last digit that they have, and what they cannot hold is told.
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "host/exchange/ForeignFile.h"
#include "host/exchange/NeuromagBinary.h"
#include "host/exchange/NeuromagSet.h"
#include "tests/host/exchange/HostileSet.h"
#include "tests/host/undo/WholeSet.h"

namespace {

using host::DipoleValue;
using host::ForeignFormat;
using host::NeuromagDipole;
using host::NeuromagDipoles;

const host::Fiducials crooked{{5, 100, 0}, {-75, -5, 0}, {75, 5, 0}};
const host::Fiducials straight{{0, 100, 0}, {-75, 0, 0}, {75, 0, 0}};  // digits stay as they are

// As a file has it: digits that the format prints, the components rounded one by one.
NeuromagDipoles printedDipoles(unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> some(-1.0, 1.0);
  NeuromagDipoles file;
  for (int i = 0; i < 300; ++i) {
    host::Vector3 direction{some(random), some(random), some(random)};
    const double amplitude = std::pow(10.0, 3 * some(random));
    direction = direction * (amplitude / length(direction));
    const double begin = 1000 * some(random);
    const host::Vector3 place = host::Vector3{some(random), some(random), some(random)} * 90;
    file.dipoles.push_back({begin, begin, place, amplitude, direction, 50 + 50 * some(random)});
  }
  return host::readNeuromagText(neuromagText(file));
}

Set setOfOne() {
  auto set = std::make_unique<CDipoleFace9File>();
  set->addDipole();
  CDipoleszq& dipole = *set->m_dipoles[0];
  dipole.m_location[0] = 1;
  dipole.m_location[1] = 2;
  dipole.m_location[2] = 3;
  dipole.setDipoleOrientation(0, 1, 0);
  dipole.m_moment = 5;
  dipole.m_latency = 7;
  dipole.m_fitError = 10;
  set->m_momentInNAm = 1;
  return set;
}

std::string lossesOf(const CDipoleFace& set, bool isBinary = false, const host::UnknownValues& unknown = {}) {
  return exportNeuromag(set, unknown, straight, isBinary).losses.sentence();
}

}  // namespace

TEST(NeuromagExport, GivesBackWhatWasReadToTheLastDigit) {
  for (unsigned seed = 0; seed < 20; ++seed) {
    for (const auto& points : {std::optional(crooked), std::optional<host::Fiducials>()}) {
      const NeuromagDipoles file = printedDipoles(seed);
      const host::NeuromagImport import = importNeuromag(file, "a", points);
      const host::NeuromagExport back =
          exportNeuromag(*import.set.dipoles, import.set.unknown, points, false);
      ASSERT_EQ(neuromagText(back.file), neuromagText(file));
      EXPECT_EQ(back.losses.sentence(), "");
    }
  }
}

TEST(NeuromagExport, GivesBackRecordsBitByBit) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> some(-0.09, 0.09);
  NeuromagDipoles file;
  for (int i = 0; i < 1000; ++i) {
    file.dipoles.push_back(
        {some(random) * 1000, 0.0, host::Vector3{some(random), some(random), some(random)} * 1e3, 0.0,
         host::Vector3{some(random), some(random), some(random)} * 1e3, 50 + 500 * some(random), i % 3});
  }
  const std::string bytes = neuromagBinary(file);
  const host::NeuromagImport import = importNeuromag(host::readNeuromagBinary(bytes), "a", crooked);
  EXPECT_EQ(neuromagBinary(exportNeuromag(*import.set.dipoles, import.set.unknown, crooked, true).file),
            bytes);
}

TEST(NeuromagExport, ALabelOfAllDipolesIsTheNameAndOthersAreToldAsLost) {
  const Set set = setOfOne();
  set->m_dipoles[0]->m_label = _T("spike A");
  EXPECT_EQ(exportNeuromag(*set, {}, crooked, false).file.name, "spike A");
  EXPECT_EQ(lossesOf(*set), "");
  EXPECT_EQ(lossesOf(*set, true), "This file cannot hold: label of 1 dipole.");
  set->addDipole();
  set->m_dipoles[1]->m_label = _T("other");
  set->m_dipoles[1]->setDipoleOrientation(0, 1, 0);
  EXPECT_EQ(exportNeuromag(*set, {}, crooked, false).file.name, "");
  EXPECT_NE(lossesOf(*set).find("label of 2 dipoles"), std::string::npos);
  for (const char* unfit : {"a\"b", "two\nlines", "Non", "left dipoles"}) {
    const Set odd = setOfOne();
    odd->m_dipoles[0]->m_label = CString(unfit);
    EXPECT_EQ(exportNeuromag(*odd, {}, crooked, false).file.name, "") << unfit;
  }
}

TEST(NeuromagExport, WhatItCannotHoldIsToldByNameAndCount) {
  const Set set = setOfOne();
  CDipoleszq& dipole = *set->m_dipoles[0];
  dipole.m_id = 3;
  dipole.setColorValue(RGB(255, 0, 0));
  dipole.m_display = 0;
  dipole.m_scale = 2.0;
  set->m_patient = _T("Anna");
  set->m_bCtfSphereSet = 1;
  EXPECT_EQ(
      lossesOf(*set),
      "This file cannot hold: identifier of 1 dipole, color of 1 dipole, color in 3D of 1 dipole, whether "
      "slices show it of 1 dipole, size in 3D of 1 dipole, patient, head sphere.");
}

TEST(NeuromagExport, DigitsThatAreRoundedAreTold) {
  const Set set = setOfOne();
  set->m_dipoles[0]->m_latency = 7.25;
  set->m_dipoles[0]->m_moment = 5.00049;
  set->m_dipoles[0]->m_fitError = 1.0 / 3.0;
  const std::string losses = host::exportNeuromag(*set, {}, std::nullopt, false).losses.sentence();
  EXPECT_EQ(
      losses,
      "This file cannot hold: digits of the latency beyond 0.1 ms of 1 dipole, digits of the moment beyond "
      "0.001 nAm of 1 dipole, digits of the goodness of fit beyond 0.01 % of 1 dipole.");
}

TEST(NeuromagExport, DigitsOfThePlaceThatAreRoundedAreTold) {
  for (int axis = 0; axis < 3; ++axis) {
    const Set set = setOfOne();
    set->m_dipoles[0]->m_location[axis] += 0.01;
    EXPECT_EQ(lossesOf(*set), "") << axis;
    set->m_dipoles[0]->m_location[axis] += 0.001;
    EXPECT_EQ(lossesOf(*set), "This file cannot hold: digits of the position beyond 0.01 mm of 1 dipole.")
        << axis;
    EXPECT_EQ(lossesOf(*set, true), "") << axis;
  }
}

TEST(NeuromagExport, RecordsLoseTheSignOfTheMomentAndThatIsTold) {
  const Set set = setOfOne();
  EXPECT_EQ(lossesOf(*set, true), "");
  set->m_dipoles[0]->m_moment = -5;
  EXPECT_EQ(lossesOf(*set, true), "This file cannot hold: sign of the moment of 1 dipole.");
  EXPECT_EQ(lossesOf(*set), "");
}

TEST(NeuromagExport, UnknownValuesComeBackUnknown) {
  const Set set = setOfOne();
  for (const DipoleValue value : {DipoleValue::latency, DipoleValue::fitError, DipoleValue::moment,
                                  DipoleValue::orientation, DipoleValue::label}) {
    host::UnknownValues unknown;
    unknown.mark(0, value);
    unknown.mark(0, DipoleValue::label);
    const host::NeuromagExport out = host::exportNeuromag(*set, unknown, crooked, false);
    const NeuromagDipoles file = host::readNeuromagText(neuromagText(out.file));
    EXPECT_EQ(importNeuromag(file, "a", crooked).set.unknown.of(0), unknown.of(0));
    const host::NeuromagExport records = host::exportNeuromag(*set, unknown, crooked, true);
    const NeuromagDipoles binary = host::readNeuromagBinary(neuromagBinary(records.file));
    const int back = importNeuromag(binary, "a", crooked).set.unknown.of(0);
    EXPECT_EQ(back & unknown.of(0), unknown.of(0));
    EXPECT_EQ(records.losses.sentence(),
              value == DipoleValue::moment
                  ? "This file cannot hold: orientation without a moment of 1 dipole."
                  : "");
  }
}

TEST(NeuromagExport, DirectionsGetLengthOneAndThatIsTold) {
  const Set set = setOfOne();
  set->m_dipoles[0]->setDipoleOrientation(0, 3, 0);
  const host::NeuromagExport out = host::exportNeuromag(*set, {}, straight, false);
  EXPECT_DOUBLE_EQ(length(out.file.dipoles[0].moment), 5.0);
  EXPECT_EQ(out.losses.sentence(), "This file cannot hold: length of the orientation of 1 dipole.");
  set->m_dipoles[0]->setDipoleOrientation(0, 0, 0);
  EXPECT_EQ(lossesOf(*set), "This file cannot hold: orientation that is no direction of 1 dipole.");
}

TEST(NeuromagExport, TellsThatEarsAndUnitWereAssumed) {
  const Set set = setOfOne();
  EXPECT_TRUE(foreignFile(ForeignFormat::neuromag, *set, {}, {straight, {}}).told.empty());
  set->m_momentInNAm = 0;
  const host::ForeignFile file = foreignFile(ForeignFormat::neuromag, *set, {}, {});
  ASSERT_EQ(file.told.size(), 2U);
  EXPECT_NE(file.told[0].find("ears were taken as symmetric"), std::string::npos);
  EXPECT_NE(file.told[1].find("unit of the moments is not known"), std::string::npos);
}

TEST(NeuromagExport, HostileSetsGoOutAndWhatComesInIsAFile) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    HostileValues hostile(seed);
    const int count = hostile.below(60);
    const Set set = hostile.set(count);
    const host::UnknownValues unknown = hostile.unknown(count);
    const std::string text = foreignFile(ForeignFormat::neuromag, *set, unknown, {crooked, {}}).bytes;
    if (set->m_totalDipoles > 0) {
      const NeuromagDipoles back = host::readNeuromagText(text);
      EXPECT_LE(static_cast<int>(back.dipoles.size()), set->m_totalDipoles);
    }
    EXPECT_EQ(foreignFile(ForeignFormat::bdip, *set, unknown, {crooked, {}}).bytes.size() % 196, 0U);
  }
}
