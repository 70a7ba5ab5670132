#include "tool/DrawCommand.h"

#include <cmath>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "host/head/NiftiReader.h"
#include "host/paint/PngFile.h"
#include "host/picture/SliceCaption.h"
#include "host/text/Numbers.h"
#include "host/text/PathText.h"
#include "tool/FiducialPoints.h"
#include "tool/FileInfo.h"
#include "tool/Output.h"
#include "tool/SliceList.h"
#include "tool/Text.h"

namespace tool {
namespace {

constexpr const char* help =
    R"(Axial and coronal pictures show the patient's left on the right. Slice positions are
millimetres in the head frame: axial y (up), coronal z (front), sagittal x (left). Coronal
and sagittal slices show the dipoles within the overlap of the slice; an axial slice shows
all dipoles between the level of the ears and the slice.

The fiducial points are scanner millimetres (right, anterior, superior positive), from a text
file with the lines "nasion x y z", "left x y z", "right x y z", or as three triples.

A 3D picture (--3d) shows every dipole that is switched on as a ball with an arrow, the sphere of
the fit and its fiducial points; with an MRI also one slice for each view, by default behind all
dipoles. --slice moves the slices; what they hide is told.

Examples:
  dipole draw auditory.dip --mri ch2.nii.gz --fiducials ch2.fiducials -o auditory.png
  dipole draw spikes.dip --mri head.nii.gz --fiducials "0,87,-40 -86,-20,-48 86,-20,-48" \
      --slice axial:30,coronal:25 -o spikes.png
  dipole draw spikes.dip --3d --view left -o left.png)";

constexpr double largestHeadDifference = 10.0;  // mm between fiducial points: more is another head

const CDipoleszq* strongestShown(const CDipoleFace9File& collection) {
  const CDipoleszq* strongest = nullptr;
  for (int i = 0; i < collection.m_totalDipoles; ++i) {
    const CDipoleszq* dipole = collection.getDipole(i);
    const bool isCandidate = dipole != nullptr && dipole->m_display == 1 && std::isfinite(dipole->m_moment);
    if (isCandidate && (strongest == nullptr || std::abs(dipole->m_moment) > std::abs(strongest->m_moment))) {
      strongest = dipole;
    }
  }
  return strongest;
}

void setGlyphSize(CDipoleFace9File& collection, int pixels) {
  for (int i = 0; i < collection.m_totalDipoles; ++i) {
    if (CDipoleszq* dipole = collection.getDipole(i)) {
      dipole->m_size = pixels;
    }
  }
}

double distance(const Point& a, const Point& b) {
  return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

Point pointOf(const host::Vector3& vector) {
  return {vector.x, vector.y, vector.z};
}

// The files bring the distances between their own fiducial points: they have to be those of this head.
void warnOfAnotherHead(const FileInfo& info, const host::Fiducials& given) {
  if (!info.mriFiducials || !info.headFiducials) {
    return;
  }
  const FiducialTriple head = {pointOf(given.nasion), pointOf(given.leftEar), pointOf(given.rightEar)};
  double worst = 0.0;
  for (std::size_t i = 0; i < head.size(); ++i) {
    const std::size_t j = (i + 1) % head.size();
    const double own = distance(info.headFiducials->at(i), info.headFiducials->at(j));
    worst = std::fmax(worst, std::abs(own - distance(head.at(i), head.at(j))));
  }
  if (worst > largestHeadDifference) {
    tell("warning: the distances between the fiducial points differ by " + host::fixed(worst, 0) +
         " mm from those in the dipole file: is this the same head?");
  }
}

std::string titleOf(const std::vector<std::string>& files) {
  const std::string first = std::filesystem::path(files.front()).filename().string();
  const std::string more = files.size() == 1 ? "" : " and " + std::to_string(files.size() - 1) + " more";
  return printable(first) + more;
}

std::string checkSlices(std::string& text) {
  try {
    (void)parseSlices(text);
    return {};
  } catch (const std::invalid_argument& error) {
    return printable(error.what());
  }
}

std::string nameOf(const host::OverlayReport& report) {
  return std::string(host::nameOf(report.view)) + " slice at " +
         host::positionText(report.view, report.position);
}

void warnOfMissing(const host::SceneReport& report) {
  tell("3D picture: " + host::countText(report));
  for (const std::string& text : host::warningTexts(report)) {
    tell("warning: 3D picture: " + text);
  }
}

// Says what the picture leaves out: per view, and dipoles that stand in no view at all.
void warnOfMissing(const host::SlicePicture& picture, const FileInfo& info) {
  for (const host::OverlayReport& view : picture.views) {
    tell(nameOf(view) + ": " + host::countText(view));
    for (const std::string& text : host::warningTexts(view)) {
      tell("warning: " + nameOf(view) + ": " + text);
    }
  }
  if (info.shownOnSlices < info.dipoles) {
    tell("warning: " + std::to_string(info.dipoles - info.shownOnSlices) + " of " +
         std::to_string(info.dipoles) +
         " dipoles are switched off for slices by the flags of their files and are in no view");
  }
}

}  // namespace

DrawCommand::DrawCommand(CLI::App& program)
    : m_command(program.add_subcommand("draw",
                                       "Draw the dipoles over slices of an MRI or in 3D, as a PNG picture")) {
  m_command->footer(help);
  m_import.addTo(*m_command);
  const auto add = [this](const std::string& name, auto& value, const char* type, const char* text) {
    return m_command->add_option(name, value, text)->type_name(type);
  };
  CLI::Option* mri = add("--mri", m_mri, "FILE", "The MRI: a NIfTI file (.nii, .nii.gz)");
  CLI::Option* fiducials = add("--fiducials", m_fiducials, "FILE|POINTS",
                               "Fiducial points: a file, or \"nx,ny,nz lx,ly,lz rx,ry,rz\"");
  mri->needs(fiducials);
  fiducials->needs(mri);
  add("--slice", m_slices, "VIEW:MM,...",
      "One to three slices; without it three through the strongest dipole")
      ->check(CLI::Validator(checkSlices, ""));
  add("-o,--output", m_output, "FILE", "The picture to write")->required();
  add("--overlap", m_overlapMm, "MM", "Show dipoles up to MM from coronal and sagittal slices; 0 to 1000")
      ->check(CLI::Range(0.0, 1000.0).description(""))
      ->capture_default_str();
  add("--glyph", m_glyph, "PX", "Side of a dipole's square in pixels; 1 to 64")
      ->check(CLI::Range(1, 64).description(""))
      ->capture_default_str();
  add("--mm-per-pixel", m_mmPerPixel, "MM", "Size of a pixel; 0.1 to 5")
      ->check(CLI::Range(0.1, 5.0).description(""))
      ->capture_default_str();
  m_scene.addTo(*m_command);
  m_command->final_callback([this] { checkArguments(); });
}

// Slices need a head to run through; a 3D picture does without.
void DrawCommand::checkArguments() const {
  if (m_mri.empty() && !m_scene.isWanted()) {
    throw CLI::RequiredError("--mri");
  }
  if (m_mri.empty() && !m_slices.empty()) {
    throw CLI::RequiresError("--slice", "--mri");
  }
}

bool DrawCommand::wouldOverwriteInput() const {
  std::vector<std::string> inputs = m_import.names();
  if (!m_mri.empty()) {
    inputs.push_back(m_mri);
    inputs.push_back(m_fiducials);
  }
  for (const std::string& input : inputs) {
    std::error_code error;  // one that does not exist is not overwritten
    if (std::filesystem::equivalent(input, m_output, error)) {
      tell("the picture " + m_output + " would overwrite the input " + input);
      return true;
    }
  }
  return false;
}

std::vector<host::SliceRequest> DrawCommand::requests(const ImportSession& session) const {
  if (!m_slices.empty()) {
    return parseSlices(m_slices);
  }
  const CDipoleszq* dipole = strongestShown(session.collection());
  if (dipole == nullptr) {
    throw std::runtime_error("no dipole is shown on slices; choose the slices with --slice");
  }
  const double(&at)[3] = dipole->m_location;
  return {{host::View::axial, at[1]}, {host::View::coronal, at[2]}, {host::View::sagittal, at[0]}};
}

host::Volume DrawCommand::readMri() const {
  host::Volume volume = host::readNifti(m_mri);
  if (!volume.sidesStated()) {
    tell("warning: " + m_mri + " does not say which side of it is left: sides in the picture are assumed");
  }
  return volume;
}

void DrawCommand::drawSlices(ImportSession& session, const host::Fiducials& fiducials) const {
  const FileInfo info(m_import.names().front(), session);
  const std::vector<host::SliceRequest> slices = requests(session);
  const host::HeadFrame frame(fiducials);
  warnOfAnotherHead(info, fiducials);
  const host::Volume volume = readMri();
  setGlyphSize(session.collection(), m_glyph);
  host::SlicePictureOptions options;
  options.mmPerPixel = m_mmPerPixel;
  options.overlapMm = m_overlapMm;
  options.title = titleOf(m_import.names());
  options.patientId = printable(session.patient());
  const host::SlicePicture picture = host::drawSlices(session.collection(), volume, frame, slices, options);
  host::writePng(picture.image, host::textOf(m_output));
  warnOfMissing(picture, info);
}

void DrawCommand::drawScene(const ImportSession& session,
                            const std::optional<host::Fiducials>& fiducials) const {
  host::ScenePictureOptions options = m_scene.picture();
  options.mmPerPixel = m_mmPerPixel;
  options.title = titleOf(m_import.names());
  options.patientId = printable(session.patient());
  if (!m_slices.empty()) {
    options.slices = parseSlices(m_slices);
  }
  host::ScenePicture picture;
  if (fiducials) {
    const host::HeadFrame frame(*fiducials);
    warnOfAnotherHead(FileInfo(m_import.names().front(), session), *fiducials);
    const host::Volume volume = readMri();
    picture = host::drawScene(session.collection(), host::SceneHead{volume, frame}, options);
  } else {
    picture = host::drawScene(session.collection(), std::nullopt, options);
  }
  host::writePng(picture.image, host::textOf(m_output));
  warnOfMissing(picture.report);
}

int DrawCommand::run() const {
  if (wouldOverwriteInput()) {
    return exitUsage;
  }
  std::optional<host::Fiducials> fiducials;
  if (!m_fiducials.empty()) {
    fiducials = readFiducials(m_fiducials);
  }
  ImportSession session(m_import.files(), m_import.answers());
  if (session.collection().m_totalDipoles == 0) {
    tell("nothing to draw: no dipole was imported");
    return exitFailure;
  }
  if (m_scene.isWanted()) {
    drawScene(session, fiducials);
  } else {
    drawSlices(session, fiducials.value());
  }
  return session.isComplete() ? exitDone : exitFailure;
}

}  // namespace tool
