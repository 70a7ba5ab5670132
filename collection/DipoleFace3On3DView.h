// Layer 4 of the dipole collection: answers for the host's 3D view.
//
// Display coordinates are what a dipole's getDipoleXYZ gives under the whole-set translation and rotation.
// That query is inert by design (record/Dipoles.h): every display coordinate below is the value that the
// output held before, 0.0 where an operation does not say otherwise.
#pragma once

#include "collection/DipoleFace2On2DView.h"

class AFX_EXT_CLASS CDipoleFace3On3DView : public CDipoleFace2On2DView {
 public:
  CDipoleFace3On3DView();  // all dipoles, not the current one alone; merge radius 15 mm
  CDipoleFace3On3DView(const CDipoleFace3On3DView&);
  CDipoleFace3On3DView& operator=(const CDipoleFace3On3DView&);
  ~CDipoleFace3On3DView() override;

  // The display coordinates of the current dipole. The outputs keep what the caller had in them. Returns 1,
  // also without a current dipole.
  int getCurrentDipoleXYZ(double& x, double& y, double& z);

  // The colour of the dipole picked at a point. Among all dipoles: the nearest one, the lowest slot among
  // equals, of those within the merge radius t along every axis; with m_showCurrentDipoleOnly the current
  // one, nearer than 2t, deliberately without the test along the axes. Returns 1 and red, green, blue, or 0
  // and zeros.
  int getDipolePtColorF(const double* point, float* color);

  // The display coordinates of the first dipole whose latency lies in low .. high (ms, both ends included).
  // The outputs are zeroed first. Returns 1, or 0 when there is none.
  int getDipoleXYZ4Latency(double low, double high, double& x, double& y, double& z);

  // The smallest display coordinate along each axis: a corner, not one dipole's place. The outputs keep what
  // the caller had in them and return 0 for an empty set, else 1.
  int getRightPosteriorInferiorDipole(double& x, double& y, double& z);

  // How many dipoles the host's 3D view shows: none with the whole set switched off, 1 with
  // m_showCurrentDipoleOnly (also when that dipole is hidden), else those with m_show.
  int getTotalDipolesShowed() const;

  int getShowFiducialPt() const;
  int setShowFiducialPt(int show);         // returns 1
  int setShowCurrentDipoleOnly(int show);  // returns 1
  int setShowAllDipole(int show);          // m_show of every dipole; returns 1

  // Shows or hides one dipole, -1: the current one. A shown dipole becomes the current one. When the current
  // one is hidden, the last slot that still is shown becomes the current one. The value is stored as given.
  // Returns 0 without such a dipole, 1 for an empty slot.
  int setShowDipole(int index, int show);

  int setShowDipoleOrientationAll(int show);  // the flag, and m_showOrientation of every dipole; returns 1

  int showAllDipole() const;  // 1 when the whole set is shown, else 0

  // Deliberately ignores the latencies and answers as showAllDipole does.
  int showLatencySelectedDipoles(float from, float to) const;

  // Deliberately does nothing. Returns 1.
  int setDipoleMaterialParameters(CWnd* parent);

 protected:
  // Asks the current dipole to draw itself, which is inert. Returns 1, also without one.
  int showCurrentDipole();

 private:
  struct Point {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
  };

  Point displayPoint(CDipoleszq& dipole);
  static double squaredDistance(const Point& p, const double* point);
  const CDipoleszq* pickCurrent(const double* point);
  const CDipoleszq* pickNearest(const double* point);
};
