// Commands on several dipoles at once: what the manager does with the rows that the user has selected.
//
// Dipoles are given by their slots, each once, ascending. Slots outside the collection and empty ones are
// left out. Locations are mm in the host's head frame, latencies ms, fit errors percent.
#pragma once

#include <optional>
#include <vector>

#include "collection/DipoleFace3On3DView.h"

using DipoleSlots = std::vector<int>;

// The dipoles whose list item is among the selected rows; a row stands for itself by its number. By
// getDipoleListItemID, so deliberately none when the collection has no current dipole.
DipoleSlots dipolesOfRows(const CDipoleFace& face, const std::vector<bool>& selectedRows);

// Likewise; and the selection flag of every dipole is set for these, cleared for all others. Without memory
// no flag changes.
DipoleSlots markRows(CDipoleFace& face, const std::vector<bool>& selectedRows);

// Removes the dipoles, closing the gaps once.
void deleteDipoles(CDipoleFace& face, const DipoleSlots& dipoles);

// As CDipoleFace3On3DView::setShowDipole for each: the last one shown becomes the current one.
void showDipoles(CDipoleFace3On3DView& face, const DipoleSlots& dipoles, int show);

void nameDipoles(CDipoleFace& face, const DipoleSlots& dipoles, const CString& name);
void colorDipoles(CDipoleFace& face, const DipoleSlots& dipoles, COLORREF color);

// What stands for several dipoles.
struct DipoleAverage {
  int count = 0;  // of dipoles; 0: nothing else is set
  double location[3] = {};
  double orientation[3] = {};  // the mean of the vectors: its length is not 1
  double latency = 0.0;
  double moment = 0.0;
  double fitError = 0.0;
  double size = 0.0;  // a third of the sum of the half extents of the box around the locations and the origin
};

DipoleAverage averageOf(const CDipoleFace& face, const DipoleSlots& dipoles);

// Adds the average behind the other dipoles, as addDipole does, with the label "AverageDipole_%d" (the count)
// and makes it the current one. Returns whether one was added: not without dipoles, not without room.
bool addAverage(CDipoleFace& face, const DipoleSlots& dipoles);

// Likewise with "AverageDipole%d", after removing the dipoles. The gaps of a collection that is not empty are
// closed in any case.
bool replaceByAverage(CDipoleFace& face, const DipoleSlots& dipoles);

// Dipoles for which a command was given that waits for its user, while the set may change. It holds them: one
// that is deleted meanwhile cannot be mistaken for a new one.
class ChosenDipoles {
 public:
  ChosenDipoles(const CDipoleFace& face, const DipoleSlots& dipoles);

  // Their slots as they are now, or nothing when one of them is not in the collection any more.
  std::optional<DipoleSlots> slotsIn(const CDipoleFace& face) const;

 private:
  std::vector<DipoleTable::Hold> m_dipoles;  // by address
};
