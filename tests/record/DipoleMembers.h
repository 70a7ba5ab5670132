// Every member of a dipole by name: for filling one with values that are all different, and for comparing
// two.
#pragma once

#include <map>
#include <string>

#include "record/Dipoles.h"

// Hands every member to `visit` as a name and a value.
template <typename Visit>
void visitMembers(const CDipoles& d, Visit visit) {
  visit("m_number", d.m_number);
  visit("m_listItemId", d.m_listItemId);
  visit("m_show", d.m_show);
  visit("m_showOrientation", d.m_showOrientation);
  visit("m_color", d.m_color);
  visit("m_colorF", d.m_colorF);
  visit("m_id", d.m_id);
  visit("m_fitTag", d.m_fitTag);
  visit("m_extraFlag", d.m_extraFlag);
  visit("m_latency", d.m_latency);
  visit("m_extraValue", d.m_extraValue);
  visit("m_fitError", d.m_fitError);
  visit("m_label", d.m_label);
  visit("m_display", d.m_display);
  visit("m_selected", d.m_selected);
  visit("m_location", d.m_location);
  visit("m_size", d.m_size);
  visit("m_segments", d.m_segments);
  visit("m_orientation", d.m_orientation);
  visit("m_moment", d.m_moment);
  visit("m_scale", d.m_scale);
  visit("m_orientationScale", d.m_orientationScale);
  visit("m_orientationLength", d.m_orientationLength);
  visit("m_dimY", d.m_dimY);
  visit("m_dimX", d.m_dimX);
  visit("m_dimZ", d.m_dimZ);
  visit("m_importTag1", d.m_importTag1);
  visit("m_importTag2", d.m_importTag2);
  visit("m_rawLocation", d.m_rawLocation);
  visit("m_rawOrientation", d.m_rawOrientation);
}

// Values as text that tells any two apart; numbers that are none compare equal to themselves.
using MemberValues = std::map<std::string, std::string>;

MemberValues membersOf(const CDipoles& dipole);

// Gives every member a value that is neither its initial one nor another member's.
void fillMembers(CDipoles& dipole);
