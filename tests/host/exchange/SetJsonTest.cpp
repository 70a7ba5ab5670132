// A set as JSON comes back; a document that is none is refused with its place.
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "host/exchange/SetJson.h"
#include "platform/Utf.h"
#include "tests/host/exchange/HostileSet.h"
#include "tests/host/text/Failing.h"

namespace {

std::string problemOf(const std::string& text) {
  return failureOf([&] { (void)host::readSetJson(text, "a.json"); });
}

// A document with one dipole of these members.
std::string withDipole(const std::string& members) {
  return "{\"dipoles\": [\n{\"x_left_mm\": 1, \"y_up_mm\": 2, \"z_front_mm\": 3" + members + "}]}";
}

}  // namespace

TEST(SetJson, HoldsNumbersTextsAndWhatIsUnknown) {
  auto set = std::make_unique<CDipoleFace9File>();
  set->addDipole();
  CDipoleszq& dipole = *set->m_dipoles[0];
  dipole.m_label = _T("=1");
  dipole.m_moment = std::numeric_limits<double>::quiet_NaN();
  dipole.m_location[0] = -std::numeric_limits<double>::infinity();
  dipole.m_location[1] = -0.0;
  dipole.m_location[2] = static_cast<double>(96.2F);
  dipole.m_colorF[0] = 0.1F;
  dipole.m_show = 2;
  host::UnknownValues unknown;
  unknown.mark(0, host::DipoleValue::latency);
  EXPECT_EQ(
      host::Json::parse(host::setJson(*set, unknown, {{"a.dip"}, "", "P1", true})).dump(),
      R"({"files":["a.dip"],"version":null,"patient":"P1","frame":"head: x left, y up, z front",)"
      R"("moment_unit":"nAm","dipoles":[{"number":0,"id":0,"fit_tag":0,"label":"=1","x_left_mm":"-inf",)"
      R"("y_up_mm":-0.0,"z_front_mm":96.19999694824219,"orientation_x_left":1.0,"orientation_y_up":0.0,)"
      R"("orientation_z_front":1.0,"moment_nAm":"nan","latency_ms":null,"fit_error_percent":0.2,)"
      R"("color":"#ffff00","color_3d_red":0.1,"color_3d_green":1.0,"color_3d_blue":0.0,"shown_in_3d":2,)"
      R"("orientation_shown_in_3d":true,"display":1,"shown_on_slices":true,"selected":false,)"
      R"("glyph_size_pixels":3.0}]})");
}

TEST(SetJson, HasALineForEachDipoleAndIsSearchedForNoTextsOfTheirs) {
  CDipoleFace9File set;
  const host::SetTexts texts{{"\"dipoles\": []"}, "\n  \"dipoles\": []", "", true};
  const std::string none = host::setJson(set, {}, texts);
  EXPECT_NE(none.find("\n  \"dipoles\": []\n}\n"), std::string::npos) << none;
  EXPECT_EQ(host::Json::parse(none)["files"][0], "\"dipoles\": []");
  for (int i = 0; i < 3; ++i) {
    set.addDipole();
  }
  set.deleteDipole(1, 0);
  const std::string two = host::setJson(set, {}, texts);
  EXPECT_EQ(host::Json::parse(two)["dipoles"].size(), 2U);
  EXPECT_EQ(std::count(two.begin(), two.end(), '\n'), std::count(none.begin(), none.end(), '\n') + 3) << two;
}

TEST(SetJson, ComesBackBitByBit) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    HostileValues hostile(seed);
    const int count = hostile.below(60);
    const Set set = hostile.set(count);
    const host::UnknownValues unknown = hostile.unknown(count);
    const host::SetTexts texts{{"a", "b"}, "5.0", "P \xC3\xA4 \"x\"", seed % 2 == 0};
    const std::string text = host::setJson(*set, unknown, texts);
    const host::TableSet back = host::readSetJson(text, "t");
    ASSERT_EQ(differences(membersInTables(*set, unknown), membersInTables(*back.dipoles, back.unknown)),
              Lines());
    ASSERT_EQ(back.dipoles->m_momentInNAm, seed % 2 == 0 ? 1 : 0);
    ASSERT_EQ(toUtf8(back.dipoles->m_patient), texts.patient);
    ASSERT_EQ(toUtf8(back.dipoles->m_fileVersion), texts.version);
    ASSERT_EQ(host::setJson(*back.dipoles, back.unknown, texts), text);
  }
}

TEST(SetJson, WhatStandsBesideTheDipolesIsPassedOver) {
  const host::TableSet table = host::readSetJson(
      R"({"registration": {"dipoles": [{"a": [1, {}]}]}, "note": [[]],
          "dipoles": [{"z_front_mm": 3, "y_up_mm": 2,
          "x_left_mm": 1}], "files": [1]})",
      "t");
  EXPECT_EQ(table.dipoles->m_totalDipoles, 1);
  EXPECT_EQ(table.dipoles->m_dipoles[0]->m_location[2], 3.0);
  EXPECT_EQ(table.unknown.of(0), 31);
}

