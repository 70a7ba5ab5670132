// Making, copying and assigning dipoles: what each layer takes over and what it leaves.
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <type_traits>

#include "platform/Utf.h"
#include "record/Dipoleszq.h"
#include "tests/headmodel/ArchiveRecord.h"
#include "tests/record/DipoleMembers.h"
#include "tests/support/FreeLog.h"

namespace {

CDipoleszq filledDipole() {
  CDipoleszq dipole;
  fillMembers(dipole);
  return dipole;
}

const std::string zeroSphereText = "0 0 0 r 0 0 0 ";

// The initial values, as documented.
MemberValues initialValues() {
  return {{"m_number", "0"},
          {"m_listItemId", "-1"},
          {"m_show", "1"},
          {"m_showOrientation", "1"},
          {"m_color", "65535"},
          {"m_colorF", "1 1 0"},
          {"m_id", "0"},
          {"m_fitTag", "0"},
          {"m_extraFlag", "1"},
          {"m_latency", "0"},
          {"m_extraValue", "1"},
          {"m_fitError", "0.20000000000000001"},
          {"m_label", "Non"},
          {"m_display", "1"},
          {"m_selected", "false"},
          {"m_location", "100 100 100"},
          {"m_size", "3"},
          {"m_segments", "4"},
          {"m_orientation", "1 0 1"},
          {"m_moment", "1"},
          {"m_scale", "1"},
          {"m_orientationScale", "1"},
          {"m_orientationLength", "30"},
          {"m_dimY", "128"},
          {"m_dimX", "128"},
          {"m_dimZ", "128"},
          {"m_importTag1", "0"},
          {"m_importTag2", "0"},
          {"m_rawLocation", zeroSphereText},
          {"m_rawOrientation", zeroSphereText}};
}

const std::set<std::string> leftByFinalAssignment = {
    "m_extraFlag", "m_extraValue", "m_selected",   "m_segments",    "m_dimX",          "m_dimY",
    "m_dimZ",      "m_importTag1", "m_importTag2", "m_rawLocation", "m_rawOrientation"};

template <class Layer>
void expectFullCopies() {
  Layer original;
  fillMembers(original);
  const MemberValues expected = membersOf(original);
  const Layer copy(original);
  EXPECT_EQ(membersOf(copy), expected);
  EXPECT_EQ(membersOf(original), expected);
}

template <class Layer>
void expectFullAssignment() {
  Layer original;
  fillMembers(original);
  Layer target;
  EXPECT_EQ(&(target = original), &target);
  EXPECT_EQ(membersOf(target), membersOf(original));
}

}  // namespace

TEST(DipoleDefaults, EveryMemberHasItsInitialValue) {
  EXPECT_EQ(membersOf(CDipoleszq()), initialValues());
}

TEST(DipoleDefaults, TheArchiveLayerHasTheSame) {
  EXPECT_EQ(membersOf(CDipoles4File()), initialValues());
}

TEST(DipoleDefaults, TheGlyphLayerGivesTheSliceExtents) {
  EXPECT_EQ(membersOf(CDipoles3Display2D()), initialValues());
}

TEST(DipoleDefaults, TheBaseLayerHasAllButTheSliceExtents) {
  MemberValues base = membersOf(CDipoles());
  MemberValues expected = initialValues();
  for (const char* extent : {"m_dimX", "m_dimY", "m_dimZ"}) {
    base.erase(extent);
    expected.erase(extent);
  }
  EXPECT_EQ(base, expected);
}

TEST(DipoleDefaults, OrientationIsNotOfUnitLength) {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  CDipoleszq().getDipoleOrientation(x, y, z);
  EXPECT_EQ(x * x + y * y + z * z, 2.0);
}

TEST(DipoleDefaults, BackupsAreNotTaken) {
  EXPECT_EQ(CDipoleszq().m_rawLocation.m_radius, 0.0);
  EXPECT_EQ(CDipoleszq().m_rawOrientation.m_radius, 0.0);
}

TEST(DipoleLayers, FormAChainWithVirtualDestructors) {
  EXPECT_TRUE((std::is_base_of_v<CDipoles, CDipoles3Display2D>));
  EXPECT_TRUE((std::is_base_of_v<CDipoles3Display2D, CDipoles4File>));
  EXPECT_TRUE((std::is_base_of_v<CDipoles4File, CDipoleszq>));
  EXPECT_TRUE(std::has_virtual_destructor_v<CDipoles>);
}

TEST(DipoleLayers, AddNoData) {
  EXPECT_EQ(sizeof(CDipoleszq), sizeof(CDipoles));
}

TEST(DipoleLayers, MembersHaveTheirTypes) {
  EXPECT_TRUE((std::is_same_v<decltype(CDipoles::m_number), int>));
  EXPECT_TRUE((std::is_same_v<decltype(CDipoles::m_color), COLORREF>));
  EXPECT_TRUE((std::is_same_v<decltype(CDipoles::m_colorF), float[3]>));
  EXPECT_TRUE((std::is_same_v<decltype(CDipoles::m_latency), double>));
  EXPECT_TRUE((std::is_same_v<decltype(CDipoles::m_fitError), double>));
  EXPECT_TRUE((std::is_same_v<decltype(CDipoles::m_label), CString>));
  EXPECT_TRUE((std::is_same_v<decltype(CDipoles::m_selected), bool>));
  EXPECT_TRUE((std::is_same_v<decltype(CDipoles::m_location), double[3]>));
  EXPECT_TRUE((std::is_same_v<decltype(CDipoles::m_size), double>));
  EXPECT_TRUE((std::is_same_v<decltype(CDipoles::m_orientation), double[3]>));
  EXPECT_TRUE((std::is_same_v<decltype(CDipoles::m_importTag1), float>));
  EXPECT_TRUE((std::is_same_v<decltype(CDipoles::m_importTag2), float>));
  EXPECT_TRUE((std::is_same_v<decltype(CDipoles::m_rawLocation), CSpherezq>));
  EXPECT_TRUE((std::is_same_v<decltype(CDipoles::m_rawOrientation), CSpherezq>));
}

