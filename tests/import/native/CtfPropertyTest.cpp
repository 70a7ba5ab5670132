// Random CTF files, from well-made to broken, give exactly what a literal second importer makes of them: the
// whole collection and every message in order.
#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/import/CtfOracle.h"

namespace {

class RandomFiles {
 public:
  explicit RandomFiles(std::uint32_t seed) : m_random(seed) {}

  unsigned below(unsigned limit) { return static_cast<unsigned>(m_random() % limit); }
  bool oneIn(unsigned chances) { return below(chances) == 0; }

  std::string file() {
    std::string text;
    for (unsigned sections = below(7); sections > 0; --sections) {
      text += oneIn(12) ? garbage() : section();
    }
    for (unsigned spoils = oneIn(3) ? 1 + below(4) : 0; spoils > 0 && !text.empty(); --spoils) {
      spoil(text);
    }
    return withLineEnds(text);
  }

 private:
  std::string pick(const std::vector<std::string>& choices) {
    return choices[below(static_cast<unsigned>(choices.size()))];
  }

  std::string section() {
    const unsigned kind = below(9);
    static const std::vector<std::string> names = {"File_Info",      "Model",       "MEG_Sphere",
                                                   "Dipoles",        "Fit_Results", "Dipole_Flags",
                                                   "Dipole_FitInfo", "Fid_Points",  "Params"};
    std::string name = names[kind];
    if (oneIn(15)) {
      name = pick({"dipoles", "DIPOLES", " Dipoles", "fit_results", "MODEL", "Dipoles ", "MRI_Fid_Points"});
    }
    std::string text = name + "\n" + pick({"{\n", "{\n", "\t{\n", "", "{ // begin\n"});
    for (unsigned rows = below(6); rows > 0; --rows) {
      text += row(oneIn(20) ? below(9) : kind);
    }
    return text + pick({"}\n", "}\n", "}\n", "\t}\n", "} end\n", "}}\n", "", "}{\n"});
  }

  std::string row(unsigned kind) {
    if (oneIn(12)) {
      return pick(
          {"// a comment\n", "\n", " \n", "{\n", "x: y\n", "//\n", "1:\n", "noise } noise\n", "a:b:c\n"});
    }
    switch (kind) {
      case 0:
        return pick({"VERSION:", "\tVERSION:\t", "PATIENT:", "  PATIENT: ", "PATIENT:VERSION:", "DATE:"}) +
               word() + "\n";
      case 1:
        return pick({"MODEL_TYPE:\tMEG_ONLY\n", "MODEL_TYPE:\tMEG_EEG\n", "MRI_FILE:\t" + word() + "\n"});
      case 2:
        return pick({"", "\t"}) + pick({"ORIGIN_X:", "ORIGIN_Y:", "ORIGIN_Z:", "RADIUS:"}) +
               pick({"\t", " ", ""}) + pick({"0.45", "0.1", "5.35", "8.6", "8", "9.3", "-1", "x", ""}) + "\n";
      case 3:
        return oneIn(4) ? unit() : number() + colon() + reals(7) + labelOrNot() + "\n";
      case 4:
        return oneIn(4)
                   ? unit()
                   : number() + colon() + integers(2) + reals(9) + (oneIn(12) ? "" : labelOrNot()) + "\n";
      case 5:
        return number() + colon() + integers(5) + "\n";
      case 6:
        return number() + colon() + integers(2) + reals(1) + integers(1) + reals(1) + integers(3) +
               labelOrNot() + "\n";
      case 7:
        return pick({"NASION:", "LEFT_EAR:", "RIGHT_EAR:", "LEFT_EAR x:", "NASION", "INION:"}) + integers(3) +
               "\n";
      default:
        return garbage();
    }
  }

