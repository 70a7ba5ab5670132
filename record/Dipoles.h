// Layer 1 of the dipole record: the data of one equivalent current dipole and its geometry.
//
// Locations are mm in the host's head frame (origin between the ears, x to the left ear, y up, z to the
// nose), latencies ms, fit errors percent, moments as the source file gave them (the collection's
// m_momentInNAm tells whether that is nAm). All members are public data, read and written by the
// collection, the importers, the archive and the dialogs.
//
// Only the last layer, CDipoleszq, is ever created.
#pragma once

#include <afx.h>

#include "headmodel/Spherezq.h"

class AFX_EXT_CLASS CDipoles {
 public:
  CDipoles();
  CDipoles(const CDipoles&);
  CDipoles& operator=(const CDipoles&);  // every member
  virtual ~CDipoles();

  // Each writes its outputs and returns 1.
  int getDipoleLocation(float& x, float& y, float& z) const;  // mm, rounded to single precision
  int getDipoleLocationD(double& x, double& y, double& z) const;
  int getDipoleOrientation(double& x, double& y, double& z) const;

  // Stores the three components as given, without normalising them. Returns 1.
  int setDipoleOrientation(double x, double y, double z);

  double getDipoleMoment() const;
  int setDipoleMoment(double moment);  // returns 1

  // Subtracts an offset in mm from the location. Returns 1.
  int minusDipoleLocational(double dx, double dy, double dz);

  // Multiplies the location by whatever factor is given; importers give 10 for cm to mm. Returns 1.
  int positionCM2MM(float factor);

  // Scales the orientation to unit length, as exact as a length rounded to single precision allows. An
  // orientation whose length is zero or not finite stays as it is. Returns 0 in every case: the result
  // carries no information, and hosts rely on ignoring it.
  int normalizeOrientation1();

  // Saves location and orientation into the raw backups, each once: a backup that was taken is never
  // overwritten, until its sphere is zeroed again. Returns 1.
  int backUpLocationRotationRaw();

  // The largest signed coordinate of the location, mm. Signs count: (-50, -20, -30) gives -20.
  float getMaxDipoleRange() const;

  // Lets the user choose the colour in the system's colour dialog. Returns 1, also when cancelled. Here and
  // in chooseColor, as in copies, memory may run out; nothing else of this layer throws.
  int setColor();

  // The choice alone, for callers whose dipole may be gone afterwards. Returns false when cancelled.
  static bool chooseColor(COLORREF& color);

  // Sets m_color (0x00BBGGRR) and from it m_colorF, each byte / 256.
  void setColorValue(COLORREF color);

  // The display coordinates under a whole-set translation and rotation. Deliberately inert: it writes
  // nothing, so that the outputs keep what the caller had in them. Returns 1.
  int getDipoleXYZ(CSpherezq* translation, CSpherezq* rotation, double& x, double& y, double& z);

  // Deliberately draws nothing, the host's 3D view draws dipoles itself. Returns 0 for a dipole that
  // checkShow asks about and that is hidden, else 1.
  int drawDipole(CSpherezq* translation, CSpherezq* rotation, int checkShow);

  // Deliberately does nothing. Returns 1.
  int traceDipole();

  int m_number = 0;                        // 1-based position in the collection at the time of import
  int m_listItemId = -1;                   // row identifier in the manager's list
  int m_show = 1;                          // shown in the 3D view
  int m_showOrientation = 1;               // orientation arrow shown
  COLORREF m_color = 65535;                // glyph and list row, 0x00BBGGRR: yellow
  float m_colorF[3] = {1.0F, 1.0F, 0.0F};  // red, green, blue for the 3D view
  int m_id = 0;                            // identifier in the source file
  int m_fitTag = 0;                        // second integer of the source file's record
  int m_extraFlag = 1;
  double m_latency = 0.0;  // ms
  double m_extraValue = 1.0;
  double m_fitError = 0.2;  // percent
  CString m_label;          // initially "Non"
  int m_display = 1;        // the slice glyph is drawn only when this is 1; importers also use 0 and 2
  bool m_selected = false;  // selected in the manager
  double m_location[3] = {100.0, 100.0, 100.0};  // mm
  double m_size = 3.0;                           // side of the slice glyph, pixels
  int m_segments = 4;
  double m_orientation[3] = {1.0, 0.0, 1.0};  // not of unit length: hosts know this initial value
  double m_moment = 1.0;
  double m_scale = 1.0;
  double m_orientationScale = 1.0;
  double m_orientationLength = 30.0;  // length of the arrow in the 3D view
  int m_dimY = 0;                     // extents of the slice images in pixels; the next layer gives them
  int m_dimX = 0;                     // their initial value
  int m_dimZ = 0;
  float m_importTag1 = 0.0F;   // value of a 4D/MSI record
  float m_importTag2 = 0.0F;   // second value of a 4D/MSI record
  CSpherezq m_rawLocation;     // backup: m_center the location, m_radius 1.0 once taken, else 0.0
  CSpherezq m_rawOrientation;  // backup of the orientation in the same way

 private:
  // Entry points of a 3D drawing that the host has taken over. Each deliberately does nothing and returns 1.
  int drawCube(double x, double y, double z, double size);
  int drawCylinder(double x1, double y1, double z1, double x2, double y2, double z2, double radius1,
                   double radius2, double segments);
  int drawOrientation(double x, double y, double z);
  int drawPt(double x, double y, double z);
  int drawSphere(double x, double y, double z, double radius);
};

// What getDipoleXYZ does, for the module's own loops over every dipole: there, calling an exported operation
// for each would be most of the work.
inline int inertDisplayCoordinates(const CDipoles& /*dipole*/, const CSpherezq* /*translation*/,
                                   const CSpherezq* /*rotation*/, double& /*x*/, double& /*y*/,
                                   double& /*z*/) {
  return 1;
}
