// Markups hold what each dipole has to say, a list for each color, and tell what they leave out.
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/exchange/SlicerMarkups.h"
#include "tests/file/SetFixture.h"

namespace {

using host::DipoleValue;
using host::SlicerKind;
using Document = nlohmann::json;

// Dipoles 1, 2, ... in a row to the left, each pointing up, of 10, 20, ... nAm at 100, 200, ... ms.
Set setOf(int count) {
  auto set = std::make_unique<CDipoleFace9File>();
  for (int i = 0; i < count; ++i) {
    set->addDipole();
    CDipoleszq& dipole = *set->m_dipoles[i];
    dipole.m_number = i + 1;
    dipole.m_location[0] = i;
    dipole.m_location[1] = 0.0;
    dipole.m_location[2] = 0.0;
    dipole.setDipoleOrientation(0, 1, 0);
    dipole.m_moment = 10.0 * (i + 1);
    dipole.m_latency = 100.0 * (i + 1);
    dipole.m_fitError = 5.0;
    dipole.m_label = _T("");
  }
  set->m_momentInNAm = 1;
  return set;
}

struct Written {
  Document markups;
  std::string losses;
};

Written written(const CDipoleFace9File& set, SlicerKind kind = SlicerKind::points,
                const host::UnknownValues& unknown = {}, const host::SetPlaces* places = nullptr) {
  const host::SlicerMarkups out = slicerMarkups(set, unknown, host::patientFrame({}), kind, places);
  return {Document::parse(out.json).at("markups"), out.losses.sentence()};
}

// The labels of its points are not given: their numbers.
std::vector<std::string> pointsOf(const Document& markup) {
  std::vector<std::string> ids;
  for (const Document& point : markup.at("controlPoints")) {
    ids.push_back(point.at("id"));
  }
  return ids;
}

std::vector<double> valuesOf(const Document& markup, const std::string& name) {
  for (const Document& measurement : markup.at("measurements")) {
    if (measurement.at("name") == name) {
      return measurement.at("controlPointValues");
    }
  }
  return {};
}

using Names = std::vector<std::string>;
using Values = std::vector<double>;

// Of a line, whose ends have the values in their descriptions alone.
std::string arrowsLack(int dipoles) {
  const std::string count = " of " + std::to_string(dipoles) + " dipoles";
  return ", moment" + count + ", latency" + count + ", fit error" + count + ".";
}

const std::string noOrientation =
    "This file cannot hold: the whole, for it has no orientation, of 1 dipole" + arrowsLack(2);

}  // namespace

TEST(SlicerMarkups, HaveAListOfTheDipolesOfEachColor) {
  const Set set = setOf(4);
  for (int i = 0; i < 4; ++i) {
    set->m_dipoles[i]->setColorValue(i % 2 == 0 ? RGB(255, 0, 51) : RGB(0, 255, 0));
  }
  const Written out = written(*set);
  ASSERT_EQ(out.markups.size(), 2U);
  EXPECT_EQ(pointsOf(out.markups[0]), (Names{"2", "4"}));
  EXPECT_EQ(pointsOf(out.markups[1]), (Names{"1", "3"}));
  EXPECT_EQ(out.markups[0].at("display").at("color"), (Values{0, 1, 0}));
  EXPECT_EQ(out.markups[1].at("display").at("color"), (Values{1, 0, 0.2}));
  EXPECT_EQ(valuesOf(out.markups[1], "moment"), (Values{10, 30}));
  EXPECT_EQ(out.losses, "");
}

TEST(SlicerMarkups, LeaveOutAPlaceThatIsNoNumberAndCountIt) {
  for (const SlicerKind kind : {SlicerKind::points, SlicerKind::arrows}) {
    const Set set = setOf(3);
    set->m_dipoles[1]->m_location[2] = std::nan("");
    const Written out = written(*set, kind);
    const std::string start = "This file cannot hold: the whole, for its place is no number, of 1 dipole";
    EXPECT_EQ(out.losses, kind == SlicerKind::points ? start + "." : start + arrowsLack(3));
    if (kind == SlicerKind::points) {
      EXPECT_EQ(pointsOf(out.markups.at(0)), (Names{"1", "3"}));
    } else {
      EXPECT_EQ(out.markups.size(), 2U);
    }
  }
}