  std::string unit() {
    return pick({"// xp (cm) Mom(nAm)\n", "(cm)\n", "// Latency (s) xp (cm) (nAm)\n", "(s) (cm)\n", "(nAm)\n",
                 "xp (mm)\n", "(cm) }\n"});
  }
  std::string number() { return pick({"", "\t", " "}) + std::to_string(below(40)); }
  std::string colon() { return oneIn(25) ? pick({" : ", "::", " "}) : ":"; }
  std::string blank() { return pick({" ", "\t", "  "}); }
  std::string integers(unsigned count) {
    std::string text;
    for (; count > 0; --count) {
      text +=
          blank() + (oneIn(40) ? pick({"1.5", "x", "-", "99999999999"}) : std::to_string(int(below(9)) - 1));
    }
    return text;
  }
  std::string reals(unsigned count) {
    std::string text;
    for (; count > 0; --count) {
      text += blank() + (oneIn(40) ? pick({"inf", "nan", "1e9", "x", "-.", "45", "0x1p3", "1e"})
                                   : std::to_string((double(below(2000)) - 1000) / 64));
    }
    return text;
  }
  std::string word() {
    std::string text;
    for (unsigned length = 1 + below(9); length > 0; --length) {
      text += oneIn(9) ? static_cast<char>(0x80 + below(0x80)) : static_cast<char>('A' + below(50));
    }
    return oneIn(300) ? text + std::string(below(5000), 'w') : text;
  }
  std::string labelOrNot() { return oneIn(3) ? pick({"", " ", "\t"}) : blank() + word(); }

  std::string garbage() {
    std::string text;
    for (unsigned length = below(60); length > 0; --length) {
      text += static_cast<char>(below(256));
    }
    return text + "\n";
  }

  void spoil(std::string& text) {
    const std::size_t place = m_random() % text.size();
    switch (below(4)) {
      case 0:
        text.erase(place, 1 + below(20));
        break;
      case 1:
        text.insert(place, pick({"}", "{", "//", "\n", "(cm)", std::string(1, '\0'), "\r\n", ":"}));
        break;
      case 2:
        text.resize(place);
        break;
      default:
        text.insert(place, text.substr(place / 2, below(200)));
        break;
    }
  }

  std::string withLineEnds(const std::string& text) {
    const std::string end = pick({"\n", "\n", "\r\n", "\r"});
    std::string result;
    for (const char c : text) {
      result += c == '\n' ? end : std::string(1, c);
    }
    return result;
  }

  std::mt19937 m_random;
};

bool sameNumber(double left, double right) {
  return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right) ||
         (left != left && right != right);
}

bool sameTriple(const double (&left)[3], const std::array<double, 3>& right) {
  return sameNumber(left[0], right[0]) && sameNumber(left[1], right[1]) && sameNumber(left[2], right[2]);
}

bool sameText(const CString& text, const std::string& bytes) {
  return text == CString(bytes.c_str());
}

bool sameDipole(const CDipoleszq& dipole, const OracleDipole& expected) {
  const bool backup =
      !expected.backedUp || (sameTriple(dipole.m_rawLocation.m_center, expected.location) &&
                             sameTriple(dipole.m_rawOrientation.m_center, expected.orientation));
  return backup && dipole.m_rawLocation.m_radius == (expected.backedUp ? 1.0 : 0.0) &&
         dipole.m_number == expected.number && dipole.m_id == expected.id &&
         dipole.m_fitTag == expected.fitTag && sameNumber(dipole.m_latency, expected.latency) &&
         sameNumber(dipole.m_fitError, expected.fitError) &&
         sameTriple(dipole.m_location, expected.location) &&
         sameTriple(dipole.m_orientation, expected.orientation) &&
         sameNumber(dipole.m_moment, expected.moment) && sameText(dipole.m_label, expected.label) &&
         dipole.m_display == expected.display &&
         std::equal(expected.color.begin(), expected.color.end(), dipole.m_colorF);
}

