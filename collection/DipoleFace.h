// Layer 1 of the dipole collection: the table of dipoles, the current dipole, and every set-wide member.
//
// The collection owns up to 30000 dipoles in slots 0 .. m_totalDipoles-1 of a fixed table, so it is large
// and lives on the heap. A slot inside that range may be empty between deleteDipole(i, 0) and the next
// reOrderDipoles or reSortDipoles. Slots behind the range may hold objects that an import left there for
// reuse; they are owned too. Locations are mm in the host's head frame (x left, y up, z front), see
// record/Dipoles.h. An index of -1 stands for the current dipole where an operation says so.
//
// Ownership of copies. A copied or assigned collection holds the same dipole objects as its original: a view
// of the same set. A dipole is destroyed when the last collection that holds it lets it go (by a delete, by
// cleanDipoles, by an import over its slot, by destruction), so either may be destroyed first. Changes inside
// a dipole are seen through both; slots, count and current dipole are each collection's own.
//
// Exceptions. Memory that runs out is CMemoryException* or std::bad_alloc. Here only what copies throws it:
// constructors, assignment, getMriName, and the text that a caller makes for setDipoleName. The layers say
// what theirs throw beyond that; what they do not name throws nothing. What a host's own message box or
// callback throws passes through, so it must not throw.
//
// Results are 1 for success and 0 for failure unless an operation says otherwise; the odd ones are kept on
// purpose, hosts rely on them.
#pragma once

#include <afxwin.h>

#include <memory>

#include "collection/DipoleTable.h"
#include "headmodel/Fiducialzq.h"
#include "headmodel/Spherezq.h"

class AFX_EXT_CLASS CDipoleFace {
 public:
  CDipoleFace();
  CDipoleFace(const CDipoleFace&);                   // a view, see above
  CDipoleFace& operator=(const CDipoleFace& other);  // whole, or without memory not at all
  virtual ~CDipoleFace();

  // Adding. Each puts a new dipole into slot m_totalDipoles, makes it the current one and returns the new
  // count. A full table shows "No more dipole space", exhausted memory "Not enough memory"; both return 0
  // and change nothing.
  int addDipole();  // at m_allDipoleRange
  int addDipoleF(float x, float y, float z);
  // From a location (mm), a moment vector and a fit error (percent). The orientation is the vector over its
  // length; a zero vector is deliberately not guarded against and gives NaN. 0 without a message when a
  // pointer is null, also when the table is full.
  int addDipolePME(const double* position, const double* moment, double fitError);
  // From a template, by the partial assignment of CDipoleszq. 0 without a message when it is null.
  int addDipolex(const CDipoleszq* source);

  // Takes the raw backup of every dipole, see CDipoles::backUpLocationRotationRaw. Returns 1.
  int backupLocationRotationRaw();

  // Destroys every dipole, those behind the count included. Count 0, current -1. Returns 1.
  int cleanDipoles();

  // Destroys the current dipole and closes the gap; the dipole behind it becomes the current one, or the last
  // one. Returns 1, also when there is nothing to delete.
  int deleteCurrentDipole();

  // Destroys the dipole of an index, clamped into the range. A shift other than 0 closes the gap; with 0 the
  // count stays and the slot is empty until reOrderDipoles. Returns 1, also when there is nothing to delete.
  int deleteDipole(int index, int shift);

  CDipoleszq* getCurrentDipole() const;  // null when there is none
  int getCurrentDipoleID() const;
  CDipoleszq* getDipole(int index) const;  // -1: the current one; null when there is none

  // The dipole's row in the manager's list, -1 when there is no such dipole. The test is deliberately on the
  // current index too: without a current dipole the answer is always -1.
  int getDipoleListItemID(int index) const;

  // Write the location (mm) or the orientation; -1: of the current dipole. Without it zeros, and 0.
  int getDipoleLocation(int index, double& x, double& y, double& z) const;
  int getDipoleOrientation(int index, float& x, float& y, float& z) const;
  int getDipoleOrientationD(int index, double& x, double& y, double& z) const;
  double getDipoleOrientationLength(int index) const;  // 0.0 without such a dipole

  // The largest coordinate of the set without its sign, mm; 0.0 for an empty set. The extremes along y are
  // deliberately updated where x, not y, lies beyond them: hosts scale their views by this value.
  float getMaxDipoleRange() const;

  CFiducialzq* getMriFiducialVoxel();
  CString getMriName() const;

