// Columns of an atlas have titles that fit any table, hundredths of mm, and are known for what they are.
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "host/exchange/SetPlaces.h"
#include "host/exchange/SetTable.h"
#include "tests/host/text/Failing.h"

namespace {

host::PlaceNames oneVoxel(const std::string& name, const std::string& label = "One") {
  host::Atlas atlas(name, host::LabelGrid({1, 1, 1}, {1}, host::Affine()), {{1, label}});
  return {std::make_shared<const host::Atlas>(std::move(atlas)),
          {host::Fiducials{{0, 90, 0}, {-80, 0, 0}, {80, 0, 0}}, host::MniMap{host::Affine(), {}}}};
}

std::unique_ptr<CDipoleFace9File> dipoleAt(double left, double up) {
  auto set = std::make_unique<CDipoleFace9File>();
  set->addDipole();
  set->m_dipoles[0]->m_location[0] = left;
  set->m_dipoles[0]->m_location[1] = up;
  set->m_dipoles[0]->m_location[2] = 0.0;
  return set;
}

}  // namespace

TEST(SetPlaces, TitlesNameTheAtlasItsSpaceAndTheUnit) {
  const host::SetPlaces known(CDipoleFace9File(), oneVoxel("AAL"));
  EXPECT_EQ(known.labelTitle, "atlas_aal_colin27_label");
  EXPECT_EQ(known.distanceTitle, "atlas_aal_colin27_distance_mm");
  EXPECT_EQ(host::SetPlaces(CDipoleFace9File(), oneVoxel("mine")).labelTitle, "atlas_mine_label");
}

TEST(SetPlaces, TitlesAreFitForTablesWhateverTheFileIsCalled) {
  EXPECT_EQ(host::SetPlaces(CDipoleFace9File(), oneVoxel("a,\"=<\n\xC3\xA4")).labelTitle,
            "atlas_a________label");
  const host::SetPlaces lengthy(CDipoleFace9File(), oneVoxel(std::string(500, 'x')));
  EXPECT_EQ(lengthy.labelTitle, "atlas_" + std::string(40, 'x') + "_label");
}

TEST(SetPlaces, DistancesAreRoundedToHundredths) {
  const host::SetPlaces places(*dipoleAt(1.0, 1.0), oneVoxel("mine"));
  ASSERT_TRUE(places.of(0));
  EXPECT_EQ(places.of(0)->distance, 1.41);
  EXPECT_EQ(host::SetPlaces(*dipoleAt(0.2, 0.2), oneVoxel("mine")).of(0)->distance, 0.0);
}

TEST(SetPlaces, ATableGuardsNamesAsItGuardsLabels) {
  const auto set = dipoleAt(0.0, 0.0);
  const host::SetPlaces places(*set, oneVoxel("mine", "=a,b"));
  const std::string table = host::tableOf(*set, {}, true, ',', {}, &places);
  EXPECT_TRUE(table.ends_with(",\"'=a,b\",0\n")) << table;
}

TEST(SetPlaces, ATableWithThemIsRefusedByTheColumnsTitle) {
  const auto set = dipoleAt(0.0, 0.0);
  const host::SetPlaces places(*set, oneVoxel("mine"));
  const std::string table = host::tableOf(*set, {}, true, ',', {}, &places);
  EXPECT_EQ(
      failureOf([&] { (void)host::readTable(table, ',', "t.csv"); }),
      "t.csv, line 1, column 24: \"atlas_mine_label\" is of an atlas: tables with such columns are not read "
      "back");
}
