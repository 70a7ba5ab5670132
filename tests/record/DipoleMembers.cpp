#include "tests/record/DipoleMembers.h"

#include <cstdio>

#include "platform/Utf.h"

namespace {

std::string number(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.17g", value);
  return text;
}

template <class Value>
std::string triple(const Value (&values)[3]) {
  return number(static_cast<double>(values[0])) + " " + number(static_cast<double>(values[1])) + " " +
         number(static_cast<double>(values[2]));
}

std::string sphere(const CSpherezq& s) {
  return triple(s.m_center) + " r " + number(s.m_radius) + " " + std::to_string(s.m_auxInt[0]) + " " +
         std::to_string(s.m_auxInt[1]) + " " + toUtf8(s.m_auxText);
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

MemberValues membersOf(const CDipoles& d) {
  return {{"m_number", std::to_string(d.m_number)},
          {"m_listItemId", std::to_string(d.m_listItemId)},
          {"m_show", std::to_string(d.m_show)},
          {"m_showOrientation", std::to_string(d.m_showOrientation)},
          {"m_color", std::to_string(d.m_color)},
          {"m_colorF", triple(d.m_colorF)},
          {"m_id", std::to_string(d.m_id)},
          {"m_fitTag", std::to_string(d.m_fitTag)},
          {"m_extraFlag", std::to_string(d.m_extraFlag)},
          {"m_latency", number(d.m_latency)},
          {"m_extraValue", number(d.m_extraValue)},
          {"m_fitError", number(d.m_fitError)},
          {"m_label", toUtf8(d.m_label)},
          {"m_display", std::to_string(d.m_display)},
          {"m_selected", d.m_selected ? "true" : "false"},
          {"m_location", triple(d.m_location)},
          {"m_size", number(d.m_size)},
          {"m_segments", std::to_string(d.m_segments)},
          {"m_orientation", triple(d.m_orientation)},
          {"m_moment", number(d.m_moment)},
          {"m_scale", number(d.m_scale)},
          {"m_orientationScale", number(d.m_orientationScale)},
          {"m_orientationLength", number(d.m_orientationLength)},
          {"m_dimY", std::to_string(d.m_dimY)},
          {"m_dimX", std::to_string(d.m_dimX)},
          {"m_dimZ", std::to_string(d.m_dimZ)},
          {"m_importTag1", number(static_cast<double>(d.m_importTag1))},
          {"m_importTag2", number(static_cast<double>(d.m_importTag2))},
          {"m_rawLocation", sphere(d.m_rawLocation)},
          {"m_rawOrientation", sphere(d.m_rawOrientation)}};
}

void fillMembers(CDipoles& d) {
  d.m_number = 1001;
  d.m_listItemId = 1002;
  d.m_show = 1003;
  d.m_showOrientation = 1004;
  d.m_color = 1005;
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