void compareSets(const CtfImporter& set, const CtfOracle& expected) {
  EXPECT_EQ(set.m_totalDipoles, expected.total);
  EXPECT_EQ(set.m_currentDipole, expected.current);
  EXPECT_EQ(set.m_importFirst, expected.importFirst);
  EXPECT_EQ(set.m_importEnd, expected.importEnd);
  EXPECT_TRUE(sameText(set.m_fileVersion, expected.version));
  EXPECT_TRUE(sameText(set.m_patient, expected.patient));
  EXPECT_TRUE(sameText(set.m_mriFile, expected.mri));
  EXPECT_EQ(set.m_megOnly, expected.megOnly);
  EXPECT_EQ(set.m_coordinateType, expected.coordinateType);
  EXPECT_EQ(set.m_momentInNAm, expected.momentInNAm);
  EXPECT_EQ(set.m_bCtfSphereSet != 0, expected.sphereSet);
  EXPECT_TRUE(sameTriple(set.m_sphereCtf.m_center, expected.sphereOrigin));
  EXPECT_TRUE(sameNumber(set.m_sphereCtf.m_radius, expected.sphereRadius));
  EXPECT_TRUE(sameTriple(set.m_sphereLocational.m_center, {0, 0, 0}));
  EXPECT_TRUE(sameNumber(set.m_sphereLocational.m_radius, expected.sphereRadius));
  for (int point = 0; point < CFiducial::totalPoints; ++point) {
    for (const auto& [fiducials, points] : {std::pair{&set.m_fiducialMri, &expected.mriPoints},
                                            std::pair{&set.m_fiducialCtf, &expected.headPoints}}) {
      const auto found = points->find(point);
      double actual[3];
      EXPECT_EQ(fiducials->m_points[point].getPosition(actual[0], actual[1], actual[2]) == 1,
                found != points->end());
      EXPECT_TRUE(sameTriple(actual, found == points->end() ? std::array<double, 3>{} : found->second));
    }
  }
  for (int slot = 0; slot < DipoleTable::capacity; ++slot) {
    const auto found = expected.slots.find(slot);
    if (found == expected.slots.end()) {
      EXPECT_EQ(set.m_dipoles[slot], nullptr) << slot;
    } else if (set.m_dipoles[slot] == nullptr || !sameDipole(*set.m_dipoles[slot], found->second)) {
      ADD_FAILURE() << "the dipole of slot " << slot << " differs";
    }
  }
}

}  // namespace

// DIPOLE_FILES sets how many collections are filled (4000 without it).
TEST(CtfProperty, RandomFilesGiveWhatTheProcedureSays) {
  const char* wanted = std::getenv("DIPOLE_FILES");
  const unsigned count = wanted == nullptr ? 4000U : static_cast<unsigned>(std::strtoul(wanted, nullptr, 10));
  const TempFolder folder;
  unsigned imported = 0;
  for (unsigned seed = 1; seed <= count && !testing::Test::HasFailure(); ++seed) {
    RandomFiles random(seed);
    CtfOracle expected;
    ScriptedOperator user;
    for (int i = 0; i < 500; ++i) {
      expected.answers.push_back(!random.oneIn(4));
      user.answer(expected.answers.back() ? IDYES : IDNO);
    }
    const auto set = std::make_unique<CtfImporter>();
    std::vector<std::string> files;
    std::vector<CString> paths;
    for (unsigned file = 0; file < 1 + random.below(3); ++file) {
      files.push_back(random.file());
      paths.push_back(folder.write(std::to_string(file) + ".dip", files.back()));
    }
    expected.importFiles(files);
    user.answerFiles(paths);
    ASSERT_EQ(set->importCTFDipoles(), 1);
    EXPECT_EQ(user.texts(), expected.messages);
    compareSets(*set, expected);
    imported += expected.total > 0 ? 1 : 0;
    if (testing::Test::HasFailure()) {
      for (const std::string& file : files) {
        std::cerr << "file of seed " << seed << ":\n" << file << "\n";
      }
    }
  }
  EXPECT_GT(imported, count / 4);
}
