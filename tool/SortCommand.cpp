#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/dipoles/SortSet.h"
#include "tool/Choice.h"
#include "tool/Commands.h"
#include "tool/FrameOptions.h"
#include "tool/ImportOptions.h"
#include "tool/ImportSession.h"
#include "tool/OutputOptions.h"
#include "tool/SetWriter.h"

namespace tool {
namespace {

constexpr const char* help =
    R"(The position is x, y, z, the orientation ox, oy, oz. The order is ascending unless --descending says
otherwise; dipoles of which the value is unknown or no number, or without a label, come last in either.
Labels go by their characters, numbers in them by their size. Other values that single precision cannot tell
apart count as equal, and equal values need not keep their order: it is the order that the viewer's list
shows. Which dipole is the current one stays as a place in the list. FILE, OUT and the formats are those of
"dipole convert".

Examples:
  dipole sort --by error spikes.dip -o best_first.csv
  dipole sort --by moment --descending spikes.dip --to json -o -
  dipole sort --by label auditory.dip -o auditory.tsv)";

// The columns of CDipoleFace1Process::sortDipoles, and labels.
const std::vector<std::pair<std::string, int>>& keys() {
  static const std::vector<std::pair<std::string, int>> all = {{"number", 0},
                                                               {"latency", 1},
                                                               {"x", 2},
                                                               {"y", 3},
                                                               {"z", 4},
                                                               {"ox", 5},
                                                               {"oy", 6},
                                                               {"oz", 7},
                                                               {"error", 8},
                                                               {"moment", 9},
                                                               {"label", host::sortByLabel}};
  return all;
}

class SortCommand final : public Command {
 public:
  explicit SortCommand(CLI::App& program);

  int run() const override;

 private:
  ImportOptions m_import;
  FrameOptions m_frame;
  OutputOptions m_output;
  std::string m_key;
  bool m_isDescending = false;
};

SortCommand::SortCommand(CLI::App& program)
    : Command(program, "sort", "Write the dipoles of the files in the order of one value", help) {
  m_output.addTo(options(), m_import);
  m_frame.addTo(options(), m_import);
  addChoice(options(), "--by", m_key, "What to sort by", keys())->required();
  options().add_flag("--descending", m_isDescending, "The largest first");
}

int SortCommand::run() const {
  const std::optional<host::PlaceNames> places = m_frame.places();
  ImportSession session =
      importToWrite(m_import, m_output, [this](const auto& files) { return m_frame.headFor(files); });
  session.sort(chosen(keys(), m_key),
               m_isDescending ? host::SortOrder::descending : host::SortOrder::ascending);
  writeSet(session, m_import.names(), m_output, m_frame, places);
  return exitDone;
}

}  // namespace

std::unique_ptr<Command> makeSortCommand(CLI::App& program) {
  return std::make_unique<SortCommand>(program);
}

}  // namespace tool
