#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/dipoles/DipoleColors.h"
#include "host/dipoles/DipoleScene.h"
#include "host/dipoles/SetFiducials.h"
#include "host/dipoles/UnknownDipoles.h"
#include "host/head/Head.h"
#include "host/head/HeadFile.h"
#include "host/head/Limits.h"
#include "host/paint/PictureText.h"
#include "host/paint/PngFile.h"
#include "host/panes/AtlasTexts.h"
#include "host/panes/DipolePicture.h"
#include "host/panes/ShownDipoles.h"
#include "host/text/Numbers.h"
#include "host/text/PathText.h"
#include "tool/ArgumentCheck.h"
#include "tool/Commands.h"
#include "tool/FileNames.h"
#include "tool/ImportSession.h"
#include "tool/Output.h"
#include "tool/OutputOptions.h"
#include "tool/PictureInput.h"
#include "tool/PictureOptions.h"
#include "tool/SceneOptions.h"
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

Without --mri the picture is drawn on the MRI that the dipole file names, when a file of that
name lies beside it; a CTF MRI brings its fiducial points. --mri none leaves it out.

The fiducial points are scanner millimetres (right, anterior, superior positive), from a text
file with the lines "nasion x y z", "left x y z", "right x y z", or as three triples. Without
--fiducials they come from the file beside the MRI (head.fiducials for head.nii.gz), from the MRI
itself, or from the dipole file when it was made with this MRI. MNE's *-fiducials.fif is taken too,
and --trans its *-trans.fif, which lays Neuromag's dipoles into the MRI (T1.mgz) as MNE does.

A 3D picture (--3d) shows the dipoles as balls with arrows, the sphere of the fit and the
fiducial points; with an MRI also slices through the strongest dipole or those that --slice
gives. Dipoles behind a slice shine through it and are counted.

With --atlas the captions tell where in the brain the dipoles lie. That needs the way from the MRI
to MNI, --mni; the example's head is in that space itself.

Examples:
  dipole draw auditory.dip --mri ch2.nii.gz --fiducials ch2.fiducials \
      -o auditory.png
  dipole draw spikes.dip --mri ch2.nii.gz --slice axial:30,coronal:25 \
      --fiducials "0,87,-40 -86,-20,-48 86,-20,-48" \
      --color-by latency --max-error 10 -o spikes.png
  dipole draw auditory.dip --mri ch2.nii.gz --fiducials ch2.fiducials \
      --atlas aal --mni identity --mni-space colin27 -o named.png
  dipole draw spikes.dip --3d --view left -o left.png)";

constexpr std::size_t slicesInRow = 3;

