// The lines of CtfWalk that are no dipoles: header, head sphere, fiducial points, flags and fit information.
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "host/audit/CtfWalk.h"
#include "host/text/Blanks.h"

namespace host {

void CtfWalk::takeFitHeading(const TextLine& line) {
  if (section().kind == CtfKind::fitInfo) {
    Heading heading(line.text);
    if (heading.names(Column::latency)) {
      section().heading = std::move(heading);
    }
  }
}

void CtfWalk::takeFollower(const TextLine& line) {
  const std::optional<NumberedRow> row = numberedRow(line.text);
  if (row && !m_isForeign) {
    m_reading.followers.push_back({row->rest, line.number, row->number, sectionIndex()});
  }
}

void CtfWalk::takeHeader(const TextLine& line) {
  const CtfHeaderLine found = {line.text, line.number, section().isRead};
  if (section().kind == CtfKind::model) {
    m_reading.mriFile = contains(line.text, "MRI_FILE:") ? found : m_reading.mriFile;
    return;
  }
  m_reading.version = contains(line.text, "VERSION:") ? found : m_reading.version;
  if (contains(line.text, "PATIENT:")) {
    const bool isOther =
        m_reading.patient.line != 0 && withoutBlanks(m_reading.patient.text) != withoutBlanks(line.text);
    m_reading.otherPatientLine = isOther ? line.number : m_reading.otherPatientLine;
    m_reading.patient = found;
  }
}

void CtfWalk::takeSphere(const TextLine& line) {
  CtfSphere& sphere = m_reading.moreSpheres.empty() ? m_reading.sphere : m_reading.moreSpheres.back();
  constexpr std::array<std::string_view, 4> keys = {"ORIGIN_X:", "ORIGIN_Y:", "ORIGIN_Z:", "RADIUS:"};
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const std::size_t found = line.text.find(keys[i]);
    if (found == std::string_view::npos) {
      continue;
    }
    RowScan(line.text).word().blanks().real(&sphere.taken[i]);
    sphere.meant[i] = RowFields(line.text.substr(found + keys[i].size())).number(0);
    ++sphere.count;
    return;
  }
}

void CtfWalk::takeFiducial(const TextLine& line, CtfPoints& points) {
  constexpr std::array<std::string_view, 3> keys = {"NASION:", "LEFT_EAR", "RIGHT_EAR"};
  const std::size_t colon = line.text.find(':');
  for (std::size_t i = 0; i < keys.size() && colon != std::string_view::npos; ++i) {
    if (!contains(line.text, keys[i])) {
      continue;
    }
    const std::string_view values = line.text.substr(colon + 1);
    const RowFields fields(values);
    const auto a = fields.number(0);
    const auto b = fields.number(1);
    const auto c = fields.number(2);
    if (a && b && c) {
      points.points[i] = {*a, *b, *c};
    }
    const bool isTaken = RowScan(values).integer().integer().integer().fields() == 3;
    points.areTaken[i] = points.areTaken[i] || isTaken;
    return;
  }
}

}  // namespace host
