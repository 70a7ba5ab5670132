#include "collection/DipoleFace1Process.h"

#include <cmath>

#include "collection/SelectionOrder.h"
#include "collection/WithinMemory.h"
#include "headmodel/Triple.h"
#include "record/Truncation.h"

namespace {

Triple positionOf(const CFiducial& fiducials, CFiducial::PointIndex point) {
  Triple position = {};
  fiducials.m_points[point].getPosition(position.x, position.y, position.z);
  return position;
}

// Half the extent of a volume along an axis, in single precision.
double halfExtent(int dimension, float voxel) {
  return static_cast<double>(static_cast<float>(dimension) * voxel * 0.5F);
}

// The middle between the ears, relative to the volume's centre, as a whole number: truncated, not rounded.
int wholeOrigin(double left, double right, double half) {
  return truncateToInt(((left + right) - (half + half)) * 0.5);
}

// A registration angle in degrees. The tangent, not the arc tangent, and this value of pi are deliberate:
// stored angles depend on them.
double registrationAngle(double opposite, double adjacent) {
  const auto tangent = static_cast<float>(std::tan(opposite / adjacent));
  const auto degrees = static_cast<double>(tangent * 180.0F) / 3.14159265358979;
  return static_cast<double>(static_cast<float>(degrees));
}

}  // namespace

CDipoleFace1Process::CDipoleFace1Process() {
  m_sphereRotation.zeroSphere();
}

CDipoleFace1Process::CDipoleFace1Process(const CDipoleFace1Process&) = default;
CDipoleFace1Process& CDipoleFace1Process::operator=(const CDipoleFace1Process&) = default;
CDipoleFace1Process::~CDipoleFace1Process() = default;

int CDipoleFace1Process::getAllDipoleLocational(double& x, double& y, double& z) const {
  const Triple centre = tripleOf(m_sphereLocational.m_center);
  x = centre.x;
  y = centre.y;
  z = centre.z;
  return 1;
}

int CDipoleFace1Process::setAllDipoleLocational(double x, double y, double z) {
  setTriple(m_sphereLocational.m_center, {x, y, z});
  return 1;
}

int CDipoleFace1Process::getAllDipoleRotation(double& x, double& y, double& z) const {
  const Triple centre = tripleOf(m_sphereRotation.m_center);
  x = centre.x;
  y = centre.y;
  z = centre.z;
  return 1;
}

int CDipoleFace1Process::setAllDipoleRotation(double x, double y, double z) {
  setTriple(m_sphereRotation.m_center, {x, y, z});
  return 1;
}

int CDipoleFace1Process::setAllDipoleRange(double x, double y, double z) {
  setTriple(m_allDipoleRange, {x, y, z});
  return 1;
}

int CDipoleFace1Process::registerMRI_DimensionFit(double extentX, double extentY, double extentZ) {
  if (m_bCtfSphereSet == 0) {
    AfxMessageBox(_T("Please set the dipole fiducial points first!"));
    return 0;
  }
  const double radius = m_sphereCtf.m_radius;
  const double diameter = 2.0 * radius;
  m_sphereLocational.m_radius = radius;
  setTriple(m_sphereLocational.m_center,
            {(extentX - diameter) * 0.5, (extentY - diameter) * 0.5, (extentZ - diameter) * 0.5});
  return 1;
}

