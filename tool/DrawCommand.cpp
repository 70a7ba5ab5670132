#include "tool/DrawCommand.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include "host/dipoles/DipoleScene.h"
#include "host/dipoles/SetFiducials.h"
#include "host/dipoles/UnknownDipoles.h"
#include "host/dipoles/ValueColors.h"
#include "host/head/HeadFile.h"
#include "host/head/Limits.h"
#include "host/paint/PngFile.h"
#include "host/panes/ShownDipoles.h"
#include "host/text/Numbers.h"
#include "host/text/PathText.h"
#include "tool/ArgumentCheck.h"
#include "tool/FiducialPoints.h"
#include "tool/Output.h"
#include "tool/SliceList.h"
#include "tool/Text.h"
#include "tool/UsageError.h"

namespace tool {
namespace {

constexpr const char* help =
    R"(Axial and coronal pictures show the patient's left on the right. Slice positions are
millimetres in the head frame: axial y (up), coronal z (front), sagittal x (left). A slice shows
the dipoles up to 5 mm from it; --tolerance says otherwise. With --module-slab an axial slice
shows all dipoles between the level of the ears and the slice. Without --slice the three slices
run through the strongest dipole that is shown; --slices-through all, or numbers of dipoles such
as 3,7, gives a row of three for each. --slice may be given several times.

The fiducial points are scanner millimetres (right, anterior, superior positive), from a text
file with the lines "nasion x y z", "left x y z", "right x y z", or as three triples. Without
--fiducials they come from the file beside the MRI (head.fiducials for head.nii.gz), or from the
dipole file when it was made with this MRI.

A 3D picture (--3d) shows the dipoles as balls with arrows, the sphere of the fit and the
fiducial points; with an MRI also slices through the strongest dipole or those that --slice
gives. Dipoles behind a slice shine through it and are counted.

Examples:
  dipole draw auditory.dip --mri ch2.nii.gz --fiducials ch2.fiducials -o auditory.png
  dipole draw spikes.dip --mri head.nii.gz --fiducials "0,87,-40 -86,-20,-48 86,-20,-48" \
      --slice axial:30,coronal:25 --color-by latency --max-error 10 -o spikes.png
  dipole draw spikes.dip --3d --view left -o left.png)";

constexpr std::size_t slicesInRow = 3;

std::string titleOf(const std::vector<std::string>& files) {
  const std::string first = std::filesystem::path(files.front()).filename().string();
  const std::string more = files.size() == 1 ? "" : " and " + std::to_string(files.size() - 1) + " more";
  return printable(first) + more;
}

// Says what each pane shows and leaves out.
void tellOf(const host::PaneTexts& pane) {
  const std::string name = pane.title == "3D" ? "3D picture" : pane.title + " slice at " + pane.place;
  for (const host::CaptionLine& line : pane.lines) {
    tell(name + ": " + line.text);
  }
  for (const host::CaptionLine& warning : pane.warnings) {
    tell("warning: " + name + ": " + warning.text);
  }
}

// "all", or the numbers of dipoles. Throws std::invalid_argument.
std::vector<int> parseNumbers(const std::string& text) {
  std::vector<int> numbers;
  if (text == "all") {
    return numbers;
  }
  std::istringstream parts(text);
  for (std::string part; std::getline(parts, part, ',');) {
    const std::optional<double> number = host::numberOf(part);
    if (!number || *number != static_cast<int>(*number)) {
      throw std::invalid_argument("\"" + text + "\": write all, or numbers of dipoles such as 3,7");
    }
    numbers.push_back(static_cast<int>(*number));
  }
  if (numbers.empty() || text.back() == ',') {
    throw std::invalid_argument("write all, or numbers of dipoles such as 3,7");
  }
  return numbers;
}

std::vector<int> slotsNumbered(const host::PaneContents& contents, const std::string& text) {
  const std::vector<int> shown = host::shownSlots(contents);
  if (text == "all") {
    return shown;
  }
  std::vector<int> slots;
  for (const int number : parseNumbers(text)) {
    const auto isMeant = [&](int slot) { return contents.dipoles.m_dipoles[slot]->m_number == number; };
    const std::size_t before = slots.size();
    std::copy_if(shown.begin(), shown.end(), std::back_inserter(slots), isMeant);
    if (slots.size() == before) {
      throw std::runtime_error("no dipole with the number " + std::to_string(number) + " is shown");
    }
  }
  return slots;
}

std::vector<host::SliceRow> inRows(const std::vector<host::SliceRequest>& slices) {
  std::vector<host::SliceRow> rows;
  for (std::size_t i = 0; i < slices.size(); ++i) {
    if (i % slicesInRow == 0) {
      rows.emplace_back();
    }
    rows.back().slices.push_back(slices[i]);
  }
  return rows;
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
  add("--fiducials", m_fiducials, "FILE|POINTS", "Fiducial points: a file, or \"nx,ny,nz lx,ly,lz rx,ry,rz\"")
      ->needs(mri);
  CLI::Option* slices = add("--slice", m_slices, "VIEW:MM,...", "Slices; may be given several times")
                            ->needs(mri)
                            ->expected(1)
                            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
                            ->check(argumentCheck(parseSlices));
  add("--slices-through", m_through, "all|N,...", "Three slices through each of these dipoles that is shown")
      ->needs(mri)
      ->excludes(slices)
      ->check(argumentCheck(parseNumbers));
  add("-o,--output", m_output, "FILE", "The picture to write")->required();
  m_picture.addTo(*m_command);
  m_scene.addTo(*m_command);
  m_command->final_callback([this] { checkArguments(); });
}

// Slices need a head to run through; a 3D picture does without.
void DrawCommand::checkArguments() const {
  if (m_mri.empty() && !m_scene.isWanted()) {
    throw CLI::RequiredError("--mri");
  }
}

bool DrawCommand::wouldOverwriteInput() const {
  std::vector<std::string> inputs = m_import.names();
  inputs.push_back(m_mri);
  inputs.push_back(m_fiducials);
  for (const std::string& input : inputs) {
    std::error_code error;  // one that does not exist is not overwritten
    if (!input.empty() && std::filesystem::equivalent(input, m_output, error)) {
      tell("the picture " + m_output + " would overwrite the input " + input);
      return true;
    }
  }
  return false;
}

// With the points that are given, else those beside the MRI, else those that the dipole file brings.
host::Head DrawCommand::readHead(const CDipoleFace& set) const {
  if (m_mri.empty()) {
    return host::noHead();
  }
  std::optional<host::Fiducials> points;
  if (!m_fiducials.empty()) {
    points = readFiducials(m_fiducials);
    (void)host::HeadFrame(*points);  // a mistake in them is told before a large MRI is read
  }
  host::OpenedHead opened = host::openHead(host::textOf(std::filesystem::path(m_mri)));
  host::Head& head = opened.head;
  if (!points && !head.isRegistered()) {
    try {
      points = host::fiducialsOfSet(set, *head.volume);
      tell("fiducial points: those of the dipole file");
    } catch (const std::runtime_error& error) {
      const std::string beside = opened.notice.empty() ? "no file of them is beside the MRI" : opened.notice;
      throw std::runtime_error("no fiducial points: " + beside + "; " + error.what() +
                               "; --fiducials gives them");
    }
  }
  if (points) {
    head.frame = host::frameIn(*head.volume, *points);
    head.fiducials = points;
  }
  return std::move(opened.head);
}

std::vector<host::SliceRow> DrawCommand::rows(const host::PaneContents& contents) const {
  if (!m_slices.empty()) {
    std::vector<host::SliceRequest> slices;
    for (const std::string& text : m_slices) {
      const std::vector<host::SliceRequest> more = parseSlices(text);
      slices.insert(slices.end(), more.begin(), more.end());
    }
    return inRows(slices);
  }
  const std::string none = "no dipole is shown on slices; choose the slices with --slice";
  if (m_through.empty()) {
    const int strongest = host::strongestSlot(contents);
    if (strongest < 0) {
      throw std::runtime_error(none);
    }
    return {{"", host::slicesThrough(host::placeOf(*contents.dipoles.m_dipoles[strongest]))}};
  }
  std::vector<host::SliceRow> rows;
  for (const int slot : slotsNumbered(contents, m_through)) {
    rows.push_back(host::rowThrough(contents, slot));
  }
  if (rows.empty()) {
    throw std::runtime_error(none);
  }
  return rows;
}

host::PageTexts DrawCommand::textsOf(const ImportSession& session, const host::PaneContents& contents) const {
  host::PageTexts texts;
  texts.title = titleOf(m_import.names());
  texts.patientId = printable(session.patient());
  texts.settings = host::filterTexts(contents);
  if (!m_scene.isWanted()) {
    texts.settings.push_back(host::toleranceText(contents));
  }
  texts.wrong = host::wrongTexts(session.findings());
  for (const std::string& text : session.repaired()) {
    texts.settings.push_back("repaired: " + text);
  }
  return texts;
}

host::DipolePicture DrawCommand::draw(const ImportSession& session, host::PaneContents& contents) const {
  const host::PageTexts texts = textsOf(session, contents);
  if (!m_scene.isWanted()) {
    return host::slicesPicture(contents, rows(contents), m_picture.mmPerPixel(), texts);
  }
  if (const int strongest = host::strongestSlot(contents); strongest >= 0) {
    contents.crosshair = host::placeOf(*contents.dipoles.m_dipoles[strongest]);
  }
  std::vector<host::SliceRequest> slices;
  if (!m_slices.empty() || !m_through.empty()) {
    for (const host::SliceRow& row : rows(contents)) {
      slices.insert(slices.end(), row.slices.begin(), row.slices.end());
    }
  }
  const host::ViewAngles angles = m_scene.angles().value_or(host::sideOfDipoles(contents));
  return host::scenePicture(contents, angles, slices, m_picture.mmPerPixel(), texts);
}

int DrawCommand::run() const {
  if (!host::hasEnding(host::textOf(m_output), ".png")) {
    throw UsageError(m_output + ": a picture is written as PNG; the name has to end in .png");
  }
  if (wouldOverwriteInput()) {
    return exitUsage;
  }
  ImportSession session(m_import.files(), m_import.choices());
  CDipoleFace9File& set = session.collection();
  if (set.m_totalDipoles == 0) {
    tell("nothing to draw: no dipole was imported");
    return exitFailure;
  }
  m_picture.applyTo(set);
  const host::Head head = readHead(set);
  if (!head.volume->sidesStated()) {
    tell("warning: " + m_mri + " does not say which side of it is left: sides in the picture are assumed");
  }
  session.add(host::findingsIn(head, session.joined()));
  host::ViewSettings settings = m_picture.settings();
  settings.ballRadius = m_scene.ballRadius();
  host::UnknownDipoles unknown;
  unknown.mark(set, session.unknown());
  settings.unknown = &unknown;
  std::optional<host::ValueColors> colours;
  if (settings.colourBy) {
    colours.emplace(set, *settings.colourBy, &unknown);
  }
  host::PaneContents contents{set, head, settings, {}, head.volume->window(), colours ? &*colours : nullptr};
  contents.scale = host::textScale(m_picture.mmPerPixel());
  const host::DipolePicture picture = draw(session, contents);
  host::writePng(picture.image, host::textOf(m_output));
  for (const host::PaneTexts& pane : picture.panes) {
    tellOf(pane);
  }
  return session.exitCode();
}

}  // namespace tool
