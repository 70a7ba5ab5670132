// A file's count of dipoles is taken at its word, whatever the rest of the file holds: only the table limits
// it.
#include <cstring>
#include <limits>

#include "tests/file/SetFixture.h"
#include "tests/support/FailingNew.h"
#include "tests/support/Thrown.h"

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

// A file of make_archives.py.
struct Form {
  const char* name;
  std::size_t place;  // of the count; the current dipole stands in front of it
  int dipoles;

  bool isCurrent() const { return std::string(name).find("set_20050629") == 0; }
};

// Behind two fiducial sets: found by the current dipole and the count, 1 and 3.
std::size_t countOf20011118() {
  return archiveBytes("set_20011118").find(std::string("\1\0\0\0\3\0\0\0", 8)) + 4;
}

std::vector<Form> allForms() {
  return {{"set_20050629_small", 38, 1},
          {"set_20010901", 88, 2},
          {"set_20010101_version_0", 120, 2},
          {"set_20010101_version_1", 120, 1},
          {"set_20011118", countOf20011118(), 3}};
}

int intAt(const std::string& bytes, std::size_t place) {
  int value = 0;
  std::memcpy(&value, bytes.data() + place, sizeof value);
  return value;
}

int read(const Form& form, const std::string& bytes, CDipoleFace9File& set, std::size_t* rest = nullptr) {
  return form.isCurrent() ? readCurrent(bytes, set, rest) : readObsolete(bytes, set, rest);
}

// The file up to the end of its last dipole.
std::string upToTheLastDipole(const Form& form) {
  const std::string whole = archiveBytes(form.name);
  const Set set = filledSet(0);
  for (std::size_t length = form.place + 4; length < whole.size(); ++length) {
    archiveCause([&] { read(form, whole.substr(0, length), *set); });
    if (set->m_totalDipoles == form.dipoles) {
      return whole.substr(0, length);
    }
  }
  return whole;  // the oldest form ends there
}

class SetFileCount : public testing::Test {
 protected:
  void SetUp() override {
    for (const Form& form : allForms()) {
      ASSERT_EQ(intAt(archiveBytes(form.name), form.place), form.dipoles) << form.name;
    }
  }

  ScriptedOperator user;
};

}  // namespace

TEST_F(SetFileCount, AboveTheTableIsRefusedWithAMessageAndChangesNothing) {
  for (const Form& form : allForms()) {
    for (const int count : {30001, highest}) {
      user.messages.clear();
      const Set set = filledSet(4);
      const Lines before = linesOf(*set);
      const std::string bytes = patched(archiveBytes(form.name), form.place, count);
      EXPECT_EQ(read(form, bytes + std::string(200000, '\0'), *set), form.isCurrent() ? 0 : 1);
      EXPECT_EQ(user.texts(), Texts{form.isCurrent() ? "Wrong file format!" : "Dipole file format error"});
      EXPECT_EQ(differences(before, linesOf(*set)), Lines{}) << form.name << count;
    }
  }
}

TEST_F(SetFileCount, BelowOneIsAnEmptySetWithTheStoredCurrentDipoleAndTheFaceFields) {
  constexpr std::size_t place = 38;
  const std::string name = "set_20050629_empty";
  for (const int count : {0, -1, lowest}) {
    const Set set = filledSet(3);
    std::size_t rest = 1;
    const std::string bytes = patched(patched(archiveBytes(name), place, count), place - 4, 77);
    EXPECT_EQ(readCurrent(bytes, *set, &rest), 1) << count;
    EXPECT_EQ(rest, 0U);
    EXPECT_EQ(set->m_totalDipoles, 0);
    EXPECT_EQ(set->m_currentDipole, 77);
    EXPECT_EQ(set->m_dipoles[0], nullptr);
    set->m_currentDipole = intAt(archiveBytes(name), place - 4);
    EXPECT_EQ(differences(expectedLines(name, *filledSet(0)), linesOf(*set)), Lines{}) << count;
  }
  EXPECT_EQ(user.texts(), Texts{});
}

TEST_F(SetFileCount, BelowOneIsAnEmptySetWithWhatFollowsInTheFormsOf2001Too) {
  CSpherezq spheres[3];
  spheres[0].m_radius = 70.5;
  spheres[1].m_radius = 80.5;
  for (const Form& form : allForms()) {
    for (const int count : {0, -1, lowest}) {
      if (form.isCurrent()) {
        continue;
      }
      const bool hasSpheres = std::string(form.name).find("set_20010101") != 0;
      const std::string front = archiveBytes(form.name).substr(0, form.place + 4);
      const std::string back = storedBytes([&](CArchive& archive) {
        for (CSpherezq& sphere : spheres) {
          sphere.serialize(archive);
        }
      });
      const Set set = filledSet(2);
      std::size_t rest = 1;
      const std::string bytes = patched(patched(front, form.place, count), form.place - 4, -9);
      EXPECT_EQ(read(form, hasSpheres ? bytes + back : bytes, *set, &rest), 1) << form.name << count;
      EXPECT_EQ(rest, 0U);
      EXPECT_EQ(set->m_totalDipoles, 0) << form.name << count;
      EXPECT_EQ(set->m_currentDipole, -9);
      EXPECT_NE(set->m_dipoles[1], nullptr);  // nothing is cleaned
      if (hasSpheres) {
        EXPECT_EQ(set->m_sphereLocational.m_radius, 70.5);
        EXPECT_EQ(set->m_sphereCtf.m_radius, 80.5);
      }
    }
  }
  EXPECT_EQ(user.texts(), Texts{});
}

TEST_F(SetFileCount, OfMoreThanTheFileHoldsEndsInTheArchiveExceptionWithTheDipolesThatWereReadWhole) {
  for (const Form& form : allForms()) {
    const std::string dipoles = upToTheLastDipole(form);
    const Set whole = filledSet(0);
    EXPECT_EQ(read(form, archiveBytes(form.name), *whole), 1);
    for (const int count : {form.dipoles + 1, 29999, 30000}) {
      const Set set = filledSet(0);
      const std::string bytes = patched(patched(dipoles, form.place, count), form.place - 4, 20000);
      EXPECT_EQ(archiveCause([&] { read(form, bytes, *set); }), CArchiveException::endOfFile) << form.name;
      ASSERT_EQ(set->m_totalDipoles, form.dipoles) << form.name << count;
      EXPECT_EQ(set->m_currentDipole, form.dipoles - 1);
      for (int slot = 0; slot < form.dipoles; ++slot) {
        EXPECT_EQ(linesOf(*set->m_dipoles[slot]), linesOf(*whole->m_dipoles[slot])) << form.name << slot;
      }
      EXPECT_EQ(set->m_dipoles[form.dipoles], nullptr);
    }
  }
  EXPECT_EQ(user.texts(), Texts{});
}

TEST_F(SetFileCount, ThatLiesMakesNoDipolesBeforehand) {
  for (const Form& form : allForms()) {
    const std::string bytes = patched(upToTheLastDipole(form), form.place, 30000);
    const Set set = filledSet(0);
    const long long before = liveAllocations();
    archiveCause([&] { read(form, bytes, *set); });
    EXPECT_LT(liveAllocations() - before, 50) << form.name;
  }
}
