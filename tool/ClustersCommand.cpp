#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/dipoles/UnknownDipoles.h"
#include "tool/ClusterOptions.h"
#include "tool/ClusterReport.h"
#include "tool/Commands.h"
#include "tool/FilterOptions.h"
#include "tool/FrameOptions.h"
#include "tool/ImportOptions.h"
#include "tool/ImportSession.h"
#include "tool/Output.h"
#include "tool/Text.h"

namespace tool {
namespace {

constexpr const char* help =
    R"(A cluster is a group of dipoles each of which lies near another one: so it may be longer than
the distance, as a chain is longer than its links. It tells where dipoles are many and near each
other, and nothing about what they mean. The limits of fit error, moment and latency come first;
what they remove connects nothing. Dipoles in groups that are too small are scattered: nothing is
deleted, all are counted. The largest cluster is number 1.

"rms" is the root mean square distance of its dipoles from the centroid, "far" the largest. ox,
oy, oz is the mean of the orientations as arrows of equal length, "cone" the angle in degrees
around it within which at least 95 % of them lie; signs count. Latency and fit error are told as
median (range). Centroids are told in every frame that is known: --mri and --fiducials make the
scanner's known, --mni the MNI's; --frame chooses one.

Examples:
  dipole clusters spikes.dip
  dipole clusters spikes.dip --max-error 10 --members 4 --angle 45
  dipole clusters spikes.dip --mri ch2.nii.gz --fiducials ch2.fiducials \
      --mni identity --mni-space colin27 --atlas aal)";

class ClustersCommand final : public Command {
 public:
  explicit ClustersCommand(CLI::App& program);

  int run() const override;

 private:
  std::vector<host::SetFrame> frames() const;

  ImportOptions m_import;
  FrameOptions m_frame;
  FilterOptions m_filter;
  ClusterOptions m_clusters;
  bool m_csv = false;
  bool m_json = false;
};

ClustersCommand::ClustersCommand(CLI::App& program)
    : Command(program, "clusters", "Find the dipoles that lie together, and tell of each group", help) {
  m_import.addTo(options());
  m_clusters.addTo(options());
  m_filter.addTo(options());
  m_frame.addTo(options(), m_import);
  CLI::Option* csv = options().add_flag("--csv", m_csv, "A line for each cluster, comma-separated");
  options()
      .add_flag("--json", m_json, "JSON, with the dipoles of each cluster as rows of \"dipole list\"")
      ->excludes(csv);
}

// The one that is chosen, else every one that is known.
std::vector<host::SetFrame> ClustersCommand::frames() const {
  if (m_frame.name()) {
    return {m_frame.frame()};
  }
  const host::KnownHead head = m_frame.head();
  std::vector<host::SetFrame> known = {host::frameNamed(host::FrameName::host, head),
                                       host::frameNamed(host::FrameName::ctf, head)};
  if (head.points || head.neuromagToScanner) {
    known.push_back(host::frameNamed(host::FrameName::neuromag, head));
  }
  if (head.isPlaced()) {
    known.push_back(host::patientFrame(head));
  }
  if (head.isPlaced() && head.mni) {
    known.push_back(host::frameNamed(host::FrameName::mni, head));
  }
  return known;
}

int ClustersCommand::run() const {
  const std::vector<InputFile> files = m_import.files();
  ImportChoices choices = m_import.choices();
  choices.head = m_frame.headFor(files);
  const std::vector<host::SetFrame> frames = this->frames();
  const std::optional<host::PlaceNames> places = m_frame.places();
  ImportSession session(files, std::move(choices));
  session.add(m_frame.findings(session.joined()));
  host::UnknownDipoles unknown;
  unknown.mark(session.collection(), session.unknown());
  const host::Clusters found =
      clustersOf(session.collection(), m_filter.filter(), m_clusters.rule(), &unknown);
  const ClusterReport report{session, m_import.names(), found, frames, places};
  const std::string text = m_json ? jsonOf(report) : m_csv ? csvOf(report) : textOf(report);
  writeResult(m_csv && !isResultOnTerminal() ? text : printableLines(text));
  return session.exitCode();
}

}  // namespace

std::unique_ptr<Command> makeClustersCommand(CLI::App& program) {
  return std::make_unique<ClustersCommand>(program);
}

}  // namespace tool
