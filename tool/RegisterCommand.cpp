#include "tool/RegisterCommand.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <system_error>

#include "host/head/FiducialFile.h"
#include "tool/FiducialPoints.h"
#include "tool/TerminalOperator.h"

namespace tool {
namespace {

constexpr const char* help =
    R"(The fiducial points are millimetres from the corner of the volume, along its x, y and z axes in
the viewer's order (left, up, front): as three triples, or from a text file with the lines
"nasion x y z", "left x y z", "right x y z". Without them those of the files are taken, voxels
times the voxel's size. Dipole positions stay in the head frame. With --rotate they go back to
what was read, and the three angles are computed. With --by-sphere no points are needed: the
translation puts the head sphere of the files into the middle of the volume.

OUT is a .json file with the registration and the dipoles, or a .dipset file of version
20011118, the one that holds the fiducial points and the spheres.

Examples:
  dipole register auditory.dip --rotate \
      --fiducials "110,120,200 180,110,110 40,110,112" -o auditory.dipset
  dipole register auditory.dip --by-sphere --dimension 256,256,256 --voxel 1,1,1 -o fit.json)";

CFiducialzq pointsOf(const host::Fiducials& given) {
  CFiducialzq points;
  points.setNasionf(given.nasion.x, given.nasion.y, given.nasion.z);
  points.setLeftEarf(given.leftEar.x, given.leftEar.y, given.leftEar.z);
  points.setRightEarf(given.rightEar.x, given.rightEar.y, given.rightEar.z);
  return points;
}

template <typename IsGood>
bool areAll(const std::string& text, IsGood isGood) {
  const std::optional<host::Vector3> values = host::readCoordinates(text, ',');
  return values && isGood(values->x) && isGood(values->y) && isGood(values->z);
}

std::string checkDimension(std::string& text) {
  const auto isGood = [](double value) {
    return value >= 1 && value <= 100000 && value == std::floor(value);
  };
  return areAll(text, isGood) ? "" : "needs three whole numbers X,Y,Z from 1 to 100000";
}

std::string checkVoxel(std::string& text) {
  const auto isGood = [](double value) { return value >= 0.001 && value <= 1000; };
  return areAll(text, isGood) ? "" : "needs three sizes X,Y,Z from 0.001 to 1000 mm";
}

// What the module takes for the volume; both texts have been checked.
struct VolumeSize {
  VolumeSize(const std::string& dimension, const std::string& voxel) {
    for (int axis = 0; axis < 3; ++axis) {
      voxels[axis] = static_cast<int>(host::readCoordinates(dimension, ',').value()[axis]);
      spacing[axis] = static_cast<float>(host::readCoordinates(voxel, ',').value()[axis]);
    }
  }
  double extent(std::size_t axis) const {
    return static_cast<double>(static_cast<float>(voxels[axis]) * spacing[axis]);
  }

  int voxels[3] = {};
  float spacing[3] = {};  // mm
};

Json triple(const double (&values)[3]) {
  return Json::array({values[0], values[1], values[2]});
}

Json pointJson(const CFiducialzq& points, int index) {
  double at[3] = {};
  const bool isSet = points.m_points[index].getPosition(at[0], at[1], at[2]) != 0;
  return isSet ? triple(at) : Json(nullptr);
}

Json registrationJson(const CDipoleFace9File& set) {
  const CFiducialzq& points = set.m_fiducialCtf;
  return {{"nasion_mm", pointJson(points, CFiducial::nasion)},
          {"left_ear_mm", pointJson(points, CFiducial::leftEar)},
          {"right_ear_mm", pointJson(points, CFiducial::rightEar)},
          {"translation_mm", triple(set.m_sphereLocational.m_center)},
          {"rotation_degrees", triple(set.m_sphereRotation.m_center)},
          {"angles_degrees", triple(set.m_sphereMriAngles.m_center)},
          {"sphere_radius_mm", set.m_sphereLocational.m_radius}};
}

}  // namespace

