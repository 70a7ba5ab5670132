#include "tool/SortCommand.h"

#include <map>

#include "tool/ImportSession.h"
#include "tool/SetWriter.h"

namespace tool {
namespace {

constexpr const char* help =
    R"(KEY is number, latency, x, y, z (the position), ox, oy, oz (the orientation), error or moment.
The order is ascending; dipoles of which the value is unknown come last. Values that single
precision cannot tell apart count as equal, and equal values need not keep their order: it
is the order that the viewer's list shows. Which dipole is the current one stays as a place
in the list. FILE, OUT and the formats are those of
"dipole convert".

Examples:
  dipole sort --by error spikes.dip -o spikes_by_error.csv
  dipole sort --by latency spikes.dipset -o spikes.dipset --force)";

// The columns of CDipoleFace1Process::sortDipoles.
const std::map<std::string, int>& keys() {
  static const std::map<std::string, int> all = {{"number", 0}, {"latency", 1}, {"x", 2},  {"y", 3},
                                                 {"z", 4},      {"ox", 5},      {"oy", 6}, {"oz", 7},
                                                 {"error", 8},  {"moment", 9}};
  return all;
}

}  // namespace

SortCommand::SortCommand(CLI::App& program)
    : m_command(program.add_subcommand("sort", "Write the dipoles of the files in the order of one value")) {
  m_command->footer(help);
  m_output.addTo(*m_command, m_import);
  m_command->add_option("--by", m_key, "What to sort by, see below")
      ->required()
      ->type_name("KEY")
      ->transform(CLI::IsMember(&keys(), CLI::ignore_case).description(""));
}

int SortCommand::run() const {
  ImportSession session = importToWrite(m_import, m_output);
  session.sort(keys().at(m_key));
  writeSet(session, m_import.names(), m_output);
  return exitDone;
}

}  // namespace tool
