#include "collection/DipoleFace3On3DView.h"

CDipoleFace3On3DView::CDipoleFace3On3DView() {
  m_showCurrentDipoleOnly = 0;
  m_mergeRadius = 15.0F;
}

CDipoleFace3On3DView::~CDipoleFace3On3DView() = default;
