#include "host/exchange/NeuromagSet.h"

#include <cmath>
#include <new>
#include <utility>

#include "host/exchange/DelimitedText.h"
#include "host/head/NeuromagFrame.h"
#include "host/text/Utf8.h"

namespace host {

namespace {

constexpr double percent = 100.0;
// What rounding to 0.001 nAm can make of an amplitude and of three components.
constexpr double mostRounding = 0.0015;

// As a decimal number again: 100 - 93.46 is 6.540000000000006.
double errorOf(double goodness) {
  constexpr double digits = 1e10;
  const double error = percent - goodness;
  return std::abs(error) < 1e4 ? std::round(error * digits) / digits : error;
}

class Importer {
 public:
  Importer(const NeuromagDipoles& file, const std::optional<Fiducials>& points)
      : m_file(file), m_toHead(points ? neuromagToHead(*points) : symmetricNeuromagToHead()) {
    m_import.set.dipoles = std::make_unique<CDipoleFace9File>();
    m_import.set.dipoles->m_momentInNAm = 1;
    m_label = fromUtf8(file.name);
  }

  NeuromagImport run() {
    for (const NeuromagDipole& dipole : m_file.dipoles) {
      add(dipole);
    }
    (void)m_import.set.dipoles->backupLocationRotationRaw();
    return std::move(m_import);
  }

  const std::vector<int>& placeless() const { return m_placeless; }
  const std::vector<int>& contradictory() const { return m_contradictory; }
  const std::vector<int>& ranges() const { return m_ranges; }

 private:
  void add(const NeuromagDipole& from) {
    CDipoleFace9File& set = *m_import.set.dipoles;
    m_slot = set.m_totalDipoles;
    if (m_slot == DipoleTable::capacity) {
      throw TableFault(0, 0, "it has more dipoles than a set holds, " + std::to_string(m_slot));
    }
    if (set.addDipole() == 0) {
      throw std::bad_alloc();
    }
    CDipoleszq& dipole = *set.m_dipoles[m_slot];
    dipole.m_number = m_slot + 1;
    dipole.m_id = from.index;
    const Vector3 place = m_toHead(from.place);
    for (int axis = 0; axis < 3; ++axis) {
      dipole.m_location[axis] = place[axis];
    }
    if (!isFinite(place)) {
      m_placeless.push_back(m_slot);
    }
    takeMoment(from, dipole);
    take(from.begin, dipole.m_latency, DipoleValue::latency);
    take(errorOf(from.goodness), dipole.m_fitError, DipoleValue::fitError);
    takeLabel(dipole);
    const bool hasEnd = !std::isnan(from.end) && !(m_file.isBinary && from.end == 0.0);  // MNE's 0 is none
    if (hasEnd && from.end != from.begin) {
      m_ranges.push_back(m_slot);
    }
  }

  void markUnknown(DipoleValue value) { m_import.set.unknown.mark(m_slot, value); }

  void take(double value, double& member, DipoleValue which) {
    if (std::isnan(value)) {
      markUnknown(which);
    } else {
      member = value;
    }
  }

  void takeLabel(CDipoleszq& dipole) {
    if (m_file.name.empty()) {
      markUnknown(DipoleValue::label);
    } else {
      dipole.m_label = m_label;
    }
  }

  void takeMoment(const NeuromagDipole& from, CDipoleszq& dipole) {
    const double size = length(from.moment);
    const bool hasDirection = std::isfinite(size) && size > 0.0;
    const double amplitude = std::isnan(from.amplitude) ? size : from.amplitude;
    double divisor = amplitude;
    const bool isOfUnknownSize = amplitude == 0.0 && std::abs(size - 1.0) <= mostRounding;
    if (hasDirection && !isOfUnknownSize &&
        !(std::abs(std::abs(amplitude) - size) <= mostRounding + size * 1e-6)) {
      m_contradictory.push_back(m_slot);
      divisor = amplitude < 0.0 ? -size : size;
    }
    if (hasDirection && divisor == 0.0) {
      divisor = size;
    }
    if (hasDirection) {
      const Vector3 direction = turned(m_toHead, from.moment * (1.0 / divisor));
      (void)dipole.setDipoleOrientation(direction.x, direction.y, direction.z);
    } else {
      markUnknown(DipoleValue::orientation);
    }
    // An amplitude of nothing beside a direction says that nobody knows it.
    take(amplitude == 0.0 && hasDirection ? NeuromagDipole::none : amplitude, dipole.m_moment,
         DipoleValue::moment);
  }

