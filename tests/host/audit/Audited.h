// A file that a test makes, imported by the module as a host imports it, and audited.
#pragma once

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "host/audit/FileAudit.h"
#include "tests/host/audit/AuditTexts.h"
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

  Lines outline() const { return outlineOf(host::audit(file, *set).findings); }

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
