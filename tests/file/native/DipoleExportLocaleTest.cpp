// The text export writes a decimal point whatever locale the process has set.
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "platform/Utf.h"
#include "tests/file/SetFixture.h"
#include "tests/support/TempFolder.h"

namespace {

class ExportLocale : public testing::Test {
 protected:
  // The bytes of the export, every second one: plain ASCII.
  std::string exported() {
    user.answerFiles({folder.path("out.txt")});
    EXPECT_EQ(set->exportExelFile(), 1);
    const std::string bytes = folder.read("out.txt");
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
      text += bytes[i];
    }
    return text;
  }

  ScriptedOperator user;
  TempFolder folder;
  Set set = std::make_unique<CDipoleFace9File>();
};

}  // namespace

TEST_F(ExportLocale, ADecimalCommaLeavesThePoint) {
  set->addDipole();
  const std::string before = exported();
  const TempFolder locales;
  const std::string made = locales.pathUtf8("de_DE.UTF-8");
  bool isOwn = false;
  if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) {
    ASSERT_EQ(std::system(("localedef -i de_DE -f UTF-8 '" + made + "' 2>&1").c_str()), 0);
    ASSERT_EQ(setenv("LOCPATH", locales.pathUtf8().c_str(), 1), 0);
    isOwn = true;
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
  }
  EXPECT_STREQ(std::localeconv()->decimal_point, ",");
  const std::string after = exported();
  std::setlocale(LC_ALL, "C");
  if (isOwn) {
    unsetenv("LOCPATH");
  }
  EXPECT_EQ(after, before);
  EXPECT_NE(after.find("  0.20  1.00  Non"), std::string::npos);
}

// Rounding, sign and every magnitude as the C library's printf has them.
TEST_F(ExportLocale, NumbersAreThoseOfPrintf) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 3000; ++i) {
    set->addDipole();
    CDipoleszq& dipole = *set->getCurrentDipole();
    for (double* value : {&dipole.m_latency, &dipole.m_location[0], &dipole.m_location[1],
                          &dipole.m_location[2], &dipole.m_orientation[0], &dipole.m_orientation[1],
                          &dipole.m_orientation[2], &dipole.m_fitError, &dipole.m_moment}) {
      const auto bits = random();
      *value = std::ldexp(static_cast<double>(static_cast<std::int64_t>(bits)), -static_cast<int>(bits % 90));
      if (bits % 5 == 0) {
        *value = static_cast<double>(static_cast<int>(bits >> 40U) % 4000) / 8 / 25;  // near and on ties
      }
    }
  }
  const std::string text = exported();
  std::string expected;
  for (int slot = 0; slot < set->m_totalDipoles; ++slot) {
    const CDipoleszq& d = *set->m_dipoles[slot];
    char line[4000];
    std::snprintf(line, sizeof line, "%d  %.2f   %.2f %.2f %.2f   %.2f %.2f %.2f   %.2f  %.2f  %s \n", d.m_id,
                  d.m_latency, d.m_location[0], d.m_location[1], d.m_location[2], d.m_orientation[0],
                  d.m_orientation[1], d.m_orientation[2], d.m_fitError, d.m_moment, "Non");
    expected += line;
  }
  EXPECT_TRUE(text.substr(text.find("Lable \n") + 7) == expected);
}
