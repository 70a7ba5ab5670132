// What a page says of a set.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "host/dipoles/DipolePlace.h"
#include "host/page/PageData.h"
#include "tests/host/panes/PaneFixture.h"

namespace {

using host::Json;
using host::Vector3;

host::KnownHead known(const std::optional<host::Fiducials>& points) {
  host::KnownHead head;
  head.points = points;
  return head;
}

struct Made : PaneFixture {
  host::UnknownValues unknown;
  host::UnknownDipoles unknownDipoles;

  host::PageSource source() {
    unknownDipoles.clear();
    unknownDipoles.mark(*dipoles, unknown);
    settings.unknown = &unknownDipoles;
    return {*dipoles, head, known(head.fiducials), settings, unknown};
  }
  Json data() { return host::pageData(source(), {nullptr, {}, {}}); }
};

Vector3 vectorOf(const Json& json) {
  return {json.at(0).get<double>(), json.at(1).get<double>(), json.at(2).get<double>()};
}

const Json& columnOf(const Json& data, const std::string& title) {
  for (const Json& column : data.at("dipoles").at("columns")) {
    if (column.at("title") == title) {
      return column.at("values");
    }
  }
  throw std::runtime_error("no column " + title);
}

TEST(PageData, PlacesAreThoseOfTheScanner) {
  Made made;
  made.add(10, 20, 30);
  made.add(-40, 5, 60);
  const Json data = made.data();
  for (int row = 0; row < 2; ++row) {
    const Vector3 expected = made.head.frame.toScanner(host::placeOf(*made.dipoles->m_dipoles[row]));
    const Vector3 found = vectorOf(data.at("dipoles").at("places").at(static_cast<std::size_t>(row)));
    EXPECT_NEAR(host::length(found - expected), 0, 1e-4);
  }
}

TEST(PageData, RowsAreCountedWithoutEmptySlots) {
  Made made;
  made.add(1, 0, 0);
  made.add(2, 0, 0);
  made.add(3, 0, 0);
  made.dipoles->m_dipoles.store(1, nullptr);
  host::PageSource source = made.source();
  host::Finding finding;
  finding.slots = {0, 1, 2};
  source.findings = {finding};
  const Json data = host::pageData(source, {nullptr, {}, {}});
  EXPECT_EQ(data.at("dipoles").at("count"), 2);
  EXPECT_EQ(columnOf(data, "x_left_mm"), Json({1, 3}));
  EXPECT_EQ(data.at("findings").at(0).at("rows"), Json({0, 1}));
}

TEST(PageData, WhatIsUnknownIsNull) {
  Made made;
  made.add(1, 0, 0).m_latency = 4;
  made.add(2, 0, 0).m_latency = std::numeric_limits<double>::quiet_NaN();
  made.unknown.mark(0, host::DipoleValue::latency);
  EXPECT_EQ(columnOf(made.data(), "latency_ms"), Json({nullptr, "nan"}));
}

TEST(PageData, ADipoleWithoutAPlaceHasARowAlone) {
  Made made;
  made.add(std::numeric_limits<double>::infinity(), 0, 0);
  made.add(1, 0, 0);
  const Json data = made.data();
  EXPECT_TRUE(data.at("dipoles").at("places").at(0).is_null());
  EXPECT_EQ(columnOf(data, "x_left_mm"), Json({"inf", 1}));
  EXPECT_EQ(data.at("warnings").at(0), "1 dipole has no place and no picture, only a row");
}

TEST(PageData, TheColourOfPicturesHasAColumnWhereItIsAnother) {
  Made made;
  CDipoleszq& dipole = made.add(1, 0, 0);
  EXPECT_EQ(made.data().at("dipoles").at("roles").at("colour"), 13);  // that of the files
  dipole.m_colorF[2] = 1.0F;
  const Json data = made.data();
  EXPECT_EQ(columnOf(data, "color_in_pictures"), Json({"#ff80ff"}));
  EXPECT_EQ(data.at("dipoles")
                .at("columns")
                .at(data.at("dipoles").at("roles").at("colour").get<std::size_t>())
                .at("title"),
            "color_in_pictures");
}

TEST(PageData, TheSwitchesOfTheSetTellWhatIsShown) {
  Made made;
  made.add(1, 0, 0);
  made.add(2, 0, 0).m_show = 0;
  made.add(3, 0, 0).m_display = 0;
  made.settings.filter.fitError.most = -1;  // lets nothing pass, and is none of the switches
  EXPECT_EQ(columnOf(made.data(), "shown_in_pictures"), Json({true, false, false}));
}

TEST(PageData, AHeadThatIsNotRegisteredLeavesTheHeadFrameAndIsTold) {
  Made made;
  made.add(10, 20, 30);
  made.head.fiducials.reset();
  const Json data = made.data();
  EXPECT_EQ(data.at("world").at("kind"), "head");
  EXPECT_EQ(vectorOf(data.at("dipoles").at("places").at(0)), (Vector3{-10, 30, 20}));
  EXPECT_EQ(data.at("warnings"), Json({"The MRI is not registered to the dipoles, so it is not shown"}));
  EXPECT_TRUE(data.at("registration").is_null());
}

TEST(PageData, FramesOfOtherPointsAreToldOnlyWhereTheyAreKnown) {
  Made made;
  made.add(1, 0, 0);
  const auto names = [&](const host::KnownHead& known) {
    host::PageSource source = made.source();
    source.known = known;
    std::string all;
    const Json data = host::pageData(source, {nullptr, {}, {}});
    for (const Json& frame : data.at("frames")) {
      all += frame.at("name").get<std::string>() + " ";
    }
    return all;
  };
  EXPECT_EQ(names(known(made.head.fiducials)), "host ctf neuromag scanner ");
  EXPECT_EQ(names({made.head.fiducials, host::MniMap()}), "host ctf neuromag scanner mni ");
  EXPECT_EQ(names({made.head.fiducials, std::nullopt, host::MriSpace::middle}), "host ctf neuromag mri ");
}

TEST(PageData, ClustersAreThoseOfTheLimits) {
  Made made;
  for (int i = 0; i < 6; ++i) {
    made.add(i, 0, 0).m_fitError = 5;
  }
  made.add(0, 1, 0).m_fitError = 50;
  made.add(0, 60, 0).m_fitError = 5;
  made.settings.filter.fitError.most = 10;
  const Json data = made.data();
  const Json& clusters = data.at("clusters");
  EXPECT_EQ(clusters.at("text"), "6 or more within 10 mm");
  EXPECT_EQ(clusters.at("scattered"), 1);
  EXPECT_EQ(clusters.at("removed"), Json::array({{{"limit", "fit error at most 10 %"}, {"count", 1}}}));
  EXPECT_EQ(data.at("dipoles").at("clusters"), Json({1, 1, 1, 1, 1, 1, 0, 0}));
  ASSERT_EQ(clusters.at("clusters").size(), 1U);
  const Json& cluster = clusters.at("clusters").at(0);
  EXPECT_EQ(cluster.at("count"), 6);
  EXPECT_NEAR(cluster.at("rms").get<double>(), std::sqrt(35.0 / 12.0), 1e-5);
  EXPECT_EQ(vectorOf(cluster.at("places").at(0).at("place")), (Vector3{2.5, 0, 0}));
  const Vector3 expected = made.head.frame.toScanner({2.5, 0, 0});
  EXPECT_NEAR(host::length(vectorOf(cluster.at("centroid")) - expected), 0, 1e-4);
}

}  // namespace