RegisterCommand::RegisterCommand(CLI::App& program)
    : m_command(program.add_subcommand("register", "Register the dipoles of the files to an MRI")) {
  m_command->footer(help);
  m_output.addTo(*m_command, m_import);
  CLI::Option* fiducials = m_command->add_option("--fiducials", m_fiducials,
                                                 "Fiducial points in the MRI: a file, or three triples");
  fiducials->type_name("FILE|POINTS");
  const auto addTriple = [this](const char* name, std::string& value, const char* text, const auto& check) {
    m_command->add_option(name, value, text)
        ->type_name("X,Y,Z")
        ->check(CLI::Validator(check, ""))
        ->capture_default_str();
  };
  addTriple("--dimension", m_dimension, "Size of the MRI in voxels", checkDimension);
  addTriple("--voxel", m_voxel, "Size of a voxel in mm", checkVoxel);
  CLI::Option* rotate = m_command->add_flag("--rotate", m_rotate, "Compute the angles as well");
  m_command->add_flag("--by-sphere", m_bySphere, "Register by the head sphere instead of points")
      ->excludes(fiducials)
      ->excludes(rotate);
}

CFiducialzq RegisterCommand::mriPoints(const CDipoleFace9File& set) const {
  if (!m_fiducials.empty()) {
    return pointsOf(readFiducials(m_fiducials));
  }
  const VolumeSize size(m_dimension, m_voxel);
  host::Fiducials own;
  host::Vector3* const targets[] = {&own.nasion, &own.leftEar, &own.rightEar};
  for (int i = 0; i < 3; ++i) {
    double voxels[3] = {};
    if (set.m_fiducialMri.m_points[i].getPosition(voxels[0], voxels[1], voxels[2]) == 0) {
      throw std::runtime_error("the files give no fiducial points; --fiducials gives them");
    }
    for (int axis = 0; axis < 3; ++axis) {
      (*targets[i])[axis] = voxels[axis] * static_cast<double>(size.spacing[axis]);
    }
  }
  return pointsOf(own);
}

void RegisterCommand::registerByFiducials(CDipoleFace9File& set) const {
  const CFiducialzq points = mriPoints(set);
  const VolumeSize size(m_dimension, m_voxel);
  const auto& n = size.voxels;
  const auto& mm = size.spacing;
  (void)set.transferDipole3D_MRIFit(&points, m_rotate, &points, &set.m_sphereCtf, n[0], n[1], n[2], mm[0],
                                    mm[1], mm[2]);
}

void RegisterCommand::registerBySphere(CDipoleFace9File& set) const {
  if (set.m_bCtfSphereSet == 0 || set.m_sphereCtf.m_radius == 0.0) {
    throw std::runtime_error("the files give no head sphere to register by");
  }
  const VolumeSize size(m_dimension, m_voxel);
  (void)set.registerMRI_DimensionFit(size.extent(0), size.extent(1), size.extent(2));
}

int RegisterCommand::run() const {
  m_output.check();
  const OutputFormat format = m_output.format();
  if (format != OutputFormat::dipset && format != OutputFormat::json) {
    throw std::runtime_error(m_output.target() + ": a registration is written as .dipset or .json");
  }
  ImportSession session = importToWrite(m_import, m_output);
  if (!m_fiducials.empty()) {
    session.add(host::otherHeads(session.joined().parts(), readFiducials(m_fiducials)));
    refuseWrong(session, m_output);
  }
  CDipoleFace9File& set = session.collection();
  if (m_bySphere) {
    registerBySphere(set);
  } else {
    registerByFiducials(set);
  }
  if (format == OutputFormat::dipset) {
    writeOldSet(set, m_output);
  } else {
    Json document = documentOf(session, m_import.names());
    document["registration"] = registrationJson(set);
    writeJson(document, m_output);
  }
  return exitDone;
}

}  // namespace tool
