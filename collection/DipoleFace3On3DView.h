// Layer 4 of the dipole collection: answers for the host's 3D view.
#pragma once

#include "collection/DipoleFace2On2DView.h"

class CDipoleFace3On3DView : public CDipoleFace2On2DView {
 public:
  CDipoleFace3On3DView();  // not the current dipole alone; merge radius 15 mm
  CDipoleFace3On3DView(const CDipoleFace3On3DView&) = default;
  CDipoleFace3On3DView& operator=(const CDipoleFace3On3DView&) = default;
  ~CDipoleFace3On3DView() override;
};
