// The dipole that the collection owns; see Dipoles.h for its data, units and frame.
#pragma once

#include "record/Dipoles4File.h"

class AFX_EXT_CLASS CDipoleszq : public CDipoles4File {
 public:
  CDipoleszq();
  CDipoleszq(const CDipoleszq&);  // every member

  // Deliberately partial, unlike the assignment of the base layers: it takes over what describes the dipole
  // and leaves m_extraFlag, m_extraValue, m_selected, m_segments, the slice extents, both import tags and
  // both raw backups as they are. The collection relies on it when it adds a dipole from a template.
  CDipoleszq& operator=(const CDipoleszq& other);

  ~CDipoleszq() override;
};
