#include "tool/ListCommand.h"

#include <string>
#include <vector>

#include "host/text/Numbers.h"
#include "host/text/TextTable.h"
#include "platform/Utf.h"
#include "tool/ImportSession.h"
#include "tool/Output.h"
#include "tool/Text.h"

namespace tool {
namespace {

constexpr const char* help =
    R"(Positions are millimetres in the head frame: x to the left ear, y up, z to the nose, origin
midway between the ears. The moment is in nAm when the files say so. "Slices" tells whether
slice pictures show the dipole. A dipole without fit information in its file shows the
module's initial values: latency 0 ms, fit error 0.2 %.

Examples:
  dipole list auditory.dip
  dipole list --csv spikes.dip > spikes.csv
  dipole list --yes --json moving.dip)";

using Collection = CDipoleFace9File;

// The dipoles of a collection without its empty slots.
std::vector<const CDipoleszq*> dipolesOf(const Collection& collection) {
  std::vector<const CDipoleszq*> dipoles;
  for (int i = 0; i < collection.m_totalDipoles; ++i) {
    if (const CDipoleszq* dipole = collection.getDipole(i)) {
      dipoles.push_back(dipole);
    }
  }
  return dipoles;
}

bool isShownOnSlices(const CDipoleszq& dipole) {
  return dipole.m_display == 1;
}

std::string alignedTable(const ImportSession& session) {
  const char* moment = session.isMomentInNAm() ? "Moment nAm" : "Moment";
  host::TextTable table({{"No"},
                         {"Id"},
                         {"Latency ms"},
                         {"x mm"},
                         {"y mm"},
                         {"z mm"},
                         {"ox"},
                         {"oy"},
                         {"oz"},
                         {moment},
                         {"Error %"},
                         {"Label", host::TextTable::Align::left},
                         {"Slices"}});
  for (const CDipoleszq* d : dipolesOf(session.collection())) {
    std::vector<std::string> cells = {std::to_string(d->m_number), std::to_string(d->m_id),
                                      host::fixed(d->m_latency, 2)};
    for (const double value : d->m_location) {
      cells.push_back(host::fixed(value, 2));
    }
    for (const double value : d->m_orientation) {
      cells.push_back(host::fixed(value, 4));
    }
    cells.push_back(host::fixed(d->m_moment, 2));
    cells.push_back(host::fixed(d->m_fitError, 2));
    cells.push_back(printable(toUtf8(d->m_label)));
    cells.emplace_back(isShownOnSlices(*d) ? "yes" : "no");
    table.addRow(std::move(cells));
  }
  return table.aligned();
}

std::string csvTable(const ImportSession& session) {
  const char* moment = session.isMomentInNAm() ? "moment_nAm" : "moment";
  host::TextTable table({{"number"},
                         {"id"},
                         {"latency_ms"},
                         {"x_mm"},
                         {"y_mm"},
                         {"z_mm"},
                         {"orientation_x"},
                         {"orientation_y"},
                         {"orientation_z"},
                         {moment},
                         {"fit_error_percent"},
                         {"label"},
                         {"shown_on_slices"}});
  for (const CDipoleszq* d : dipolesOf(session.collection())) {
    std::vector<std::string> cells = {std::to_string(d->m_number), std::to_string(d->m_id),
                                      host::shortest(d->m_latency)};
    for (const double value : d->m_location) {
      cells.push_back(host::shortest(value));
    }
    for (const double value : d->m_orientation) {
      cells.push_back(host::shortest(value));
    }
    cells.push_back(host::shortest(d->m_moment));
    cells.push_back(host::shortest(d->m_fitError));
    cells.push_back(printable(toUtf8(d->m_label)));
    cells.emplace_back(isShownOnSlices(*d) ? "yes" : "no");
    table.addRow(std::move(cells));
  }
  return table.delimited(',');
}

Json triple(const double (&values)[3]) {
  return Json::array({jsonNumber(values[0]), jsonNumber(values[1]), jsonNumber(values[2])});
}

Json jsonList(const ImportSession& session, const std::vector<std::string>& files) {
  Json dipoles = Json::array();
  for (const CDipoleszq* d : dipolesOf(session.collection())) {
    dipoles.push_back({{"number", d->m_number},
                       {"id", d->m_id},
                       {"latency_ms", jsonNumber(d->m_latency)},
                       {"position_mm", triple(d->m_location)},
                       {"orientation", triple(d->m_orientation)},
                       {"moment", jsonNumber(d->m_moment)},
                       {"fit_error_percent", jsonNumber(d->m_fitError)},
                       {"label", toUtf8(d->m_label)},
                       {"shown_on_slices", isShownOnSlices(*d)}});
  }
  return {{"files", files},
          {"frame", "head: x left, y up, z front"},
          {"moment_unit", jsonText(session.isMomentInNAm() ? "nAm" : "")},
          {"dipoles", std::move(dipoles)}};
}

}  // namespace

ListCommand::ListCommand(CLI::App& program)
    : m_command(program.add_subcommand("list", "List every dipole of the files, in order")) {
  m_command->footer(help);
  m_import.addTo(*m_command);
  CLI::Option* csv = m_command->add_flag("--csv", m_csv, "Comma-separated values, units in the column names");
  m_command->add_flag("--json", m_json, "JSON")->excludes(csv);
}

int ListCommand::run() const {
  const ImportSession session(m_import.files(), m_import.answers());
  if (m_json) {
    writeResult(jsonList(session, m_import.names()));
  } else {
    writeResult(m_csv ? csvTable(session) : alignedTable(session));
  }
  return session.isComplete() ? exitDone : exitFailure;
}

}  // namespace tool
