// What CtfSectionAudit says about what it has gathered.
#include <utility>

#include "host/audit/CtfSectionAudit.h"

namespace host {

void CtfSectionAudit::finish() {
  finishUnit();
  finishLatency();
  finishColumns();
  finishLabels();
  const std::string numbers = counted(m_noNumbers.slots.size(), "dipole");
  m_pass.add(FindingCode::lostRows, Severity::wrong, m_section.name, std::move(m_noNumbers),
             numbers +
                 " came of rows that hold something else than numbers where numbers belong; what was "
                 "read of them is not what stands there.",
             {});
  const std::string misplaced = counted(m_misplaced.slots.size(), "dipole");
  m_pass.add(FindingCode::lostRows, Severity::wrong, m_section.name, std::move(m_misplaced),
             misplaced + " did not come to the place that the file gives.", {});
}

void CtfSectionAudit::finishUnit() {
  m_pass.tellOf(m_unit, m_pass.file().unit == LengthUnit::centimetre ? "the position was taken as cm"
                                                                     : "the position was taken as mm");
  finishStatedUnit();
  const bool isSmall = m_largest <= largestInCentimetre;
  const bool saysMillimetre = m_positions.stated() == ColumnUnit::millimetre;
  const bool saysMetre = m_positions.stated() == ColumnUnit::metre;
  std::string sentence = "The file does not say whether its positions are cm or mm; they were taken as mm.";
  if (saysMillimetre) {
    sentence = "The file gives its positions in mm.";
  } else if (saysMetre) {
    sentence = "The file gives its positions in m, but they are too large for a head.";
  } else if (m_section.isUnitBefore) {
    sentence =
        "The unit of the positions stands before the section, where it is not read; they were taken "
        "as mm.";
  }
  if (isSmall) {
    sentence +=
        " All of them lie within 15 of the origin, which fits cm: a dipole 5 cm to the side would be "
        "shown 5 mm from the middle of the head.";
  } else {
    sentence += " Some lie more than 15 from the origin, which fits mm.";
  }
  m_pass.addOpenUnit(isSmall || saysMetre ? Severity::wrong : Severity::doubtful, m_section.name,
                     std::move(m_unit), std::move(sentence));
}

void CtfSectionAudit::finishStatedUnit() {
  const std::string unit(nameOf(m_positions.stated()));
  m_pass.tellOf(m_statedUnit, "the position was taken as " + unit + ", as the file gives it");
  m_pass.add(FindingCode::unit, Severity::wrong, m_section.name, std::move(m_statedUnit),
             "The file gives its positions in " + unit +
                 ", but they were taken in another unit: every dipole is shown in a wrong place.",
             "The positions are taken in the unit that the file gives.");
  m_pass.add(FindingCode::unit, Severity::note, m_section.name, std::move(m_millimetre),
             "The file gives its positions in mm.", {});
  if (m_positions.isContradicted()) {
    m_pass.add({FindingCode::unit,
                Severity::note,
                {},
                m_section.line,
                std::string(m_section.name),
                {},
                "The file gives its positions in " + unit + "; the other unit that you said was not used.",
                {}});
  }
}

void CtfSectionAudit::finishLatency() {
  m_pass.tellOf(m_latency, "the latency was taken in the unit that the heading names");
  m_pass.add(FindingCode::latencyUnit, Severity::wrong, m_section.name, std::move(m_latency),
             "The latencies were taken in another unit than the one that the heading names, so they are "
             "wrong by a factor of 1000.",
             "The latencies are taken in the unit of the heading.");
  m_pass.add(FindingCode::latencyUnit, Severity::doubtful, m_section.name, std::move(m_openLatency),
             "The file does not say whether its latencies are seconds or milliseconds; they were taken as "
             "milliseconds.",
             {});
}

void CtfSectionAudit::finishColumns() {
  m_pass.tellOf(m_columns, "the values were taken from the columns that the heading names");
  m_pass.tellOf(m_unnamed, "fit error and label are unknown");
  m_pass.add(FindingCode::movingColumns, Severity::wrong, m_section.name, std::move(m_columns),
             "The section" + m_otherValues.ofOtherColumns(),
             "The values are taken from the columns that the heading names.");
  const std::string open = counted(m_openColumns.slots.size(), "dipole");
  m_pass.add(FindingCode::movingColumns, Severity::wrong, m_section.name, std::move(m_openColumns),
             open +
                 " came of rows whose columns are not those of the heading, nor those that the import "
                 "takes for granted; which value is which is open.",
             {});
  m_pass.add(FindingCode::movingColumns, Severity::wrong, m_section.name, std::move(m_unnamed),
             "The rows have more columns than the import knows, and no heading names them. The fit error and "
             "the label that are shown are numbers of an unknown kind.",
             "Fit error and label become unknown.");
}

void CtfSectionAudit::finishLabels() {
  m_pass.tellOf(m_borrowed, "the label of the dipole before was taken off");
  m_pass.tellOf(m_cut, "the label is whole now");
  m_pass.tellOf(m_encoded, "the label was decoded as UTF-8");
  m_pass.add(FindingCode::labels, Severity::wrong, m_section.name, std::move(m_borrowed),
             "Dipoles without a label of their own show that of a dipole before them.",
             "These dipoles have no label (\"Non\").");
  m_pass.add(FindingCode::labels, Severity::note, m_section.name, std::move(m_cut),
             "Labels of several words were cut behind the first word.", "The labels are taken whole.");
  m_pass.add(FindingCode::labels, Severity::note, m_section.name, std::move(m_cutOpen),
             "Rows go on behind their labels; whether that belongs to the labels is open.", {});
  m_pass.add(FindingCode::encoding, Severity::note, m_section.name, std::move(m_encoded),
             "Labels are written in UTF-8 and were read otherwise: letters with accents are shown as signs.",
             "The labels are decoded.");
}

}  // namespace host
