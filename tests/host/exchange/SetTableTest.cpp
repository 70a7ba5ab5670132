// The table of a set is exactly this text, and comes back from it; a bad one is refused with its place.
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>

#include "host/exchange/SetTable.h"
#include "platform/Utf.h"
#include "tests/host/exchange/HostileSet.h"
#include "tests/host/text/Failing.h"

namespace {

const std::string titles =
    "number,id,fit_tag,label,x_left_mm,y_up_mm,z_front_mm,orientation_x_left,orientation_y_up,"
    "orientation_z_front,moment,latency_ms,fit_error_percent,color,color_3d_red,color_3d_green,"
    "color_3d_blue,shown_in_3d,orientation_shown_in_3d,display,shown_on_slices,selected,glyph_size_pixels\n";

Set setOf(int dipoles) {
  auto set = std::make_unique<CDipoleFace9File>();
  for (int i = 0; i < dipoles; ++i) {
    set->addDipole();
  }
  return set;
}

}  // namespace

TEST(SetTable, OfAnEmptySetIsItsTitles) {
  EXPECT_EQ(host::tableOf(*setOf(0), {}, false, ','), titles);
}

TEST(SetTable, HasEveryValueOfADipole) {
  const Set set = setOf(1);
  CDipoleszq& dipole = *set->m_dipoles[0];
  dipole.m_number = 7;
  dipole.m_id = -3;
  dipole.m_fitTag = 2;
  dipole.m_label = fromUtf8("say \"\xC3\xA4\", twice");
  dipole.setDipoleOrientation(0.1, -0.0, 1.0);
  dipole.m_location[0] = 1.0 / 3.0;
  dipole.m_location[1] = -1e300;
  dipole.m_location[2] = static_cast<double>(96.2F);
  dipole.m_moment = std::numeric_limits<double>::quiet_NaN();
  dipole.m_latency = std::numeric_limits<double>::infinity();
  dipole.m_fitError = -std::numeric_limits<double>::infinity();
  dipole.setColorValue(RGB(255, 0, 16));
  dipole.m_show = 2;
  dipole.m_showOrientation = 0;
  dipole.m_display = 2;
  dipole.m_selected = true;
  dipole.m_size = 4.5;
  EXPECT_EQ(
      host::tableOf(*set, {}, false, ','),
      titles +
          "7,-3,2,\"say \"\"\xC3\xA4\"\", twice\",0.3333333333333333,-1e+300,96.19999694824219,0.1,-0,1,"
          "nan,inf,-inf,#ff0010,0.99609375,0,0.0625,2,no,2,no,yes,4.5\n");
}

TEST(SetTable, NamesTheUnitOfMomentsThatHaveOne) {
  const std::string table = host::tableOf(*setOf(0), {}, true, '\t');
  EXPECT_NE(table.find("\tmoment_nAm\t"), std::string::npos);
  EXPECT_EQ(table.find(','), std::string::npos);
}

TEST(SetTable, LeavesEmptySlotsOut) {
  const Set set = setOf(3);
  set->m_dipoles[2]->m_label = _T("last");
  set->deleteDipole(1, 0);
  const std::string table = host::tableOf(*set, {}, false, ',');
  EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 3);
  EXPECT_NE(table.find(",last,"), std::string::npos);
}

TEST(SetTable, SaysWhatIsUnknownByEmptyCells) {
  const Set set = setOf(2);
  set->m_dipoles[0]->m_label = _T("");
  set->m_dipoles[1]->m_label = _T("");
  host::UnknownValues unknown;
  unknown.mark(1, host::DipoleValue::latency);
  unknown.mark(1, host::DipoleValue::orientation);
  unknown.mark(1, host::DipoleValue::label);
  EXPECT_EQ(host::tableOf(*set, unknown, false, ','),
            titles +
                "0,0,0,\"\",100,100,100,1,0,1,1,0,0.2,#ffff00,1,1,0,yes,yes,1,yes,no,3\n"
                "0,0,0,,100,100,100,,,,1,,0.2,#ffff00,1,1,0,yes,yes,1,yes,no,3\n");
}

TEST(SetTable, KeepsSpreadsheetsFromTakingTextsForFormulas) {
  const Set set = setOf(1);
  for (const auto& [label, cell] :
       {std::pair{"=1+1", "'=1+1"}, std::pair{"+a", "'+a"}, std::pair{"-a", "'-a"}, std::pair{"@a", "'@a"},
        std::pair{"'a", "''a"}, std::pair{"\ta", "'\ta"}, std::pair{"\ra", "\"'\ra\""},
        std::pair{"a=", "a="}}) {
    set->m_dipoles[0]->m_label = fromUtf8(label);
    const std::string table = host::tableOf(*set, {}, false, ',');
    EXPECT_NE(table.find(std::string("0,0,0,") + cell + ",100"), std::string::npos) << table;
    EXPECT_EQ(toUtf8(host::readTable(table, ',', "t").dipoles->m_dipoles[0]->m_label), label);
  }
}

TEST(SetTable, ComesBackBitByBit) {
  for (const char separator : {',', '\t'}) {
    for (unsigned seed = 0; seed < 40; ++seed) {
      HostileValues hostile(seed);
      const int count = hostile.below(60);
      const Set set = hostile.set(count);
      const host::UnknownValues unknown = hostile.unknown(count);
      const std::string table = host::tableOf(*set, unknown, seed % 2 == 0, separator);
      const host::TableSet back = host::readTable(table, separator, "t");
      ASSERT_EQ(differences(membersInTables(*set, unknown), membersInTables(*back.dipoles, back.unknown)),
                Lines());
      ASSERT_EQ(back.dipoles->m_momentInNAm, seed % 2 == 0 ? 1 : 0);
      ASSERT_EQ(host::tableOf(*back.dipoles, back.unknown, seed % 2 == 0, separator), table);
    }
  }
}

