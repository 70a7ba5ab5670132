// The three views in which a collection draws its overlay, and dipoles for them.
#pragma once

#include "collection/DipoleFace2On2DView.h"

using Face = CDipoleFace2On2DView;

inline void addAt(Face& face, double x, double y, double z) {
  face.addDipole();
  double(&location)[3] = face.getDipole(-1)->m_location;
  location[0] = x;
  location[1] = y;
  location[2] = z;
}

struct View {
  const char* name;
  int (Face::*draw)(CDC*, int, int);
  int (CDipoles3Display2D::*glyph)(CDC*, double, double, int, double, double, double, double);
  int slab;   // axis
  int first;  // in-plane axes
  int second;
};

inline const View views[] = {
    {"axial", &Face::drawDipoleAxial, &CDipoles3Display2D::drawDipoleAxial, 1, 0, 2},
    {"coronal", &Face::drawDipoleCoronal, &CDipoles3Display2D::drawDipoleCoronal, 2, 0, 1},
    {"sagittal", &Face::drawDipoleSagittal, &CDipoles3Display2D::drawDipoleSagittal, 0, 1, 2}};
