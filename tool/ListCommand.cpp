#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "host/exchange/DipoleFields.h"
#include "host/exchange/SetTable.h"
#include "host/text/Numbers.h"
#include "host/text/TextTable.h"
#include "tool/Commands.h"
#include "tool/FrameOptions.h"
#include "tool/ImportOptions.h"
#include "tool/ImportSession.h"
#include "tool/Output.h"
#include "tool/SetWriter.h"
#include "tool/Text.h"

namespace tool {
namespace {

constexpr const char* help =
    R"(Positions are millimetres in the head frame: x to the left ear, y up, z to the nose, origin
midway between the ears; ox, oy, oz is the orientation. The moment is in nAm when the files say so.
"Slices" tells whether slice pictures show the dipole. Numbers are rounded for the eye, and "-" is a value
that the files leave open, such as latency and fit error of a .dip file without fit information;
--csv and --json write what "dipole convert" writes, every column in full.
With --atlas two columns more tell where each dipole lies: in which label, or how far "off" the
nearest one is; "-" where none is within 20 mm.

Examples:
  dipole list auditory.dip
  dipole list --csv spikes.dip > spikes.csv
  dipole list --json median.txt
  dipole list auditory.dip --atlas aal --mri ch2.nii.gz --mni identity \
      --mni-space colin27 --fiducials ch2.fiducials)";

// Rounded for the eye; "-" is unknown.
std::string rounded(std::size_t place, const CDipoleszq& dipole, std::uint8_t unknown, int decimals) {
  const host::FieldValue value = host::fieldValue(place, dipole, unknown);
  const double* const number = std::get_if<double>(&value);
  return number != nullptr ? host::fixed(*number, decimals) : "-";
}

// The columns of a table file that a person looks for, in their order there; narrow enough for a terminal of
// 80 columns.
struct ListColumn {
  std::size_t place;
  const char* title;
  int decimals;
};
constexpr std::array<ListColumn, 9> numberColumns{{{host::fieldX, "x mm", 1},
                                                   {host::fieldY, "y mm", 1},
                                                   {host::fieldZ, "z mm", 1},
                                                   {host::fieldOrientationX, "ox", 2},
                                                   {host::fieldOrientationY, "oy", 2},
                                                   {host::fieldOrientationZ, "oz", 2},
                                                   {host::fieldMoment, "Moment", 1},
                                                   {host::fieldLatency, "ms", 1},
                                                   {host::fieldFitError, "Err %", 1}}};

void addPlace(std::vector<std::string>& cells, const std::optional<host::NamedPlace>& place) {
  cells.push_back(place ? printable(place->name) : "-");
  cells.push_back(place ? host::fixed(place->distance, 1) : "-");
}

std::vector<std::string> cellsOf(const CDipoleszq& dipole, std::uint8_t unknown) {
  const host::FieldValue label = host::fieldValue(host::fieldLabel, dipole, unknown);
  const std::string* const text = std::get_if<std::string>(&label);
  std::vector<std::string> cells = {std::to_string(dipole.m_number), std::to_string(dipole.m_id),
                                    text != nullptr ? printable(*text) : "-"};
  for (const ListColumn& column : numberColumns) {
    cells.push_back(rounded(column.place, dipole, unknown, column.decimals));
  }
  cells.emplace_back(dipole.m_display == 1 ? "yes" : "no");
  return cells;
}

// What the columns do not name stands above them: a frame, an atlas.
std::string alignedTable(const ImportSession& session, const host::SetFrame& frame,
                         const std::optional<host::SetPlaces>& places) {
  std::vector<host::TextTable::Column> columns = {{"No"}, {"Id"}, {"Label", host::TextTable::Align::left}};
  for (const ListColumn& column : numberColumns) {
    const bool isInNAm = column.place == host::fieldMoment && session.isMomentInNAm();
    columns.push_back({isInNAm ? "nAm" : column.title});
  }
  columns.push_back({"Slices"});
  if (places) {
    columns.push_back({"Place", host::TextTable::Align::left});
    columns.push_back({"off mm"});
  }
  host::TextTable table(std::move(columns));
  const std::unique_ptr<CDipoleFace9File> turned =
      frame.prefix.empty() ? nullptr : host::inFrame(session.collection(), frame);
  const CDipoleFace& set = turned ? *turned : session.collection();
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    if (const CDipoleszq* dipole = set.m_dipoles[slot]) {
      std::vector<std::string> cells = cellsOf(*dipole, session.unknown().of(slot));
      if (places) {
        addPlace(cells, places->of(slot));
      }
      table.addRow(std::move(cells));
    }
  }
  std::string above = frame.prefix.empty() ? "" : "Frame: " + frame.description + "; mm\n";
  if (places) {
    above += "Atlas: " + printable(places->about) + "; \"off\" is the distance to the nearest label\n";
  }
  return above + table.aligned();
}

// On a terminal without what it could act upon; elsewhere as `convert` writes it.
std::string csvTable(const ImportSession& session, const host::SetFrame& frame,
                     const std::optional<host::SetPlaces>& places) {
  const std::string table = tableOf(session, ',', frame, places);
  return isResultOnTerminal() ? printableLines(table) : table;
}

class ListCommand final : public Command {
 public:
  explicit ListCommand(CLI::App& program);

  int run() const override;

 private:
  ImportOptions m_import;
  FrameOptions m_frame;
  bool m_csv = false;
  bool m_json = false;
};

ListCommand::ListCommand(CLI::App& program)
    : Command(program, "list", "List every dipole of the files, in order", help) {
  m_import.addTo(options());
  m_frame.addTo(options(), m_import);
  CLI::Option* csv = options().add_flag("--csv", m_csv, "Comma-separated values, units in the column names");
  options().add_flag("--json", m_json, "JSON")->excludes(csv);
}

int ListCommand::run() const {
  const std::vector<InputFile> files = m_import.files();
  ImportChoices choices = m_import.choices();
  choices.head = m_frame.headFor(files);
  const host::SetFrame frame = m_frame.frame();
  const std::optional<host::PlaceNames> names = m_frame.places();
  ImportSession session(files, std::move(choices));
  session.add(m_frame.findings(session.joined()));
  const std::optional<host::SetPlaces> places = placesOf(session, names);
  if (m_json) {
    writeResult(printableLines(jsonOf(session, m_import.names(), frame, places)));
  } else {
    writeResult(m_csv ? csvTable(session, frame, places) : alignedTable(session, frame, places));
  }
  return session.exitCode();
}

}  // namespace

std::unique_ptr<Command> makeListCommand(CLI::App& program) {
  return std::make_unique<ListCommand>(program);
}

}  // namespace tool