TEST(SetJson, BadDocumentsNameLineAndColumnAndWhatIsWrong) {
  const std::string outer = "a.json, line 1, column 1: a document is an object, and its dipoles are a list";
  EXPECT_EQ(problemOf(""), "a.json, line 1, column 1: this is no valid JSON");
  EXPECT_EQ(problemOf("[]"), outer);
  EXPECT_EQ(problemOf("7"), outer);
  EXPECT_EQ(problemOf("{\"files\": []}"), "a.json, line 1, column 13: the list of dipoles is missing");
  EXPECT_EQ(problemOf("{\"dipoles\": 7}"), "a.json, line 1, column 13: the dipoles are a list");
  EXPECT_EQ(problemOf("{\"dipoles\": {}}"),
            "a.json, line 1, column 13: a document is an object, and its dipoles are a list");
  EXPECT_EQ(problemOf("{\"dipoles\": [7]}"), "a.json, line 1, column 14: a dipole is an object");
  EXPECT_EQ(problemOf("{\"dipoles\": [], \"dipoles\": []}"),
            "a.json, line 1, column 28: there is a second list of dipoles");
  EXPECT_EQ(problemOf("{\"dipoles\": [\n{\"x_left_mm\": 1}]}"),
            "a.json, line 2, column 16: the column y_up_mm is missing");
  EXPECT_EQ(problemOf(withDipole(", \"size\": 1")),
            "a.json, line 2, column 49: \"size\" is no column of a table of dipoles");
  EXPECT_EQ(problemOf(withDipole(", \"y_up_mm\": 1")),
            "a.json, line 2, column 49: \"y_up_mm\" is there twice");
  EXPECT_EQ(problemOf(withDipole(", \"id\": 1.5")),
            "a.json, line 2, column 55: id: this is not what the column holds");
  EXPECT_EQ(problemOf(withDipole(", \"id\": 2147483648")),
            "a.json, line 2, column 55: id: this is not what the column holds");
  EXPECT_EQ(problemOf(withDipole(", \"label\": 7")),
            "a.json, line 2, column 58: label: this is not what the column holds");
  EXPECT_EQ(problemOf(withDipole(", \"label\": [7]")),
            "a.json, line 2, column 58: a value of a dipole is a number, a text, true or false");
  EXPECT_EQ(problemOf(withDipole(", \"moment\": \"7\"")),
            "a.json, line 2, column 59: moment: this is not what the column holds");
  EXPECT_EQ(problemOf(withDipole(", \"moment\": 1e999")),
            "a.json, line 2, column 63: this number does not fit");
  EXPECT_EQ(problemOf(withDipole(", \"moment\": NaN")), "a.json, line 2, column 59: this is no valid JSON");
  EXPECT_EQ(problemOf(withDipole(", \"color\": \"red\"")),
            "a.json, line 2, column 58: a color is written as #rrggbb");
  EXPECT_EQ(problemOf("{\"frame\": \"scanner\", \"dipoles\": []}"),
            "a.json, line 1, column 11: the only frame that is known is \"head: x left, y up, z front\"");
  EXPECT_EQ(problemOf("{\"patient\": 3, \"dipoles\": []}"),
            "a.json, line 1, column 13: \"patient\" is a text, or null");
  for (const std::string key : {"patient", "version", "frame", "moment_unit"}) {
    EXPECT_EQ(
        problemOf("{\"" + key + "\": [1], \"dipoles\": []}"),
        "a.json, line 1, column " + std::to_string(key.size() + 6) + ": \"" + key + "\" is a text, or null");
  }
  EXPECT_EQ(problemOf("{\"moment_unit\": \"Am\", \"dipoles\": []}"),
            "a.json, line 1, column 17: the unit of moments is \"nAm\", or null");
  EXPECT_NE(problemOf("{\"moment_unit\": null, " + withDipole(", \"moment_nAm\": 1").substr(1))
                .find("moment_unit contradicts the name of the moments"),
            std::string::npos);
  EXPECT_EQ(problemOf(withDipole("") + "x"), "a.json, line 2, column 50: this is no valid JSON");
}

TEST(SetJson, OneDipoleTooManyIsRefused) {
  std::string list;
  for (int i = 0; i <= DipoleTable::capacity; ++i) {
    list += (i == 0 ? "" : ",\n") + std::string("{\"x_left_mm\":1,\"y_up_mm\":2,\"z_front_mm\":3}");
  }
  EXPECT_EQ(problemOf("{\"dipoles\": [" + list + "]}"),
            "a.json, line 30001, column 42: a set holds 30000 dipoles, this would be one more");
}

TEST(SetJson, DeepNestingIsRefusedOrPassedOver) {
  const std::string deep(200000, '[');
  EXPECT_NE(problemOf("{\"a\": " + deep), "");
  const std::string closed = "{\"a\": " + deep + std::string(200000, ']') + ", \"dipoles\": []}";
  EXPECT_EQ(problemOf(closed), "");
}
