// Layer 2 of the dipole collection: operations on the whole set.
//
// The whole-set translation (mm) and rotation (degrees) are kept beside the set, in m_sphereLocational and
// m_sphereRotation; the stored locations stay as they are. docs/registration.md shows the frames and the
// arithmetic of the registration.
#pragma once

#include "collection/DipoleFace.h"

class AFX_EXT_CLASS CDipoleFace1Process : public CDipoleFace {
 public:
  CDipoleFace1Process();
  CDipoleFace1Process(const CDipoleFace1Process&);
  CDipoleFace1Process& operator=(const CDipoleFace1Process&);
  ~CDipoleFace1Process() override;

  // The whole-set translation, mm, and rotation, degrees about x, y, z. Return 1.
  int getAllDipoleLocational(double& x, double& y, double& z) const;
  int setAllDipoleLocational(double x, double y, double z);
  int getAllDipoleRotation(double& x, double& y, double& z) const;
  int setAllDipoleRotation(double x, double y, double z);

  // Where addDipole puts a new dipole, mm. Returns 1.
  int setAllDipoleRange(double x, double y, double z);

  // Puts the imported head sphere, by its radius, into the middle of a volume of the given extents (mm): the
  // translation becomes half of what the extents exceed the sphere's diameter by. Returns 1; without a head
  // sphere shows "Please set the dipole fiducial points first!" and returns 0, and nothing changes.
  int registerMRI_DimensionFit(double extentX, double extentY, double extentZ);

  // Registers the set to an MRI by its fiducials (mm from the volume's corner: voxels times spacing) and the
  // volume's size (voxels) and spacing (mm).
  // Takes every dipole's raw backup where none was taken; with applyRotation puts every dipole back to its
  // raw location and stores the registration angles; rewrites m_fiducialCtf in the registered frame; ends
  // with the translation and rotation zeroed and the radius of `sphere` in m_sphereLocational. The comparison
  // with `reference` is deliberately without consequence. No pointer may be null, but `reference`. Returns 1;
  // asks for no memory, so it is never left half done.
  int transferDipole3D_MRIFit(const CFiducialzq* mri, bool applyRotation, const CFiducialzq* reference,
                              const CSpherezq* sphere, int dimensionX, int dimensionY, int dimensionZ,
                              float voxelX, float voxelY, float voxelZ);

  // Reorders the dipoles, ascending, by a column of the manager's list:
  //   0 m_number, 1 m_latency, 2..4 m_location x, y, z, 5..7 m_orientation x, y, z, 8 m_fitError, 9 m_moment
  // The order is that of a selection sort which keeps its minimum in single precision, exactly
  // (collection/SelectionOrder.h): hosts know its order of ties. The current index stays, so another dipole
  // may be current afterwards. Empty slots stay where they are. Any other key changes nothing. Returns 1.
  // Without memory it takes quadratic time, seconds for a full table, to the same order.
  int sortDipoles(int key);

 private:
  void restoreRawLocations();
  template <typename Minimum, typename KeyOf>
  void sortBy(KeyOf keyOf);
  template <typename Minimum, typename KeyOf>
  void sortQuickly(KeyOf keyOf);
  template <typename Minimum, typename KeyOf>
  void sortLiterally(KeyOf keyOf);
};