  // Step the current dipole with wrap-around and return its slot, which may be empty. An empty collection
  // shows "No dipole available" and gives null.
  CDipoleszq* getNextDipole();
  CDipoleszq* getPreviousDipole();

  unsigned long getTotalDipoles() const;

  // Close the gaps of deleteDipole(i, 0), keeping the order; a current index beyond the end becomes the last.
  // reOrderDipoles also numbers the dipoles 1, 2, ... and ends with current -1 when nothing is left,
  // reSortDipoles deliberately with current 0. Both return 1.
  int reOrderDipoles();
  int reSortDipoles();

  // Makes an index, clamped into the range, the current one. An empty collection shows "No dipole available"
  // and gives 0.
  int setCurrentDipole(int index);

  // Setters by index, -1 for the current dipole. Colour, list row and name return 1 even without such a
  // dipole; location (mm) and orientation (not normalised) return 0 then.
  int setDipoleColor(int index, COLORREF color);
  int setDipoleListItemID(int index, int id);
  int setDipoleLocation(int index, float x, float y, float z);
  int setDipoleName(int index, CString name);
  int setDipoleOrientation(int index, float x, float y, float z);

  // Selects or deselects; here -1 is out of range. 0 when the index is out of range, 1 for an empty slot.
  int setDipoleSelection(int index, bool selected);

  // Deliberately does nothing else than return 1.
  int traceDipoleSphere();

  int m_currentDipole = 0;  // -1: none; 0 in a new collection although it holds nothing
  int m_totalDipoles = 0;
  DipoleTable m_dipoles;     // hosts read it, by getDipole best; count, current dipole and windows do not
                             // follow what is written here
  double m_faceValue = 0.0;  // kept and archived, without a meaning here
  int m_showDipoleOrientationAll = 0;
  double m_allDipoleRange[3] = {100.0, 100.0, 100.0};  // where addDipole puts a dipole, mm
  int m_bCtfSphereSet = 0;                             // not 0 once a CTF head sphere was read
  CString m_fileVersion = _T("non");                   // of the last imported file
  CString m_patient = _T("non");                       // of the last imported file
  CString m_mriFile = _T("non");                       // of the last import
  int m_megOnly = 0;                                   // 1: the imported head model is for MEG alone
  int m_coordinateType = 0;                            // 3 once an import set it
  int m_momentInNAm = 0;                               // 1: imported moments are nAm
  bool m_skipFiducialSetup = false;                    // true: a CTF import does not call setCtfFiducial
  int m_showCurrentDipoleOnly = 0;
  int m_showDipoleLatencySelected = 0;
  int m_showDipole2DOverlap = 1;
  float m_mergeRadius = 0.0F;  // mm
  int m_showFiducialPt = 1;
  int m_showDipoleArray = 1;
  int m_dimension[3] = {};       // volume size in voxels, in the order y, x, z
  double m_space[3] = {};        // voxel spacing x, y, z, mm
  CSpherezq m_sphereLocational;  // centre: whole-set translation, mm; radius: head sphere in use, mm
  CSpherezq m_sphereCtf;         // head sphere as a CTF file gave it, host axes, mm
  CSpherezq m_sphereRotation;    // centre: whole-set rotation, degrees
  CSpherezq m_sphereMriAngles;   // centre: registration angles, degrees
  CFiducialzq m_fiducialMri;     // MRI voxels
  CFiducialzq m_fiducialCtf;     // mm, head frame
  int (*m_cbfDipoleXYZ)(double x, double y, double z, double latency) = nullptr;
  int (*m_cbfUpdateViewers)(bool) = nullptr;
  CString m_managerTitle = _T("Dipole Manager");

 protected:
  // The one place that makes a dipole, by default with the initial values, else from a template by the
  // partial assignment of CDipoleszq. Empty when memory is exhausted.
  static std::unique_ptr<CDipoleszq> makeDipole(const CDipoleszq* source = nullptr);

  int firstFilledSlot() const;  // m_totalDipoles when there is none

  // Puts a dipole into slot m_totalDipoles, over whatever an earlier import left there, counts it and makes
  // it the current one. Returns the new count.
  int appendDipole(std::unique_ptr<CDipoleszq> dipole);

 private:
  CDipoleFace& operator=(CDipoleFace&&) = default;

  std::unique_ptr<CDipoleszq> makeDipoleToAdd(const CDipoleszq* source = nullptr);
  void removeSlot(int slot);
  int compact();
};
