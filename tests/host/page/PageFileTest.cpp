// The template is filled by data alone: nothing of it is markup.
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "host/page/PageFile.h"
#include "host/text/PathText.h"
#include "tests/support/TempFolder.h"

namespace {

using host::Json;

const std::string start = "<!DOCTYPE html>\n<script type=\"application/json\" id=\"page-data\">";
const std::string middle = "</script><p>\"page-data\"</p><script type=\"text/plain\" id=\"page-head\">";
const std::string behind = "</script>\n<script type=\"text/plain\" id=\"page-atlas\">";
const std::string end = "</script><p>the end</p>";

std::string page() {
  return start + middle + behind + end;
}

TEST(PageFile, EachPartStandsInItsElementAndTheRestStays) {
  EXPECT_EQ(host::filledPage(page(), {{{"a", 1}}, "head", "atlas!"}),
            start + "{\"a\":1}" + middle + "aGVhZA==" + behind + "YXRsYXMh" + end);
}

TEST(PageFile, PartsMayStandInAnyOrder) {
  const std::string turned = start.substr(16) + middle.substr(0, 9) + "x" + middle.substr(9) + behind + end;
  EXPECT_EQ(host::filledPage(turned, {Json::object(), "", ""}),
            turned.substr(0, start.size() - 16) + "{}" + turned.substr(start.size() - 16));
}

TEST(PageFile, WhatIsNoTemplateIsRefused) {
  for (const std::string& other :
       {std::string(), start + middle + end, page() + page(), start + "{}" + middle + behind + end}) {
    EXPECT_THROW(host::filledPage(other, {Json::object(), "", ""}), std::runtime_error) << other;
  }
}

TEST(PageFile, NoTextOfTheDataIsMarkupOrEndsALine) {
  const std::string hostile =
      "</script><!--&amp;\xE2\x80\xA8\xE2\x80\xA9\xE2\x80\xAE\"\\\x01\x7F\xC3\xA9\xF0\x9F\xA7\xA0";
  const std::string text = host::jsonForPage({{hostile, hostile}});
  EXPECT_EQ(text.find_first_of("<>&\n"), std::string::npos);
  for (const char c : text) {
    EXPECT_TRUE(c >= 0x20 && static_cast<unsigned char>(c) <= 0x7F) << text;
  }
  EXPECT_EQ(Json::parse(text), Json({{hostile, hostile}}));
}

TEST(PageFile, BytesThatAreNoUtf8AreReplaced) {
  EXPECT_EQ(host::jsonForPage("a\xFF"), "\"a\\ufffd\"");
}

TEST(PageFile, Base64IsThatOfItsStandard) {
  for (const auto& [bytes, text] : {std::pair<std::string, std::string>{"", ""},
                                    {"f", "Zg=="},
                                    {"fo", "Zm8="},
                                    {"foo", "Zm9v"},
                                    {"foob", "Zm9vYg=="},
                                    {"fooba", "Zm9vYmE="},
                                    {"foobar", "Zm9vYmFy"},
                                    {"\xFB\xFF\xBF", "+/+/"}}) {  // RFC 4648, and its last two digits
    EXPECT_EQ(host::base64Of(bytes), text);
  }
}

TEST(PageFile, TheTemplateStandsBesideTheProgramsFolder) {
  const TempFolder folder;
  const std::filesystem::path root = host::pathOf(folder.path());
  std::filesystem::create_directories(root / "bin");
  std::filesystem::create_directories(root / "share" / "dipole");
  try {
    (void)host::readPageTemplate(root / "bin");
    FAIL() << "nothing is there";
  } catch (const std::runtime_error& error) {
    EXPECT_NE(std::string(error.what()).find("nodejs and npm"), std::string::npos) << error.what();
  }
  folder.write("share/dipole/page.html", page());
  EXPECT_EQ(host::readPageTemplate(root / "bin"), page());
}

}  // namespace
