// Captions tell the places of dipoles by an atlas, one by one or counted, and nothing without an atlas.
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "host/head/HeadFile.h"
#include "host/panes/AtlasTexts.h"
#include "host/panes/DipolePicture.h"
#include "host/panes/ShownDipoles.h"

namespace {

// Left of the middle 1, right of it 2, for 30 mm around the origin of the head.
host::PlaceNames sides(const std::string& space = "Colin27") {
  constexpr int width = 60;
  std::vector<host::Label> labels;
  for (int i = 0; i < width * width * width; ++i) {
    labels.push_back(i % width < width / 2 ? 1 : 2);
  }
  const host::Affine map({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {-29.5, -29.5, -29.5});
  host::Atlas atlas("aal", host::LabelGrid({width, width, width}, std::move(labels), map),
                    {{1, "Side_L"}, {2, "Side_R"}});
  return {std::make_shared<const host::Atlas>(std::move(atlas)),
          {host::Fiducials{{0, 90, 0}, {-80, 0, 0}, {80, 0, 0}}, host::MniMap{host::Affine(), space}}};
}

class AtlasTexts : public testing::Test {
 protected:
  AtlasTexts() { contents.places = &names; }

  // mm to the left; the other two are 0.5.
  void add(double left) {
    const int slot = dipoles.m_totalDipoles;
    dipoles.addDipole();
    CDipoleszq& dipole = *dipoles.m_dipoles[slot];
    dipole.m_number = slot + 1;
    dipole.m_location[0] = left;
    dipole.m_location[1] = 0.5;
    dipole.m_location[2] = 0.5;
  }
  std::string note() const { return placesNote(contents, host::shownSlots(contents)); }

  CDipoleFace9File dipoles;
  host::Head head = host::phantomHead();
  host::ViewSettings settings;
  host::PlaceNames names = sides();
  host::PaneContents contents{dipoles, head, settings, {}, head.volume->window()};
};

}  // namespace

TEST_F(AtlasTexts, AFewDipolesAreToldOneByOne) {
  add(20.0);
  add(-35.5);
  add(60.0);
  EXPECT_EQ(
      note(),
      "Places of all dipoles shown, by aal: #1 Side_L; #2 near Side_R, 6.0 mm; #3 no label within 20 mm.");
}

TEST_F(AtlasTexts, ManyDipolesAreCounted) {
  for (int i = 0; i < 12; ++i) {
    add(20.0);
  }
  EXPECT_NE(note().find("#12 Side_L."), std::string::npos);
  add(35.5);
  add(-20.0);
  add(60.0);
  EXPECT_EQ(note(),
            "Places of all dipoles shown, by aal: 13 Side_L (1 only near it); 1 Side_R; 1 without a label.");
}

TEST_F(AtlasTexts, ARowIsHeadedByThePlaceOfItsDipole) {
  add(20.0);
  EXPECT_TRUE(host::rowThrough(contents, 0).heading.ends_with("   Side_L"));
  contents.places = nullptr;
  EXPECT_EQ(host::rowThrough(contents, 0).heading.find("Side_L"), std::string::npos);
}

TEST_F(AtlasTexts, WithoutAnAtlasNothingIsSaid) {
  EXPECT_EQ(note(), "");
  add(20.0);
  contents.places = nullptr;
  EXPECT_EQ(note(), "");
  EXPECT_EQ(host::placeTextOf(contents, *dipoles.m_dipoles[0]), "");
}

TEST_F(AtlasTexts, TheAtlasAndADoubtAboutItAreNamed) {
  EXPECT_EQ(
      host::atlasNote(names),
      "Places by the atlas AAL (Tzourio-Mazoyer et al., NeuroImage 2002), Colin27: a hint, not a finding.");
  EXPECT_TRUE(host::atlasNote(sides("MNI152")).ends_with("some mm off."));
}
