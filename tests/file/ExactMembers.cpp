#include "tests/file/ExactMembers.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>

#include "tests/record/DipoleMembers.h"
#include "tests/support/TestPlaces.h"

namespace {

std::string shown(int value) {
  return std::to_string(value);
}

std::string shown(COLORREF value) {
  return std::to_string(value);
}

std::string shown(LONGLONG value) {
  return std::to_string(value);
}

std::string shown(bool value) {
  return value ? "1" : "0";
}

std::string shown(double value) {
  char digits[20];
  std::snprintf(digits, sizeof digits, "%016llx",
                static_cast<unsigned long long>(std::bit_cast<std::uint64_t>(value)));
  return digits;
}

std::string shown(float value) {
  char digits[20];
  std::snprintf(digits, sizeof digits, "%08x", static_cast<unsigned>(std::bit_cast<std::uint32_t>(value)));
  return digits;
}

std::string shown(const CString& text) {
  std::string quoted = "\"";
  for (int i = 0; i < text.GetLength(); ++i) {
    const auto unit = static_cast<unsigned>(text[i]);
    if (unit >= 32 && unit < 127 && unit != '"' && unit != '\\') {
      quoted += static_cast<char>(unit);
    } else {
      char escape[12];
      std::snprintf(escape, sizeof escape, "\\u%04x", unit);
      quoted += escape;
    }
  }
  return quoted + "\"";
}

template <class Value, std::size_t count>
std::string shown(const Value (&values)[count]) {
  std::string all;
  for (const Value& value : values) {
    all += (all.empty() ? "" : " ") + shown(value);
  }
  return all;
}

class Listing {
 public:
  template <class Value>
  Listing& operator()(const std::string& name, const Value& value) {
    lines.push_back(name + " " + shown(value));
    return *this;
  }

  Listing& operator()(const std::string& name, const CSpherezq& s) {
    (*this)(name + ".m_center", s.m_center)(name + ".m_radius", s.m_radius);
    return (*this)(name + ".m_auxInt", s.m_auxInt)(name + ".m_auxText", s.m_auxText);
  }

  void fiducials(const std::string& name, const CFiducialzq& set) {
    int number = 0;
    for (const CFiduciaryPtzq& point : set.m_points) {
      std::string line = name + " point " + std::to_string(number++) + " " + shown(point.m_values) + " " +
                         shown(point.m_value16) + " " + shown(point.m_value17) + " " + shown(point.m_values2);
      line += " " + shown(point.m_int0) + " " + shown(point.m_int1) + " " + shown(point.m_int2);
      line += " " + shown(point.m_value18) + " " + shown(point.m_int3) + " " + shown(point.m_label);
      lines.push_back(std::move(line));
    }
    (*this)(name + " ints", set.m_ints)(name + " tail", set.m_tail);
  }

  Lines lines;
};

void fill(CSpherezq& s, double first, LPCTSTR text) {
  for (double& coordinate : s.m_center) {
    coordinate = first += 0.25;
  }
  s.m_radius = first + 0.25;
  s.m_auxInt[0] = static_cast<int>(first) + 50;
  s.m_auxInt[1] = static_cast<int>(first) + 51;
  s.m_auxText = text;
}

void fill(CFiducialzq& set, double first) {
  for (CFiduciaryPtzq& point : set.m_points) {
    for (double& value : point.m_values) {
      value = first += 1.0;
    }
    point.m_value16 = static_cast<LONGLONG>(first) << 33U;
    point.m_value17 = static_cast<LONGLONG>(first) << 34U;
    for (double& value : point.m_values2) {
      value = first += 1.0;
    }
    point.m_int0 = static_cast<int>(first) + 1000;
    point.m_int1 = static_cast<int>(first) + 1001;
    point.m_int2 = static_cast<int>(first) + 1002;
    point.m_value18 = static_cast<LONGLONG>(first) << 35U;
    point.m_int3 = static_cast<int>(first) + 1003;
    point.m_label.Format(_T("point %d"), static_cast<int>(first));
  }
  for (int& value : set.m_ints) {
    value = static_cast<int>(first += 1.0);
  }
  for (LONGLONG& value : set.m_tail) {
    value = static_cast<LONGLONG>(first += 1.0);
  }
}

template <class Value, std::size_t count>
void fill(Value (&values)[count], Value first) {
  for (Value& value : values) {
    value = first++;
  }
}

}  // namespace

Lines linesOf(const CDipoles& d) {
  Listing list;
  visitMembers(d, [&](const char* name, const auto& value) { list(name, value); });
  return list.lines;
}