TEST(DipoleLayers, MembersLieInTheirDeclaredOrder) {
  const CDipoleszq d;
  EXPECT_TRUE(rising({&d.m_number,
                      &d.m_listItemId,
                      &d.m_show,
                      &d.m_showOrientation,
                      &d.m_color,
                      d.m_colorF,
                      &d.m_id,
                      &d.m_fitTag,
                      &d.m_extraFlag,
                      &d.m_latency,
                      &d.m_extraValue,
                      &d.m_fitError,
                      &d.m_label,
                      &d.m_display,
                      &d.m_selected,
                      d.m_location,
                      &d.m_size,
                      &d.m_segments,
                      d.m_orientation,
                      &d.m_moment,
                      &d.m_scale,
                      &d.m_orientationScale,
                      &d.m_orientationLength,
                      &d.m_dimY,
                      &d.m_dimX,
                      &d.m_dimZ,
                      &d.m_importTag1,
                      &d.m_importTag2,
                      &d.m_rawLocation,
                      &d.m_rawOrientation}));
}

TEST(DipoleCopy, BaseLayerCopiesEveryMember) {
  expectFullCopies<CDipoles>();
}

TEST(DipoleCopy, GlyphLayerCopiesEveryMember) {
  expectFullCopies<CDipoles3Display2D>();
}

TEST(DipoleCopy, ArchiveLayerCopiesEveryMember) {
  expectFullCopies<CDipoles4File>();
}

TEST(DipoleCopy, FinalClassCopiesEveryMember) {
  expectFullCopies<CDipoleszq>();
}

TEST(DipoleCopy, IsIndependent) {
  const CDipoleszq original = filledDipole();
  const MemberValues before = membersOf(original);
  CDipoleszq copy(original);
  copy.m_label = _T("other");
  copy.m_location[0] = -1.0;
  copy.m_rawLocation.m_center[2] = -1.0;
  EXPECT_EQ(membersOf(original), before);
}

TEST(DipoleAssignment, BaseLayerTakesEveryMember) {
  expectFullAssignment<CDipoles>();
}

TEST(DipoleAssignment, GlyphLayerTakesEveryMember) {
  expectFullAssignment<CDipoles3Display2D>();
}

TEST(DipoleAssignment, ArchiveLayerTakesEveryMember) {
  expectFullAssignment<CDipoles4File>();
}

TEST(DipoleAssignment, ThroughTheBaseAFinalDipoleTakesEveryMember) {
  const CDipoleszq original = filledDipole();
  CDipoleszq target;
  static_cast<CDipoles&>(target) = original;
  EXPECT_EQ(membersOf(target), membersOf(original));
}

TEST(DipoleAssignment, FinalClassTakesWhatDescribesTheDipoleAndLeavesTheRest) {
  const CDipoleszq original = filledDipole();
  CDipoleszq target;
  EXPECT_EQ(&(target = original), &target);
  MemberValues expected = membersOf(original);
  for (const auto& [name, value] : initialValues()) {
    if (leftByFinalAssignment.contains(name)) {
      expected[name] = value;
    }
  }
  EXPECT_EQ(membersOf(target), expected);
}

TEST(DipoleAssignment, FinalClassLeavesWhatAFilledTargetHad) {
  const CDipoleszq original;
  CDipoleszq target = filledDipole();
  const MemberValues before = membersOf(target);
  target = original;
  for (const auto& [name, value] : membersOf(target)) {
    const bool left = leftByFinalAssignment.contains(name);
    EXPECT_EQ(value, left ? before.at(name) : initialValues().at(name)) << name;
  }
}

TEST(DipoleAssignment, ToItselfKeepsEverything) {
  CDipoleszq dipole = filledDipole();
  const MemberValues before = membersOf(dipole);
  const CDipoleszq& same = dipole;
  dipole = same;
  EXPECT_EQ(membersOf(dipole), before);
}

TEST(DipoleAssignment, DoesNotChangeItsSource) {
  const CDipoleszq original = filledDipole();
  const MemberValues before = membersOf(original);
  CDipoleszq target;
  target = original;
  target.m_label = _T("other");
  EXPECT_EQ(membersOf(original), before);
}

TEST(DipoleDestruction, ThroughTheBaseReleasesTheWholeDipole) {
  std::unique_ptr<CDipoles> dipole = std::make_unique<CDipoleszq>();
  dipole->m_label = _T("a label that is far too long to be kept inside the object itself");
  const void* object = dipole.get();
  const void* label = dipole->m_label.GetString();
  const FreeLog log;
  dipole.reset();
  EXPECT_EQ(log.timesFreed(object), 1);
  EXPECT_EQ(log.timesFreed(label), 1);
}
