// Places of a head have names only when its way to MNI is known; the names are those of the place there.
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "host/exchange/PlaceNames.h"
#include "tests/host/text/Failing.h"

namespace {

using host::Affine;
using host::Atlas;
using host::KnownHead;
using host::Label;
using host::PlaceNames;

// Left of the middle 1, right of it 2, for 30 mm around a place.
std::shared_ptr<const Atlas> sides(const std::string& name = "aal") {
  const int width = 60;
  std::vector<Label> labels;
  for (int i = 0; i < width * width * width; ++i) {
    labels.push_back(i % width < width / 2 ? 1 : 2);
  }
  return std::make_shared<const Atlas>(
      name,
      host::LabelGrid({width, width, width}, std::move(labels),
                      Affine({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {-29.5, -29.5, -29.5})),
      host::LabelNames{{1, "Side_L"}, {2, "Side_R"}});
}

// The ears at the same height, so that the head's left is the scanner's.
const host::Fiducials points{{0, 90, 0}, {-80, 0, 0}, {80, 0, 0}};

KnownHead inMni(const std::string& space = "Colin27") {
  return {points, host::MniMap{Affine(), space}};
}

}  // namespace

TEST(PlaceNames, TheHeadsLeftIsTheAtlasLeft) {
  const PlaceNames names(sides(), inMni());
  EXPECT_EQ(names.textAt({20, 0, 0}), "Side_L");
  EXPECT_EQ(names.textAt({-20, 0, 0}), "Side_R");
}

TEST(PlaceNames, TheWayToMniIsGone) {
  const PlaceNames names(sides(),
                         {points, host::MniMap{Affine({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {50, 0, 0}), {}}});
  EXPECT_EQ(names.textAt({20, 0.5, 0.5}), "near Side_R, 0.5 mm");
  EXPECT_EQ(names.textAt({25, 0, 0}), "Side_R");
  EXPECT_EQ(names.textAt({60, 0, 0}), "Side_L");
}

TEST(PlaceNames, TellsTheNearestAndThatNoneIsNear) {
  const PlaceNames names(sides(), inMni());
  EXPECT_EQ(names.textAt({10.5, 35.5, 0.5}), "near Side_L, 6.0 mm");
  EXPECT_EQ(names.textAt({10.5, 49.6, 0.5}), "no label within 20 mm");
  EXPECT_EQ(names.textAt({std::nan(""), 0, 0}), "");
}

TEST(PlaceNames, NothingIsGuessedOfAHeadThatIsNotKnown) {
  const auto refusal = [](const KnownHead& head) { return failureOf([&] { PlaceNames(sides(), head); }); };
  EXPECT_EQ(
      refusal({}),
      "an atlas needs the fiducial points of the head (--mri, --fiducials) and the way from the scanner to "
      "MNI (--mni)");
  EXPECT_EQ(refusal({points, {}}), "an atlas needs the way from the scanner to MNI (--mni)");
  EXPECT_EQ(refusal({{}, host::MniMap{}}),
            "an atlas needs the fiducial points of the head (--mri, --fiducials)");
  EXPECT_EQ(refusal(inMni()), "");
}

TEST(PlaceNames, DoubtsNamesOfAnotherMniSpace) {
  EXPECT_EQ(PlaceNames(sides(), inMni()).doubt(), "");
  EXPECT_EQ(PlaceNames(sides(), inMni("MNI152")).doubt(),
            "places are in MNI152, the atlas aal is in Colin27: its labels may be some mm off");
  EXPECT_EQ(
      PlaceNames(sides(), inMni("")).doubt(),
      "places are in an MNI space that nobody named, the atlas aal is in Colin27: its labels may be some mm "
      "off");
  EXPECT_EQ(
      PlaceNames(sides("mine"), inMni()).doubt(),
      "places are in Colin27, the atlas mine is in an MNI space that nobody named: its labels may be some "
      "mm off");
  EXPECT_NE(PlaceNames(sides("mine"), inMni("")).doubt(), "");
}

TEST(PlaceNames, NamesTheDipolesOfASetBySlot) {
  CDipoleFace9File set;
  set.addDipole();
  set.addDipole();
  for (int slot = 0; slot < 2; ++slot) {
    CDipoleszq& dipole = *set.m_dipoles[slot];
    dipole.m_location[0] = slot == 0 ? 20.0 : -20.0;
    dipole.m_location[1] = 0.0;
    dipole.m_location[2] = 0.0;
  }
  const std::vector<std::optional<host::NamedPlace>> names = PlaceNames(sides(), inMni()).of(set);
  ASSERT_EQ(names.size(), 2U);
  ASSERT_TRUE(names[0] && names[1]);
  EXPECT_EQ(names[0]->name, "Side_L");
  EXPECT_EQ(names[1]->name, "Side_R");
}
