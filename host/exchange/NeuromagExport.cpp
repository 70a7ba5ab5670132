// The way from a set to Neuromag's dipoles, see host/exchange/NeuromagSet.h.
#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "host/dipoles/DipolePlace.h"
#include "host/exchange/NeuromagSet.h"
#include "host/head/NeuromagFrame.h"
#include "host/text/PathText.h"

namespace host {

namespace {

constexpr double percent = 100.0;
// What rounding to 0.001 nAm can make of an amplitude and of three components.
constexpr double mostRounding = 0.0015;

// The label that every dipole has, as a name that stands between quotes; nothing when there is none.
std::string commonLabel(const CDipoleFace& set, const UnknownValues& unknown) {
  std::optional<std::string> common;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const CDipoleszq* const dipole = set.m_dipoles[slot];
    if (dipole == nullptr) {
      continue;
    }
    const std::string label =
        unknown.isUnknown(slot, DipoleValue::label) ? std::string() : utf8Of(dipole->m_label);
    if (common && *common != label) {
      return {};
    }
    common = label;
  }
  const bool isName = common && *common != "Non" && !common->ends_with(" dipoles") &&
                      common->find_first_of("\"\r\n") == std::string::npos;
  return isName ? *common : std::string();
}

bool isRounded(double value, double digits) {
  const double scaled = value * digits;
  return std::isfinite(scaled) &&
         std::abs(scaled - std::round(scaled)) > 1e-5 * (1.0 + std::abs(scaled) * 1e-9);
}

class Exporter {
 public:
  Exporter(const CDipoleFace& set, const UnknownValues& unknown, const std::optional<Fiducials>& points,
           bool isBinary)
      : m_set(set),
        m_unknown(unknown),
        m_isBinary(isBinary),
        m_toNeuromag(points ? headToNeuromag(*points) : headToSymmetricNeuromag()) {}

  NeuromagExport run() {
    const std::string name = m_isBinary ? std::string() : commonLabel(m_set, m_unknown);
    m_export.file.name = name;
    for (int slot = 0; slot < m_set.m_totalDipoles; ++slot) {
      if (const CDipoleszq* const dipole = m_set.m_dipoles[slot]) {
        add(slot, *dipole);
      }
    }
    Losses& losses = m_export.losses;
    if (m_isBinary) {
      addLostMembers(losses, m_set, m_unknown,
                     {fieldId, fieldOrientationX, fieldMoment, fieldLatency, fieldFitError});
    } else if (name.empty()) {
      addLostMembers(losses, m_set, m_unknown, {fieldOrientationX, fieldMoment, fieldLatency, fieldFitError});
    } else {
      addLostMembers(losses, m_set, m_unknown,
                     {fieldLabel, fieldOrientationX, fieldMoment, fieldLatency, fieldFitError});
    }
    addLostParts(losses, m_set,
                 {SetPart::patient, SetPart::version, SetPart::mriFile, SetPart::sphere, SetPart::mriPoints});
    return std::move(m_export);
  }

 private:
  bool isUnknown(int slot, DipoleValue value) const { return m_unknown.isUnknown(slot, value); }

  void add(int slot, const CDipoleszq& from) {
    NeuromagDipole to;
    to.index = m_isBinary ? from.m_id : 0;
    if (!isUnknown(slot, DipoleValue::latency)) {
      to.begin = from.m_latency;
    }
    to.end = m_isBinary ? 0.0 : to.begin;  // as MNE has it
    to.place = m_toNeuromag(placeOf(from));
    if (!isUnknown(slot, DipoleValue::fitError)) {
      to.goodness = percent - from.m_fitError;
    }
    giveMoment(slot, from, to);
    countRounding(to);
    m_export.file.dipoles.push_back(to);
  }

  void giveMoment(int slot, const CDipoleszq& from, NeuromagDipole& to) {
    const bool hasMoment = !isUnknown(slot, DipoleValue::moment);
    Vector3 direction = directionOf(slot, from, hasMoment ? std::abs(from.m_moment) : 1.0);
    if (hasMoment) {
      to.amplitude = from.m_moment;
      to.moment = direction * from.m_moment;
      m_export.losses.add("sign of the moment", m_isBinary && from.m_moment < 0.0 ? 1 : 0);
      return;
    }
    if (!m_isBinary) {
      to.amplitude = 0.0;
      to.moment = direction;
      return;
    }
    m_export.losses.add("orientation without a moment", direction == Vector3() ? 0 : 1);
  }

  // Nothing when it is unknown, or none.
  Vector3 directionOf(int slot, const CDipoleszq& from, double amplitude) {
    if (isUnknown(slot, DipoleValue::orientation)) {
      return {};
    }
    const Vector3 own = orientationOf(from);
    const double size = length(own);
    if (!std::isfinite(size) || size == 0.0) {
      m_export.losses.add("orientation that is no direction");
      return {};
    }
    const Vector3 direction = turned(m_toNeuromag, own);
    if (!m_isBinary && std::abs(size - 1.0) * amplitude <= mostRounding) {
      return direction;  // as far from 1 as the digits of such a file make it
    }
    m_export.losses.add("length of the orientation", std::abs(size - 1.0) > 1e-6 ? 1 : 0);
    return direction * (1.0 / size);
  }

  void countRounding(const NeuromagDipole& to) {
    if (m_isBinary) {
      return;
    }
    const auto any = [](const Vector3& v, double digits) {
      return isRounded(v.x, digits) || isRounded(v.y, digits) || isRounded(v.z, digits);
    };
    m_export.losses.add("digits of the latency beyond 0.1 ms", isRounded(to.begin, 1e1) ? 1 : 0);
    m_export.losses.add("digits of the position beyond 0.01 mm", any(to.place, 1e2) ? 1 : 0);
    m_export.losses.add("digits of the moment beyond 0.001 nAm",
                        isRounded(to.amplitude, 1e3) || any(to.moment, 1e3) ? 1 : 0);
    m_export.losses.add("digits of the goodness of fit beyond 0.01 %", isRounded(to.goodness, 1e2) ? 1 : 0);
  }

  const CDipoleFace& m_set;
  const UnknownValues& m_unknown;
  bool m_isBinary;
  Affine m_toNeuromag;
  NeuromagExport m_export;
};

}  // namespace

NeuromagExport exportNeuromag(const CDipoleFace& set, const UnknownValues& unknown,
                              const std::optional<Fiducials>& points, bool isBinary) {
  return Exporter(set, unknown, points, isBinary).run();
}

}  // namespace host
