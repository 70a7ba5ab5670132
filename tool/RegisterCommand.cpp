#include <cstddef>
#include <memory>
#include <stdexcept>

#include "host/head/CornerGrid.h"
#include "tool/Commands.h"
#include "tool/HeadOptions.h"
#include "tool/HelpText.h"
#include "tool/ImportOptions.h"
#include "tool/OutputOptions.h"
#include "tool/SetWriter.h"
#include "tool/TerminalOperator.h"
#include "tool/UsageError.h"

namespace tool {
namespace {

constexpr const char* help =
    R"(The registration is that of a viewer after an import: by the fiducial points in the MRI, which are
those that "dipole draw" takes (scanner millimetres; without --fiducials those beside the MRI, or of the
dipole file). Dipole positions stay in the head frame. With --rotate they go back to what was read, and the
three angles are computed. With --by-sphere no points are needed: the translation puts the head sphere of
the files into the middle of the MRI.

OUT is a .json file with the registration and the dipoles, or a .dipset file of version 20011118, the one
that holds the fiducial points and the spheres. Its points are millimetres in the head frame (x left, y up,
z front).

Examples:
  dipole register auditory.dip --mri ch2.nii.gz --fiducials ch2.fiducials \
      -o auditory.dipset
  dipole register spikes.dip --mri ch2.nii.gz --fiducials ch2.fiducials \
      --rotate -o spikes.json
  dipole register auditory.dip --mri ch2.nii.gz --by-sphere -o sphere.json)";

// In the grid's places.
CFiducialzq pointsOf(const host::Fiducials& scanner, const host::CornerGrid& grid) {
  const host::Vector3 nasion = grid(scanner.nasion);
  const host::Vector3 left = grid(scanner.leftEar);
  const host::Vector3 right = grid(scanner.rightEar);
  CFiducialzq points;
  points.setNasionf(nasion.x, nasion.y, nasion.z);
  points.setLeftEarf(left.x, left.y, left.z);
  points.setRightEarf(right.x, right.y, right.z);
  return points;
}

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

class RegisterCommand final : public Command {
 public:
  explicit RegisterCommand(CLI::App& program);

  int run() const override;

 private:
  void registerBySphere(CDipoleFace9File& set) const;
  void registerByFiducials(CDipoleFace9File& set, const host::Head& head) const;

  ImportOptions m_import;
  OutputOptions m_output;
  HeadOptions m_head;
  bool m_rotate = false;
  bool m_bySphere = false;
};

RegisterCommand::RegisterCommand(CLI::App& program)
    : Command(program, "register", "Register the dipoles of the files to an MRI", help) {
  m_output.addTo(options(), m_import);
  m_head.addTo(options());
  m_head.mri()->group(neededGroup);
  CLI::Option* rotate = options().add_flag("--rotate", m_rotate, "Compute the angles as well");
  options()
      .add_flag("--by-sphere", m_bySphere, "Register by the head sphere instead of points")
      ->excludes(m_head.fiducials())
      ->excludes(rotate);
}

void RegisterCommand::registerByFiducials(CDipoleFace9File& set, const host::Head& head) const {
  const host::CornerGrid grid(*head.volume);
  const CFiducialzq points = pointsOf(*head.fiducials, grid);
  const auto& n = grid.dimension();
  const auto& mm = grid.spacing();
  (void)set.transferDipole3D_MRIFit(&points, m_rotate, &points, &set.m_sphereCtf, n[0], n[1], n[2], mm[0],
                                    mm[1], mm[2]);
}

void RegisterCommand::registerBySphere(CDipoleFace9File& set) const {
  if (set.m_bCtfSphereSet == 0 || set.m_sphereCtf.m_radius == 0.0) {
    throw std::runtime_error("the files give no head sphere to register by");
  }
  const host::CornerGrid grid(*m_head.readUnregistered().volume);
  const auto extent = [&](std::size_t axis) {
    return static_cast<double>(static_cast<float>(grid.dimension().at(axis)) * grid.spacing().at(axis));
  };
  (void)set.registerMRI_DimensionFit(extent(0), extent(1), extent(2));
}

int RegisterCommand::run() const {
  m_output.check();
  if (!m_head.isGiven()) {
    throw UsageError("register needs --mri HEAD, the MRI to register to");
  }
  const OutputFormat format = m_output.format();
  if (format != OutputFormat::dipset && format != OutputFormat::json) {
    throw UsageError(m_output.target() + ": a registration is written as .dipset or .json");
  }
  ImportSession session = importToWrite(
      m_import, m_output, [this](const auto& files) { return m_head.headFor(files, m_import.choices()); });
  CDipoleFace9File& set = session.collection();
  if (m_bySphere) {
    registerBySphere(set);
  } else {
    const host::Head head = m_head.read(session).value();
    if (head.arePointsAssumed) {
      throw std::runtime_error(
          "a registration needs the fiducial points of the head: --trans alone does not "
          "know where the ears are, --fiducials does");
    }
    refuseWrong(session, m_output);
    registerByFiducials(set, head);
  }
  if (format == OutputFormat::dipset) {
    writeOldSet(set, m_output);
  } else {
    writeText(m_output,
              jsonOf(session, m_import.names(), {}, {}, Json{{"registration", registrationJson(set)}}));
  }
  return exitDone;
}

}  // namespace

std::unique_ptr<Command> makeRegisterCommand(CLI::App& program) {
  return std::make_unique<RegisterCommand>(program);
}

}  // namespace tool