Lines linesOf(const CDipoleFace& f) {
  Listing list;
  list("m_currentDipole", f.m_currentDipole)("m_totalDipoles", f.m_totalDipoles)("m_faceValue",
                                                                                 f.m_faceValue);
  list("m_showDipoleOrientationAll", f.m_showDipoleOrientationAll)("m_allDipoleRange", f.m_allDipoleRange);
  list("m_bCtfSphereSet", f.m_bCtfSphereSet)("m_fileVersion", f.m_fileVersion)("m_patient", f.m_patient);
  list("m_mriFile", f.m_mriFile)("m_megOnly", f.m_megOnly)("m_coordinateType", f.m_coordinateType);
  list("m_momentInNAm", f.m_momentInNAm)("m_skipFiducialSetup", f.m_skipFiducialSetup);
  list("m_showCurrentDipoleOnly", f.m_showCurrentDipoleOnly);
  list("m_showDipoleLatencySelected", f.m_showDipoleLatencySelected);
  list("m_showDipole2DOverlap", f.m_showDipole2DOverlap)("m_mergeRadius", f.m_mergeRadius);
  list("m_showFiducialPt", f.m_showFiducialPt)("m_showDipoleArray", f.m_showDipoleArray);
  list("m_dimension", f.m_dimension)("m_space", f.m_space)("m_managerTitle", f.m_managerTitle);
  list("callbacks", f.m_cbfDipoleXYZ != nullptr || f.m_cbfUpdateViewers != nullptr);
  list("m_sphereLocational", f.m_sphereLocational);
  list("m_sphereCtf", f.m_sphereCtf);
  list("m_sphereRotation", f.m_sphereRotation);
  list("m_sphereMriAngles", f.m_sphereMriAngles);
  list.fiducials("m_fiducialMri", f.m_fiducialMri);
  list.fiducials("m_fiducialCtf", f.m_fiducialCtf);
  for (int slot = 0; slot < DipoleTable::capacity; ++slot) {
    if (f.m_dipoles[slot] == nullptr && slot >= f.m_totalDipoles) {
      continue;
    }
    const std::string name = "slot " + std::to_string(slot) + " ";
    if (f.m_dipoles[slot] == nullptr) {
      list.lines.push_back(name + "empty");
      continue;
    }
    const Lines dipole = prefixed(name, linesOf(*f.m_dipoles[slot]));
    list.lines.insert(list.lines.end(), dipole.begin(), dipole.end());
  }
  return list.lines;
}

void fillMembers(CDipoleFace& f) {
  f.m_currentDipole = 1;
  f.m_faceValue = 2.5;
  f.m_showDipoleOrientationAll = 3;
  fill(f.m_allDipoleRange, 4.5);
  f.m_bCtfSphereSet = 7;
  f.m_fileVersion = _T("version 8");
  f.m_patient = _T("patient 9");
  f.m_mriFile = _T("file 10");
  f.m_megOnly = 11;
  f.m_coordinateType = 12;
  f.m_momentInNAm = 13;
  f.m_skipFiducialSetup = true;
  f.m_showCurrentDipoleOnly = 14;
  f.m_showDipoleLatencySelected = 15;
  f.m_showDipole2DOverlap = 16;
  f.m_mergeRadius = 17.5F;
  f.m_showFiducialPt = 18;
  f.m_showDipoleArray = 19;
  fill(f.m_dimension, 20);
  fill(f.m_space, 23.5);
  fill(f.m_sphereLocational, 100.0, _T("locational"));
  fill(f.m_sphereCtf, 200.0, _T("ctf"));
  fill(f.m_sphereRotation, 300.0, _T("rotation"));
  fill(f.m_sphereMriAngles, 400.0, _T("angles"));
  fill(f.m_fiducialMri, 1000.0);
  fill(f.m_fiducialCtf, 3000.0);
  f.m_managerTitle = _T("title 26");
}

Lines prefixed(const std::string& prefix, const Lines& lines) {
  Lines all;
  for (const std::string& line : lines) {
    all.push_back(prefix + line);
  }
  return all;
}

Lines differences(Lines before, Lines after) {
  std::sort(before.begin(), before.end());
  std::sort(after.begin(), after.end());
  Lines gone;
  Lines come;
  std::set_difference(before.begin(), before.end(), after.begin(), after.end(), std::back_inserter(gone));
  std::set_difference(after.begin(), after.end(), before.begin(), before.end(), std::back_inserter(come));
  Lines all = prefixed("- ", gone);
  for (const std::string& line : come) {
    all.push_back("+ " + line);
  }
  return all;
}

namespace {

std::string fileContent(const std::string& name) {
  std::ifstream file(testFolder() + "file/archives/" + name, std::ios::binary);
  EXPECT_TRUE(file) << name;
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

std::string archiveBytes(const std::string& name) {
  return fileContent(name + ".bin");
}

Lines archiveLines(const std::string& name) {
  std::istringstream text(fileContent(name + ".txt"));
  Lines lines;
  for (std::string line; std::getline(text, line);) {
    lines.push_back(line);
  }
  EXPECT_FALSE(lines.empty()) << name;
  return lines;
}