TEST(SetTable, FullOneComesBack) {
  const Set set = setOf(DipoleTable::capacity);
  const host::TableSet back = host::readTable(host::tableOf(*set, {}, false, ','), ',', "t");
  EXPECT_EQ(back.dipoles->m_totalDipoles, int{DipoleTable::capacity});
}

TEST(SetTable, ColumnsMayStandInAnyOrderAndSomeMayLack) {
  const host::TableSet table = host::readTable(
      "\xEF\xBB\xBFz_front_mm,x_left_mm,color,y_up_mm\r\n3,1,#ff0010,2\r\n6,4,#000000,5", ',', "t");
  ASSERT_EQ(table.dipoles->m_totalDipoles, 2);
  const CDipoleszq& first = *table.dipoles->m_dipoles[0];
  EXPECT_EQ((std::array{first.m_location[0], first.m_location[1], first.m_location[2]}),
            (std::array{1.0, 2.0, 3.0}));
  EXPECT_EQ(first.m_color, RGB(255, 0, 16));
  EXPECT_EQ(first.m_colorF[0], 0.99609375F);
  EXPECT_EQ(table.dipoles->m_dipoles[1]->m_number, 2);
  EXPECT_EQ(table.unknown.of(0), 31);
}

TEST(SetTable, BadOnesNameLineAndColumnAndWhatIsWrong) {
  const auto problemOf = [](const std::string& text) {
    return failureOf([&] { (void)host::readTable(text, ',', "a.csv"); });
  };
  const std::string places = "x_left_mm,y_up_mm,z_front_mm";
  EXPECT_EQ(problemOf(""), "a.csv, line 1: there is no line of titles");
  EXPECT_EQ(problemOf("x_left_mm,y_up_mm\n"), "a.csv, line 1: the column z_front_mm is missing");
  EXPECT_EQ(problemOf("x_left_mm;y_up_mm\n"),
            "a.csv, line 1, column 1: \"x_left_mm;y_up_mm\" is no column of a table of dipoles");
  EXPECT_EQ(problemOf(places + ",x_left_mm\n"), "a.csv, line 1, column 4: \"x_left_mm\" is there twice");
  EXPECT_EQ(problemOf(places + ",moment,moment_nAm\n"),
            "a.csv, line 1, column 5: \"moment_nAm\" is there twice");
  EXPECT_EQ(problemOf(places + ",orientation_x_left\n"),
            "a.csv, line 1: an orientation needs its three columns");
  EXPECT_EQ(problemOf(places + "\n1,2,3\n1,2\n"),
            "a.csv, line 3, column 3: this line has 2 cells, the titles are 3");
  EXPECT_EQ(problemOf(places + "\n1,2,3,4\n"),
            "a.csv, line 2, column 4: this line has 4 cells, the titles are 3");
  EXPECT_EQ(problemOf(places + "\n1,2,3\n\n1,2,3\n"),
            "a.csv, line 3, column 2: this line has 1 cells, the titles are 3");
  for (const char* number : {"a", "+1", "1 ", " 1", "1e999", "1e-999", "0x1", "1,5", "NaN", "infinity", "-",
                             "--1", "1.2.3", "nan(1)"}) {
    EXPECT_EQ(problemOf(places + "\n1,\"" + number + "\",3\n"),
              std::string("a.csv, line 2, column 2: y_up_mm: \"") + number +
                  "\" is no number, or one that does not fit");
  }
  EXPECT_EQ(problemOf(places + "\n1,,3\n"), "a.csv, line 2, column 2: a value is missing here");
  EXPECT_EQ(problemOf(places + ",id\n1,2,3,2147483648\n"),
            "a.csv, line 2, column 4: id: \"2147483648\" is no whole number that fits");
  EXPECT_EQ(problemOf(places + ",selected\n1,2,3,2\n"),
            "a.csv, line 2, column 4: this is neither yes nor no");
  EXPECT_EQ(problemOf(places + ",color\n1,2,3,red\n"),
            "a.csv, line 2, column 4: a color is written as #rrggbb");
  EXPECT_EQ(problemOf(places + ",display,shown_on_slices\n1,2,3,0,yes\n"),
            "a.csv, line 2, column 5: this contradicts the column display, which is 1 for dipoles that "
            "slices show");
  EXPECT_EQ(problemOf(places + ",orientation_x_left,orientation_y_up,orientation_z_front\n1,2,3,1,,0\n"),
            "a.csv, line 2, column 4: a part of the orientation is missing");
  EXPECT_EQ(problemOf(places + ",label\n1,2,3,\"a\n1,2,3,b\n"),
            "a.csv, line 2, column 4: the quote in front of this cell is not closed");
  EXPECT_EQ(problemOf(places + ",label\n1,2,3,\"a\nb\"c\n"),
            "a.csv, line 3, column 4: something stands behind the quote that closes this cell");
  EXPECT_EQ(problemOf(places + ",label\n1,2,3,a\"b\n"),
            "a.csv, line 2, column 4: a quote stands inside of a cell that has none around it");
  EXPECT_EQ(problemOf(places + ",label\n1,2,3,\xFF\n"), "a.csv, line 2, column 4: this is no UTF-8");
}

TEST(SetTable, OneDipoleTooManyIsRefused) {
  std::string text = "x_left_mm,y_up_mm,z_front_mm\n";
  for (int i = 0; i <= DipoleTable::capacity; ++i) {
    text += "1,2,3\n";
  }
  EXPECT_EQ(failureOf([&] { (void)host::readTable(text, ',', "a.csv"); }),
            "a.csv, line 30002: a set holds 30000 dipoles, this would be one more");
}