// Says what each pane shows and leaves out.
void tellOf(const host::PaneTexts& pane) {
  const std::string name = pane.title == "3D" ? "3D picture" : pane.title + " slice at " + pane.place;
  for (const host::CaptionLine& line : pane.lines) {
    tellNote(name + ": " + line.text);
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
    if (!number || *number != std::trunc(*number) || std::abs(*number) > std::numeric_limits<int>::max()) {
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
  std::vector<int> shown = host::shownSlots(contents);
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

class DrawCommand final : public Command {
 public:
  explicit DrawCommand(CLI::App& program);

  int run() const override;

 private:
  host::Head readHead(ImportSession& session) const;
  void checkOutput() const;
  void addPlaces(host::PageTexts& texts, const host::PaneContents& contents) const;
  void writePicture(const host::Image& picture) const;
  std::vector<host::SliceRow> rows(const host::PaneContents& contents) const;
  host::PageTexts textsOf(const ImportSession& session, const host::PaneContents& contents) const;
  host::DipolePicture draw(const ImportSession& session, host::PaneContents& contents) const;

  PictureInput m_input;
  PictureOptions m_picture;
  SceneOptions m_scene;
  std::vector<std::string> m_slices;
  std::string m_through;
  std::string m_output;
  bool m_force = false;
};

DrawCommand::DrawCommand(CLI::App& program)
    : Command(program, "draw", "Draw the dipoles over slices of an MRI or in 3D, as a PNG picture", help) {
  m_input.addFilesTo(options());
  const auto add = [this](const std::string& name, auto& value, const char* type, const char* text) {
    return options().add_option(name, value, text)->type_name(type);
  };
  m_input.addHeadTo(options());
  CLI::Option* slices = add("--slice", m_slices, "VIEW:MM,...", "Slices; may be given several times")
                            ->expected(1)
                            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
                            ->check(argumentCheck(parseSlices));
  add("--slices-through", m_through, "all|N,...", "Three slices through each of these dipoles that is shown")
      ->excludes(slices)
      ->check(argumentCheck(parseNumbers));
  add("-o,--output", m_output, "OUT", "The picture to write, .png; - is standard output")->required();
  options().add_flag("--force", m_force, "Replace OUT when it is there already");
  m_picture.addTo(options());
  m_scene.addTo(options());
  m_input.addAtlasTo(options());
  options().get_option("--mni")->needs(options().get_option("--atlas"));
  for (const char* const ofSlicesAlone : {"--tolerance", "--glyph", "--module-slab"}) {
    options().get_option("--3d")->excludes(options().get_option(ofSlicesAlone));
  }
}

// Those of the rows stand in their headings; where rows are of no dipole, or the picture has none, below all.
void DrawCommand::addPlaces(host::PageTexts& texts, const host::PaneContents& contents) const {
  if (m_scene.isWanted() || !m_slices.empty()) {
    const std::string note = host::placesNote(contents, host::shownSlots(contents));
    if (!note.empty()) {
      texts.notes.push_back({printable(note), host::ink});
    }
  }
  texts.notes.push_back({printable(host::atlasNote(*contents.places)), host::quietInk});
}

// Slices need a head to run through; a 3D picture does without.
host::Head DrawCommand::readHead(ImportSession& session) const {
  if (std::optional<host::Head> head = m_input.head().read(session)) {
    return std::move(*head);
  }
  if (!m_scene.isWanted() || !m_slices.empty() || !m_through.empty()) {
    throw UsageError(m_input.head().isRefused()
                         ? "slices need an MRI, and --mri none leaves it out: --3d does without"
                         : "slices need --mri HEAD: no dipole file names an MRI that is beside it");
  }
  return host::noHead();
}

// Before anything is read: what is not to be replaced is not worth the work.
void DrawCommand::checkOutput() const {
  if (m_output == "-") {
    if (isResultOnTerminal()) {
      throw UsageError("-o - writes a picture to standard output, and that is a terminal");
    }
    return;
  }
  m_input.refuseToOverwrite(m_output, "picture");
  if (!host::hasEnding(pathTextOf(m_output), ".png")) {
    throw UsageError(m_output + ": a picture is written as PNG; the name has to end in .png");
  }
  refuseToReplace(m_output, m_force);
}

void DrawCommand::writePicture(const host::Image& picture) const {
  if (m_output == "-") {
    writeResult(host::pngBytes(picture));
  } else {
    host::writePng(picture, pathTextOf(m_output));
  }
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
    if (contents.places != nullptr) {
      return {host::rowThrough(contents, strongest)};
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
  texts.title = m_input.title();
  texts.patientId = printable(session.patient());
  if (!contents.head.isAbsent) {
    texts.files.push_back("MRI " + printable(contents.head.name));
  }
  texts.settings = host::filterTexts(contents);
  if (!m_scene.isWanted()) {
    texts.settings.push_back(host::toleranceText(contents));
  }
  if (contents.places != nullptr) {
    addPlaces(texts, contents);
  }
  for (const std::string& text : host::wrongTexts(session.findings())) {
    texts.wrong.push_back(printable(text));
  }
  std::vector<host::FileText> repaired = session.repaired();
  if (m_input.names().size() == 1) {  // which the title names
    for (host::FileText& text : repaired) {
      text.file.clear();
    }
  }
  for (const std::string& text : host::textsWithFiles(repaired)) {
    texts.settings.push_back("repaired: " + printable(text));
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
  checkOutput();
  host::ViewSettings settings = m_picture.settings();
  ImportSession session = m_input.import(m_input.files());
  CDipoleFace9File& set = session.collection();
  if (set.m_totalDipoles == 0) {
    tell("nothing to draw: no dipole was imported");
    return exitFailure;
  }
  m_picture.applyTo(set);
  const host::Head head = readHead(session);
  settings.ballRadius = m_scene.ballRadius();
  host::UnknownDipoles unknown;
  unknown.mark(set, session.unknown());
  settings.unknown = &unknown;
  const std::optional<host::DipoleColors> colours = colorsOf(set, settings);
  host::PaneContents contents{set, head, settings, {}, head.volume->window(), colours ? &*colours : nullptr};
  contents.scale = host::textScale(m_picture.mmPerPixel());
  const std::optional<host::PlaceNames> names = m_input.places(head);
  contents.places = names ? &*names : nullptr;
  const host::DipolePicture picture = draw(session, contents);
  writePicture(picture.image);
  for (const host::PaneTexts& pane : picture.panes) {
    tellOf(pane);
  }
  return session.exitCode();
}

}  // namespace

std::unique_ptr<Command> makeDrawCommand(CLI::App& program) {
  return std::make_unique<DrawCommand>(program);
}

}  // namespace tool
