// The session's head: its MRI, its registration, and what is asked of them.
#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "host/dipoles/SetFiducials.h"
#include "host/head/AtlasFile.h"
#include "host/head/HeadFile.h"
#include "host/head/HeadReader.h"
#include "host/session/NextHead.h"
#include "host/session/OpenedFile.h"
#include "host/text/Failure.h"
#include "host/text/Numbers.h"
#include "host/text/PathText.h"

namespace host {

namespace {

void addLine(std::string& text, const std::string& line) {
  text += (text.empty() ? "" : "\n") + line;
}

// What contradicts that the dipoles belong to a head, a line each; empty: nothing does.
std::string otherHeads(const std::vector<Finding>& findings) {
  std::string text;
  for (const Finding& finding : findings) {
    if (finding.code == FindingCode::otherHead && finding.severity == Severity::wrong) {
      addLine(text, finding.file + (finding.file.empty() ? "" : ": ") + finding.sentence);
    }
  }
  return text;
}

void unregisterHead(Head& head) {
  head.frame = provisionalFrame(*head.volume);
  head.fiducials.reset();
}

}  // namespace

bool isSameFile(const CString& one, const CString& other) {
  std::error_code error;
  return !one.IsEmpty() && !other.IsEmpty() && std::filesystem::equivalent(pathOf(one), pathOf(other), error);
}

std::string otherHeadQuestion(const std::string& others) {
  return others + "\nUp to " + fixed(mostDifference, 0) +
         " mm are taken for the same head. Show these dipoles on this MRI all the same?";
}

Session::NextHead Session::nextHead(CString path, Head head, std::string notice) const {
  const std::array<std::optional<Vector3>, 3> unused = placedPoints();
  if (std::any_of(unused.begin(), unused.end(), [](const auto& point) { return point.has_value(); })) {
    addLine(notice, "The fiducial points that were set are forgotten");
  }
  return {std::move(path), std::move(head), std::move(notice), {}, m_recentHeads};
}

void Session::setHead(NextHead next) noexcept {
  const bool staysRegistered = m_head.isRegistered() && next.head.isRegistered();
  m_head = std::move(next.head);
  m_headPath = next.path;
  m_notice = std::move(next.notice);
  m_answers = std::move(next.answers);
  m_recentHeads = std::move(next.recent);
  m_placed = {};
  m_mni.reset();
  m_findings.reset();
  if (!staysRegistered) {
    m_crosshair = m_head.isRegistered() ? amidTheBrain : Vector3{};
  }
  resetWindow();
}

// Nothing: the user does not want it. `joined`: dipoles that are about to come.
std::optional<Session::NextHead> Session::readHead(const CString& path, const Ask& ask,
                                                   const JoinedSet* joined) const {
  Answers answers = isSameFile(path, m_headPath) ? m_answers : Answers();
  const std::string file = utf8Of(path);
  HeadReading reading;
  if (isCtf21(pathOf(path))) {
    reading.takesCtf21 = answers.ask(
        file,
        utf8Of(fileNameOf(path)) +
            " is a CTF MRI of version 2.1, whose layout is known less well than that of 2.2. Read it all the "
            "same?",
        ask);
    if (!reading.takesCtf21) {
      return std::nullopt;
    }
  }
  OpenedHead opened = openHead(path, reading);
  std::string notice = opened.notice;
  if (const std::string question = opened.question; !question.empty()) {
    if (answers.ask(file, question + ". Are they right all the same?", ask)) {
      takeOwnPoints(opened);
      notice = opened.notice;
    } else {
      addLine(notice, question + ", so they were not taken");
    }
  }
  std::vector<Finding> findings;
  for (const StandingFinding& standing : m_audited.findingsIn(opened.head)) {
    findings.push_back(standing.finding);
  }
  if (joined != nullptr) {
    const std::vector<Finding> more = host::findingsIn(opened.head, *joined);
    findings.insert(findings.end(), more.begin(), more.end());
  }
  if (const std::string others = otherHeads(findings);
      !others.empty() && !answers.ask(file, otherHeadQuestion(others), ask)) {
    unregisterHead(opened.head);
    addLine(notice, "It is not registered, for dipoles of the set are those of another head");
  }
  NextHead next = nextHead(path, std::move(opened.head), std::move(notice));
  next.answers = std::move(answers);
  next.recent.add(path);
  return next;
}

bool Session::openMri(const CString& path, const Ask& ask) {
  return withinMemory([&] {
    const CString full = fullPath(path);
    return forgettingWhatIsGone(m_recentHeads, full, [&] {
      std::optional<NextHead> next = readHead(full, ask, nullptr);
      if (next) {
        setHead(std::move(*next));
      }
      return next.has_value();
    });
  });
}

void Session::usePhantom() {
  withinMemory([&] { setHead(nextHead({}, phantomHead(), {})); });
}

void Session::registerHead(const Fiducials& points) {
  const Vector3 place = m_head.frame.toScanner(m_crosshair);
  withinMemory([&] { host::registerHead(m_head, points); });
  m_findings.reset();
  setCrosshair(m_head.frame.fromScanner(place));
}

void Session::unregister() {
  const Vector3 place = m_head.frame.toScanner(m_crosshair);
  unregisterHead(m_head);
  m_findings.reset();
  setCrosshair(m_head.frame.fromScanner(place));
}

Fiducials Session::fiducialsOfSet() const {
  return withinMemory([&] { return host::fiducialsOfSet(m_dipoles, *m_head.volume); });
}

KnownHead Session::knownHead() const {
  return m_head.isPhantom ? KnownHead() : KnownHead{m_head.fiducials, m_mni, m_head.source.space};
}

bool Session::hasScannerFrame() const {
  return !m_head.isPhantom && m_head.source.space != MriSpace::middle && m_head.volume->sidesStated();
}

void Session::setMni(const MniMap& map) {
  if (!hasScannerFrame()) {
    throw std::runtime_error(m_head.name + " has no scanner coordinates that could lead to MNI");
  }
  withinMemory([&] { m_mni = map; });
}

void Session::readMni(const CString& path) {
  setMni(withinMemory([&] { return readMniMap(pathOf(path)); }));
}

void Session::readAtlas(const std::string& argument) {
  m_atlas =
      withinMemory([&] { return std::make_shared<const Atlas>(host::readAtlas(atlasFilesOf(argument))); });
}

void Session::placeFiducial(FiducialName name) {
  m_placed.at(static_cast<std::size_t>(name)) = m_head.frame.toScanner(m_crosshair);
}

std::array<bool, 3> Session::placedFiducials() const {
  return {m_placed[0].has_value(), m_placed[1].has_value(), m_placed[2].has_value()};
}

std::array<std::optional<Vector3>, 3> Session::placedPoints() const {
  std::array<std::optional<Vector3>, 3> points = m_placed;
  if (const std::optional<Fiducials>& used = m_head.fiducials) {
    const std::array<Vector3, 3> own = {used->nasion, used->leftEar, used->rightEar};
    for (std::size_t i = 0; i < points.size(); ++i) {
      if (points.at(i) == own.at(i)) {
        points.at(i).reset();
      }
    }
  }
  for (std::optional<Vector3>& point : points) {
    if (point) {
      point = m_head.frame.fromScanner(*point);
    }
  }
  return points;
}

void Session::registerPlaced() {
  constexpr std::array<const char*, 3> missing = {"the nasion has not been placed yet",
                                                  "the left ear has not been placed yet",
                                                  "the right ear has not been placed yet"};
  withinMemory([&] {
    for (std::size_t i = 0; i < missing.size(); ++i) {
      if (!m_placed.at(i)) {
        throw std::invalid_argument(missing.at(i));
      }
    }
  });
  registerHead({*m_placed[0], *m_placed[1], *m_placed[2]});
}

std::string Session::headMismatch() const {
  if (!m_head.isRegistered() || m_head.isPhantom) {
    return {};
  }
  return withinMemory([&] { return host::headMismatch(m_dipoles, m_head); });
}

}  // namespace host