int CDipoleFace1Process::transferDipole3D_MRIFit(const CFiducialzq* mri, bool applyRotation,
                                                 const CFiducialzq* reference, const CSpherezq* sphere,
                                                 int dimensionX, int dimensionY, int dimensionZ, float voxelX,
                                                 float voxelY, float voxelZ) {
  backupLocationRotationRaw();
  m_fiducialMri.compare3FiducialPts(reference, 0.5);
  // The positions alone: `mri` may be one of the sets that change below, and a copy of a whole set asks for
  // memory, without which the registration would end half done.
  const Triple nasion = positionOf(*mri, CFiducial::nasion);
  const Triple left = positionOf(*mri, CFiducial::leftEar);
  const Triple right = positionOf(*mri, CFiducial::rightEar);
  const Triple half = {halfExtent(dimensionX, voxelX), halfExtent(dimensionY, voxelY),
                       halfExtent(dimensionZ, voxelZ)};

  setTriple(m_sphereLocational.m_center,
            {((left.x - half.x) + (right.x - half.x)) * 0.5, ((left.y - half.y) + (right.y - half.y)) * 0.5,
             ((left.z - half.z) + (right.z - half.z)) * 0.5});
  const int originX = wholeOrigin(left.x, right.x, half.x);
  const int originY = wholeOrigin(left.y, right.y, half.y);
  const int originZ = wholeOrigin(left.z, right.z, half.z);

  if (applyRotation) {
    const Triple angles = {registrationAngle(nasion.y - originY - half.y, nasion.z - originZ - half.z),
                           registrationAngle(right.z - originZ - half.z, right.x - originX - half.x),
                           registrationAngle(left.y - originY - half.y, left.x - originX - half.x)};
    setTriple(m_sphereMriAngles.m_center, angles);
    setTriple(m_sphereRotation.m_center, {-angles.x, -angles.y, -angles.z});
    restoreRawLocations();
  }

  const auto registered = [&](const Triple& point) {
    return Triple{point.x - half.x - originX, point.y - half.y - originY, point.z - half.z - originZ};
  };
  m_fiducialCtf.resetAllFiducialPt();
  m_fiducialCtf.setAllFiducialPtShap(2);
  m_fiducialCtf.setAllFiducialSize3D(4.0);
  const Triple headLeft = registered(left);
  const Triple headRight = registered(right);
  const Triple headNasion = registered(nasion);
  m_fiducialCtf.setLeftEarf(headLeft.x, headLeft.y, headLeft.z);
  m_fiducialCtf.setRightEarf(headRight.x, headRight.y, headRight.z);
  m_fiducialCtf.setNasionf(headNasion.x, headNasion.y, headNasion.z);

  // These resets come after the values above were stored, on purpose: what is left of translation and
  // rotation is what zeroSphere leaves.
  m_sphereLocational.zeroSphere();
  m_sphereLocational.m_radius = sphere->m_radius;
  m_sphereRotation.zeroSphere();
  return 1;
}

void CDipoleFace1Process::restoreRawLocations() {
  for (int slot = 0; slot < m_totalDipoles; ++slot) {
    if (CDipoleszq* dipole = m_dipoles[slot]) {
      setTriple(dipole->m_location, tripleOf(dipole->m_rawLocation.m_center));
    }
  }
}

int CDipoleFace1Process::sortDipoles(int key) {
  switch (key) {
    case 0:
      sortBy<int>([](const CDipoleszq& dipole) { return dipole.m_number; });
      break;
    case 1:
      sortBy<float>([](const CDipoleszq& dipole) { return dipole.m_latency; });
      break;
    case 2:
    case 3:
    case 4:
      sortBy<float>([axis = key - 2](const CDipoleszq& dipole) { return dipole.m_location[axis]; });
      break;
    case 5:
    case 6:
    case 7:
      sortBy<float>([axis = key - 5](const CDipoleszq& dipole) { return dipole.m_orientation[axis]; });
      break;
    case 8:
      sortBy<float>([](const CDipoleszq& dipole) { return dipole.m_fitError; });
      break;
    case 9:
      sortBy<float>([](const CDipoleszq& dipole) { return dipole.m_moment; });
      break;
    default:
      break;
  }
  return 1;
}

// Minimum is the type that the running minimum of the sort is held in.
template <typename Minimum, typename KeyOf>
void CDipoleFace1Process::sortBy(KeyOf keyOf) {
  // Memory is asked for before the first exchange: without it, nothing has changed yet.
  if (!isWithinMemory([&] { sortQuickly<Minimum>(keyOf); })) {
    sortLiterally<Minimum>(keyOf);
  }
}

template <typename Minimum, typename KeyOf>
void CDipoleFace1Process::sortQuickly(KeyOf keyOf) {
  using Key = decltype(keyOf(*m_dipoles[0]));
  SelectionOrder<Key, Minimum> order(m_totalDipoles);
  for (int slot = 0; slot < m_totalDipoles; ++slot) {
    if (m_dipoles[slot] != nullptr) {
      order.setKey(slot, keyOf(*m_dipoles[slot]));
    }
  }
  order.build();
  for (int slot = 0; slot < m_totalDipoles; ++slot) {
    m_dipoles.swap(slot, order.takeNext(slot));
  }
}

// The same order without memory, in quadratic time.
template <typename Minimum, typename KeyOf>
void CDipoleFace1Process::sortLiterally(KeyOf keyOf) {
  using Key = decltype(keyOf(*m_dipoles[0]));
  for (int slot = 0; slot < m_totalDipoles; ++slot) {
    if (m_dipoles[slot] == nullptr) {
      continue;
    }
    int choice = slot;
    auto minimum = static_cast<Minimum>(keyOf(*m_dipoles[slot]));
    for (int other = slot; other < m_totalDipoles; ++other) {
      if (m_dipoles[other] != nullptr && keyOf(*m_dipoles[other]) < static_cast<Key>(minimum)) {
        choice = other;
        minimum = static_cast<Minimum>(keyOf(*m_dipoles[other]));
      }
    }
    m_dipoles.swap(slot, choice);
  }
}
