#include "tests/record/DipoleMembers.h"

#include <concepts>
#include <cstdio>

#include "platform/Utf.h"

namespace {

std::string shown(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.17g", value);
  return text;
}

std::string shown(float value) {
  return shown(static_cast<double>(value));
}

std::string shown(bool value) {
  return value ? "true" : "false";
}

template <std::integral Value>
std::string shown(Value value) {
  return std::to_string(value);
}

std::string shown(const CString& text) {
  return toUtf8(text);
}

template <class Value>
std::string shown(const Value (&values)[3]) {
  return shown(values[0]) + " " + shown(values[1]) + " " + shown(values[2]);
}

std::string shown(const CSpherezq& s) {
  return shown(s.m_center) + " r " + shown(s.m_radius) + " " + shown(s.m_auxInt[0]) + " " +
         shown(s.m_auxInt[1]) + " " + shown(s.m_auxText);
}

void fill(CSpherezq& s, double first) {
  s.m_center[0] = first;
  s.m_center[1] = first + 0.25;
  s.m_center[2] = first + 0.5;
  s.m_radius = 1.0;
  s.m_auxInt[0] = static_cast<int>(first) + 1;
  s.m_auxInt[1] = static_cast<int>(first) + 2;
  s.m_auxText = _T("kept");
}

template <class Value>
void set(Value (&values)[3], double first) {
  values[0] = static_cast<Value>(first);
  values[1] = static_cast<Value>(first + 0.25);
  values[2] = static_cast<Value>(first + 0.5);
}

}  // namespace

MemberValues membersOf(const CDipoles& dipole) {
  MemberValues all;
  visitMembers(dipole, [&](const char* name, const auto& value) { all[name] = shown(value); });
  return all;
}

void fillMembers(CDipoles& d) {
  d.m_number = 1001;
  d.m_listItemId = 1002;
  d.m_show = 1003;
  d.m_showOrientation = 1004;
  d.m_color = 0xFE0003ED;
  set(d.m_colorF, 1006.0);
  d.m_id = 1007;
  d.m_fitTag = 1008;
  d.m_extraFlag = 1009;
  d.m_latency = 1010.5;
  d.m_extraValue = 1011.5;
  d.m_fitError = 1012.5;
  d.m_label = _T("spike 13");
  d.m_display = 1014;
  d.m_selected = true;
  set(d.m_location, 1015.0);
  d.m_size = 1016.5;
  d.m_segments = 1017;
  set(d.m_orientation, 1018.0);
  d.m_moment = 1019.5;
  d.m_scale = 1020.5;
  d.m_orientationScale = 1021.5;
  d.m_orientationLength = 1022.5;
  d.m_dimY = 1023;
  d.m_dimX = 1024;
  d.m_dimZ = 1025;
  d.m_importTag1 = 1026.5F;
  d.m_importTag2 = 1027.5F;
  fill(d.m_rawLocation, 1028.0);
  fill(d.m_rawOrientation, 1029.0);
}
