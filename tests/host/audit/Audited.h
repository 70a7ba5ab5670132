// A file that a test makes, imported by the module as a host imports it, and audited.
#pragma once

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "host/audit/FileAudit.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/TempFolder.h"

class Audited {
 public:
  // `answers` are given to the module's questions in turn: "moving yes", "far no" and so on.
  Audited(const std::string& name, std::string bytes, const std::vector<std::string>& answers = {})
      : m_bytes(std::move(bytes)) {
    for (const std::string& answer : answers) {
      const bool isYes = answer.ends_with("yes");
      user.answer(isYes ? IDYES : IDNO);
      (answer.starts_with("moving") ? file.answers.moving : file.answers.distant).push_back(isYes);
    }
    CString path = folder.write(name, m_bytes);
    EXPECT_EQ(set->importDipoleX(path, false), 1);
    EXPECT_EQ(user.answersLeft(), 0U);
    file.name = name;
    file.text = m_bytes;
    file.format = name.ends_with(".dip") ? host::DipoleTextFormat::ctf : host::DipoleTextFormat::msi;
  }

  // "wrong unit" and the like, in the report's order.
  static std::vector<std::string> outlineOf(const host::AuditReport& report) {
    std::vector<std::string> outline;
    for (const host::Finding& finding : report.findings) {
      outline.push_back(std::string(nameOf(finding.severity)) + " " + std::string(nameOf(finding.code)));
    }
    return outline;
  }
  std::vector<std::string> outline() const { return outlineOf(host::audit(file, *set)); }

  // The one finding with a code; fails the test when there is none, or more.
  host::Finding only(host::FindingCode code) const {
    const host::AuditReport report = host::audit(file, *set);
    const auto has = [code](const host::Finding& finding) { return finding.code == code; };
    EXPECT_EQ(std::count_if(report.findings.begin(), report.findings.end(), has), 1);
    const auto found = std::find_if(report.findings.begin(), report.findings.end(), has);
    return found != report.findings.end() ? *found : host::Finding();
  }

  host::RepairReport repair(const std::set<host::FindingCode>& codes) {
    return host::repair(file, *set, codes);
  }

  const CDipoleszq& dipole(int slot) const { return *set->m_dipoles[slot]; }
  std::array<double, 3> place(int slot) const {
    const double* const place = dipole(slot).m_location;
    return {place[0], place[1], place[2]};
  }
  std::string label(int slot) const;

  TempFolder folder;
  ScriptedOperator user;
  std::unique_ptr<CDipoleFace9File> set = std::make_unique<CDipoleFace9File>();
  host::ImportedText file;

 private:
  std::string m_bytes;
};

using Place3 = std::array<double, 3>;
using Lines = std::vector<std::string>;

// Text that a CTF file has around its dipoles.
inline const std::string ctfSphere =
    "MEG_Sphere\n{\n\tORIGIN_X:\t0.5\n\tORIGIN_Y:\t0.1\n\tORIGIN_Z:\t5.0\n\tRADIUS:\t8.5\n}\n";
inline const std::string ctfHeading = "\t// xp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\tMom(nAm)\tLabel\n";
inline const std::string ctfFit =
    "Dipole_FitInfo\n{\n\t//\tTrial\tStart\tLatency "
    "(s)\tN_Pts\tError\tMEG_Error\tEEG_Error\tErrType\tFitType\t"
    "Good\tDataset\n";

// A section of dipoles with the rows given, "1:\t1.00 ..." each without its line end.
inline std::string ctfSection(const std::string& name, const std::string& heading, const Lines& rows) {
  std::string text = name + "\n{\n" + heading;
  for (const std::string& row : rows) {
    text += row + "\n";
  }
  return text + "}\n";
}
