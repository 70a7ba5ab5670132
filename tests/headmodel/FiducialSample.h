// A set of fiducial points that differ in everything, and its archive record.
#pragma once

#include <string>

#include "headmodel/Fiducialzq.h"
#include "tests/headmodel/ArchiveRecord.h"

// Differs from a number in its upper half, too.
inline LONGLONG wide(int low) {
  return (LONGLONG{low} << 32) - low;
}

// Every member of every point different from every other and from its initial value.
inline CFiducialzq sampleSet() {
  CFiducialzq set;
  double next = 1.0;
  for (CFiduciaryPtzq& point : set.m_points) {
    for (double& value : point.m_values) {
      value = next++;
    }
    point.m_value16 = static_cast<LONGLONG>(next++);
    point.m_value17 = static_cast<LONGLONG>(next++);
    for (double& value : point.m_values2) {
      value = next++;
    }
    point.m_int0 = static_cast<int>(next++);
    point.m_int1 = static_cast<int>(next++);
    point.m_int2 = static_cast<int>(next++);
    point.m_value18 = static_cast<LONGLONG>(next++);
    point.m_int3 = static_cast<int>(next++);
    point.m_label.Format(_T("P%d"), static_cast<int>(next++));
  }
  for (int& value : set.m_ints) {
    value = static_cast<int>(next++);
  }
  for (LONGLONG& value : set.m_tail) {
    value = wide(static_cast<int>(next++));
  }
  return set;
}

// The record of sampleSet, composed in the documented order.
inline Bytes sampleRecord() {
  ByteWriter writer;
  int next = 1;
  for (int point = 0; point < 6; ++point) {
    for (int i = 0; i < 16; ++i) {
      writer.value(static_cast<double>(next++));
    }
    writer.value(static_cast<LONGLONG>(next++));
    writer.value(static_cast<LONGLONG>(next++));
    for (int i = 0; i < 4; ++i) {
      writer.value(static_cast<double>(next++));
    }
    for (int i = 0; i < 3; ++i) {
      writer.value(next++);
    }
    writer.value(static_cast<LONGLONG>(next++));
    writer.value(next++);
    writer.text("P" + std::to_string(next++));
  }
  for (int i = 0; i < 4; ++i) {
    writer.value(next++);
  }
  for (int i = 0; i < 3; ++i) {
    writer.value(wide(next++));
  }
  return writer.bytes();
}
