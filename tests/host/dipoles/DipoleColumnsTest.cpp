// The table of a set is exactly this text.
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>

#include "host/dipoles/DipoleColumns.h"
#include "platform/Utf.h"
#include "tests/file/SetFixture.h"

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

TEST(DipoleTable, OfAnEmptySetIsItsTitles) {
  EXPECT_EQ(host::dipoleTable(*setOf(0), false, ','), titles);
}

TEST(DipoleTable, HasEveryValueOfADipole) {
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
      host::dipoleTable(*set, false, ','),
      titles +
          "7,-3,2,\"say \"\"\xC3\xA4\"\", twice\",0.3333333333333333,-1e+300,96.19999694824219,0.1,-0,1,"
          "nan,inf,-inf,#ff0010,0.99609375,0,0.0625,yes,no,2,no,yes,4.5\n");
}

TEST(DipoleTable, NamesTheUnitOfMomentsThatHaveOne) {
  const std::string table = host::dipoleTable(*setOf(0), true, '\t');
  EXPECT_NE(table.find("\tmoment_nAm\t"), std::string::npos);
  EXPECT_EQ(table.find(','), std::string::npos);
}

TEST(DipoleTable, LeavesEmptySlotsOut) {
  const Set set = setOf(3);
  set->m_dipoles[2]->m_label = _T("last");
  set->deleteDipole(1, 0);
  const std::string table = host::dipoleTable(*set, false, ',');
  EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 3);
  EXPECT_NE(table.find(",last,"), std::string::npos);
}