  const NeuromagDipoles& m_file;
  Affine m_toHead;
  NeuromagImport m_import;
  CString m_label;
  int m_slot = 0;
  std::vector<int> m_placeless;
  std::vector<int> m_contradictory;
  std::vector<int> m_ranges;
};

std::string counted(std::size_t count, const char* what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

const char* symmetricText(bool isPlaced) {
  return isPlaced ? "The fiducial points of the head are not known: its ears were taken as symmetric. In the "
                    "MRI, where the transform places them, and in the Neuromag head frame positions and "
                    "orientations are right; in other head frames positions may be wrong by some mm, "
                    "orientations by some degrees."
                  : "The positions are in the Neuromag head frame, and the fiducial points of the head are "
                    "not known: its ears were taken as symmetric. Positions may be wrong by some mm, "
                    "orientations by some degrees.";
}

// What a file says beside the values of its dipoles, or does not say.
void addFindings(const NeuromagDipoles& file, const Importer& importer, const std::string& name,
                 const CarryingHead& head, std::vector<Finding>& findings) {
  const auto add = [&](FindingCode code, Severity severity, std::vector<int> slots, std::string sentence) {
    findings.push_back({code, severity, name, 0, {}, std::move(slots), std::move(sentence), {}});
  };
  if (!importer.placeless().empty()) {
    add(FindingCode::lostRows, Severity::wrong, importer.placeless(),
        "The places of " + counted(importer.placeless().size(), "dipole") + " are no numbers.");
  }
  if (!head.points) {
    add(FindingCode::symmetricEars, Severity::doubtful, {}, symmetricText(head.isPlaced));
  }
  if (!file.hasHeading || !file.hasSystem) {
    add(FindingCode::heading, Severity::doubtful, {},
        !file.hasHeading
            ? "The file does not name its columns: they were taken as begin, end, X, Y, Z, Q, Qx, "
              "Qy, Qz, g in ms, mm, nAm and percent, in the Neuromag head frame."
            : "The file does not name its coordinate system: the Neuromag head frame was taken.");
  }
  if (!importer.contradictory().empty()) {
    add(FindingCode::momentVector, Severity::doubtful, importer.contradictory(),
        "The amplitude Q of " + counted(importer.contradictory().size(), "dipole") +
            " is not the length of Qx, Qy, Qz: the amplitude is shown as the moment, one of 0 as unknown.");
  }
  add(FindingCode::goodness, Severity::note, {},
      "The file gives the goodness of fit; the fit errors shown are 100 minus it, in percent.");
  std::string leftOut;
  for (const auto& [column, count] : file.leftOut) {
    leftOut +=
        (leftOut.empty() ? "" : ", ") + column + " of " + counted(static_cast<std::size_t>(count), "dipole");
  }
  if (!importer.ranges().empty()) {
    leftOut += (leftOut.empty() ? "" : ", ") + std::string("the end of the time of ") +
               counted(importer.ranges().size(), "dipole") + " (the begin is the latency)";
  }
  if (!leftOut.empty()) {
    add(FindingCode::leftOut, Severity::note, {}, "A set has no room for " + leftOut + ".");
  }
}

}  // namespace

NeuromagImport importNeuromag(const NeuromagDipoles& file, const std::string& name,
                              const CarryingHead& head) {
  Importer importer(file, head.points);
  NeuromagImport import = importer.run();
  addFindings(file, importer, name, head, import.findings);
  return import;
}

}  // namespace host
