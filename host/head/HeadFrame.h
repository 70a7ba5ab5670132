// The head frame of the dipoles, in mm: the origin lies midway between the ears, x points to the left, y up,
// z to the front. z runs from the origin to the nasion; x lies in the plane of the three points, at a right
// angle to z, towards the left ear; y = z cross x. (The CTF programs name the same directions x front, y
// left, z up.) The other side is the scanner's frame in mm: right, anterior, superior positive.
#pragma once

#include "host/head/Affine.h"
#include "host/head/Vector3.h"

namespace host {

// The three points in scanner mm.
struct Fiducials {
  Vector3 nasion;
  Vector3 leftEar;
  Vector3 rightEar;
};

class HeadFrame {
 public:
  // Throws std::invalid_argument, naming the cause, when a point is not finite, the points lie too close
  // together or too far apart for a head in mm, or they lie nearly on one line. The same head and its mirror
  // image give three equally good points, so exchanged ears show only against the scanner's own sides: a left
  // ear that is not on the scanner's left of the right ear, or a nasion that is not in front of the ears, is
  // refused. A volume whose own sides are wrong is not noticed.
  explicit HeadFrame(const Fiducials& points);

  Vector3 toScanner(const Vector3& head) const { return m_toScanner(head); }
  Vector3 fromScanner(const Vector3& scanner) const { return m_fromScanner(scanner); }
  const Affine& toScanner() const { return m_toScanner; }
  const Affine& fromScanner() const { return m_fromScanner; }

  friend bool operator==(const HeadFrame&, const HeadFrame&) = default;

 private:
  Affine m_toScanner;
  Affine m_fromScanner;
};

}  // namespace host
