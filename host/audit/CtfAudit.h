// The audit of a CTF dipole file, see FileAudit.h.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/audit/AuditPass.h"
#include "host/audit/CtfFollowers.h"
#include "host/audit/CtfReading.h"

namespace host {

class CtfAudit {
 public:
  CtfAudit(AuditPass& pass, const TextEncoding& encoding);

  void run();

 private:
  bool isRepairedByRows() const;
  std::vector<LateDipole> unreadDipoles() const;
  void insertUnread();
  void lookAtDipoles(const CtfFollowers& followers, const std::vector<int>& slots);
  void countMissing();
  void lookAtLostRows();
  void lookAtProblems();
  void lookAtReplaced();
  void sayProblem(FindingCode code, Severity severity, int line, std::string_view section,
                  std::string sentence);

  // In CtfFollowersAudit.cpp.
  void lookAtFlags(const CtfFollowers& followers, const std::vector<int>& slots);
  void lookAtFits(const CtfFollowers& followers, const std::vector<int>& slots);
  bool hasMoving() const;
  void sayNoFit(std::vector<int>&& slots);

  // In CtfHeadAudit.cpp.
  void lookAtHead();
  void lookAtHeader(const CtfHeaderLine& line, const CString& key, CString CDipoleFace::*member,
                    std::string_view what);
  void lookAtPatients();
  void lookAtSphere();
  void lookAtFiducials();
  void lookAtRepeated();
  void lookAtUnread();

  struct Missing {
    int line = 0;  // of the first one
    std::size_t count = 0;
  };

  AuditPass& m_pass;
  const TextEncoding& m_encoding;
  CtfReading m_reading;
  std::map<std::pair<int, RowFate>, Missing> m_missing;  // the rows that did not arrive, by section and why
  std::vector<int> m_unreadLeft;  // sections lost by the encoding of which something is not in place
};

}  // namespace host
