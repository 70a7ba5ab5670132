#include "record/Dipoleszq.h"

#include <algorithm>
#include <iterator>

CDipoleszq::CDipoleszq() = default;
CDipoleszq::CDipoleszq(const CDipoleszq&) = default;
CDipoleszq::~CDipoleszq() = default;

CDipoleszq& CDipoleszq::operator=(const CDipoleszq& other) {
  if (this == &other) {
    return *this;
  }
  std::copy(std::begin(other.m_location), std::end(other.m_location), m_location);
  m_size = other.m_size;
  std::copy(std::begin(other.m_orientation), std::end(other.m_orientation), m_orientation);
  m_orientationScale = other.m_orientationScale;
  m_orientationLength = other.m_orientationLength;
  std::copy(std::begin(other.m_colorF), std::end(other.m_colorF), m_colorF);
  m_color = other.m_color;
  m_display = other.m_display;
  m_scale = other.m_scale;
  m_showOrientation = other.m_showOrientation;
  m_show = other.m_show;
  m_latency = other.m_latency;
  m_fitTag = other.m_fitTag;
  m_id = other.m_id;
  m_moment = other.m_moment;
  m_label = other.m_label;
  m_listItemId = other.m_listItemId;
  m_number = other.m_number;
  m_fitError = other.m_fitError;
  return *this;
}
