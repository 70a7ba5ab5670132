#include <memory>
#include <optional>

#include "tool/Commands.h"
#include "tool/FrameOptions.h"
#include "tool/ImportOptions.h"
#include "tool/ImportSession.h"
#include "tool/OutputOptions.h"
#include "tool/SetWriter.h"

namespace tool {
namespace {

constexpr const char* help =
    R"(The endings tell the formats. What is written to OUT:
  .dipset  the module's set file, with every member of every dipole but
           whether it is selected, and without the head sphere and the
           fiducial points ("dipole register" writes those)
  .txt     the module's text for spreadsheets, UTF-16
  .csv     a table, UTF-8, with the units in the column names; commas,
           quoted as RFC 4180 says
  .tsv     the same with tabs, and with the same quotes
  .json    the same values with the same names
  .bdip    Neuromag/MNE binary; --to neuromag is their text, --to ctf is CTF's
  .mrk.json  points for 3D Slicer; --to arrows is a line for each dipole
  .vtp     points for ParaView, PyVista and 3D Slicer
What a file cannot hold is told by name and count. --frame chooses the frame of places in tables,
.mrk.json and .vtp; frames but ctf need --fiducials, or --mri with points beside it. MNE's
*-fiducials.fif and, with --trans, its *-trans.fif are points of the MRI that --mri names.
Tables come back: FILE may be such a .csv, .tsv or .json. A value that the file leaves open is
an empty cell, in JSON null; what is no number is nan, inf or -inf, in JSON a text. A text
that a spreadsheet would take for a formula (= + - @) gets a ' in front, which reading takes
off. A .dipset or .txt cannot hold that a value is open; a warning tells of it.

The dipoles of several files follow each other; what belongs to a whole set is taken from the
first. With --force OUT may be one of the files. It is replaced at the end, and only when every
dipole of every file arrived; else it stays as it was.

Examples:
  dipole convert spikes.dip -o spikes.csv
  dipole convert --yes auditory.dip median.txt -o both.dipset
  dipole convert --from 4d - --to json -o - < median.txt)";

class ConvertCommand final : public Command {
 public:
  explicit ConvertCommand(CLI::App& program);

  int run() const override;

 private:
  ImportOptions m_import;
  FrameOptions m_frame;
  OutputOptions m_output;
};

ConvertCommand::ConvertCommand(CLI::App& program)
    : Command(program, "convert", "Write the dipoles of the files as a file of another format", help) {
  m_output.addTo(options(), m_import);
  m_frame.addTo(options(), m_import);
}

int ConvertCommand::run() const {
  const std::optional<host::PlaceNames> places = m_frame.places();
  ImportSession session =
      importToWrite(m_import, m_output, [this](const auto& files) { return m_frame.headFor(files); });
  writeSet(session, m_import.names(), m_output, m_frame, places);
  return exitDone;
}

}  // namespace

std::unique_ptr<Command> makeConvertCommand(CLI::App& program) {
  return std::make_unique<ConvertCommand>(program);
}

}  // namespace tool
