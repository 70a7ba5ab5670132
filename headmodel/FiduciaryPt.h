// Layer 1 of a fiducial point: the data.
//
// A fiducial is an anatomical landmark (nasion, left ear, right ear). Its position is in MRI voxels or in mm
// of the host's head frame, as the set that holds it says. The module gives a meaning to the members named
// by the enumerators below; the others are carried along by copies and the archive.
#pragma once

#include <afx.h>

class AFX_EXT_CLASS CFiduciaryPt {
 public:
  enum ValueIndex { positionX = 4, positionY = 5, positionZ = 6 };  // elements of m_values
  enum Value2Index { size3D = 0 };                                  // element of m_values2

  CFiduciaryPt();
  CFiduciaryPt(const CFiduciaryPt&);
  CFiduciaryPt& operator=(const CFiduciaryPt&);
  CFiduciaryPt(CFiduciaryPt&&) noexcept;
  CFiduciaryPt& operator=(CFiduciaryPt&&) noexcept;
  virtual ~CFiduciaryPt();

  // Stores the position and marks the point as set; shape, size and label stay. Returns 1.
  int setPosition(double x, double y, double z);

  // Writes the position. Returns 1 when the point is set, else 0.
  int getPosition(double& x, double& y, double& z) const;

  bool isSet() const;

  double m_values[16] = {};
  LONGLONG m_value16 = 0;
  LONGLONG m_value17 = 0;
  double m_values2[4] = {};  // [size3D]: size in the 3D view, mm
  int m_int0 = 0;            // 1 once the point is set
  int m_int1 = 0;            // display shape code
  int m_int2 = 0;
  LONGLONG m_value18 = 0;
  int m_int3 = 0;
  CString m_label;
};