TEST(SlicerMarkups, LeaveOutAValueThatOneDipoleOfAColorLacksAndCountThoseThatHaveIt) {
  const Set set = setOf(4);
  set->m_dipoles[3]->setColorValue(RGB(0, 0, 255));
  set->m_dipoles[1]->m_latency = std::nan("");
  host::UnknownValues unknown;
  unknown.mark(0, DipoleValue::moment);
  const Written out = written(*set, SlicerKind::points, unknown);
  EXPECT_EQ(
      out.losses,
      "This file cannot hold: moment, as not all of its color have one, of 2 dipoles, latency, as not all of "
      "its color have one, of 2 dipoles.");
  const std::size_t alone = out.markups.at(0).at("controlPoints").size() == 1 ? 0 : 1;
  const Document& others = out.markups.at(1 - alone);
  EXPECT_EQ(valuesOf(others, "moment"), Values());
  EXPECT_EQ(valuesOf(others, "latency"), Values());
  EXPECT_EQ(valuesOf(others, "fit error"), (Values{5, 5, 5}));
  EXPECT_EQ(valuesOf(out.markups.at(alone), "moment"), Values{40});
  EXPECT_EQ(valuesOf(out.markups.at(alone), "latency"), Values{400});
}

TEST(SlicerMarkups, ArrowsLeaveOutADipoleWithoutADirectionAndPointsDoNot) {
  const auto lengths = [](double length, bool isKnown) {
    const Set set = setOf(2);
    set->m_dipoles[0]->setDipoleOrientation(0, length, 0);
    host::UnknownValues unknown;
    if (!isKnown) {
      unknown.mark(0, DipoleValue::orientation);
    }
    const Written points = written(*set, SlicerKind::points, unknown);
    EXPECT_EQ(pointsOf(points.markups.at(0)), (Names{"1", "2"}));
    EXPECT_FALSE(points.markups.at(0).at("controlPoints").at(0).contains("orientation"));
    const Written arrows = written(*set, SlicerKind::arrows, unknown);
    EXPECT_EQ(arrows.markups.size(), 1U);
    return arrows.losses;
  };
  EXPECT_EQ(lengths(0.0, true), noOrientation);
  EXPECT_EQ(lengths(1.0, false), noOrientation);
  EXPECT_EQ(lengths(std::nan(""), true), noOrientation);
}

TEST(SlicerMarkups, ArrowsRun10MmAlongTheirOrientation) {
  const Set set = setOf(1);
  set->m_dipoles[0]->setDipoleOrientation(0, 3, 0);
  const Document ends = written(*set, SlicerKind::arrows).markups.at(0).at("controlPoints");
  EXPECT_EQ(ends.at(0).at("position"), (Values{0, 0, 0}));
  EXPECT_EQ(ends.at(1).at("position"), (Values{0, 0, 10}));  // to the left, back, up
}

TEST(SlicerMarkups, DescriptionsHaveWhatIsKnownAndThePlaceWithItsAtlasAndSpace) {
  const Set set = setOf(1);
  host::Atlas atlas("aal", host::LabelGrid({1, 1, 1}, {1}, host::Affine()), {{1, "One"}});
  const host::PlaceNames names(
      std::make_shared<const host::Atlas>(std::move(atlas)),
      {host::Fiducials{{0, 90, 0}, {-80, 0, 0}, {80, 0, 0}}, host::MniMap{host::Affine(), {}}});
  host::UnknownValues unknown;
  const host::SetPlaces inside(*set, names);
  const auto description = [&](const host::SetPlaces* places) {
    const Document point =
        written(*set, SlicerKind::points, unknown, places).markups.at(0).at("controlPoints");
    return point.at(0).at("description").get<std::string>();
  };
  EXPECT_EQ(description(nullptr), "100.0 ms; 10.0 nAm; fit error 5.0 %");
  EXPECT_EQ(description(&inside), "100.0 ms; 10.0 nAm; fit error 5.0 %; One (aal, Colin27)");
  unknown.mark(0, DipoleValue::latency);
  unknown.mark(0, DipoleValue::moment);
  unknown.mark(0, DipoleValue::fitError);
  EXPECT_EQ(description(nullptr), "");
  set->m_dipoles[0]->m_location[1] = 4.0;
  const host::SetPlaces beside(*set, names);
  EXPECT_EQ(description(&beside), "near One, 4.0 mm (aal, Colin27)");
  set->m_dipoles[0]->m_location[1] = 50.0;
  const host::SetPlaces nowhere(*set, names);
  EXPECT_EQ(description(&nowhere), "");
}
