// One import of dipole files into a fresh collection, by the same public operation that a viewer's user
// would start, with the file dialog answered by the given names.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "module/dipole.h"
#include "tool/FileScan.h"
#include "tool/TerminalOperator.h"

namespace tool {

class ImportSession {
 public:
  // Imports the files in order. What the module says goes to standard error, as do warnings of the program:
  // about dipoles that were in a file and did not arrive, and files of different patients. Throws
  // std::runtime_error when the module did not accept the list of files.
  ImportSession(const std::vector<std::string>& files, Answers answers);

  // Locations mm in the host's head frame (x to the left ear, y up, z to the nose), latencies ms.
  CDipoleFace8Import01_CTF& collection() { return *m_collection; }
  const CDipoleFace8Import01_CTF& collection() const { return *m_collection; }

  // The module's messages and the program's own warnings.
  const std::vector<Message>& messages() const { return m_messages; }

  // Whether every file was read to its end and had a dipole section, every section in it had an end, exactly
  // the dipoles that were not declined arrived, and at least one did.
  bool isComplete() const { return m_isComplete; }

  // The patient's name or number; empty unless all files give the same.
  const std::string& patient() const { return m_patient; }

 private:
  using Scans = std::vector<FileScan>;

  bool wasSaid(const char* text) const;
  void warn(const std::string& text);
  void warnOfLoss(const std::string& text);
  void checkSections(const std::vector<std::string>& files, const Scans& scans);
  void checkCount(const Scans& scans, int declinedAfter);
  void checkPatients(const Scans& scans);

  std::unique_ptr<CDipoleFace8Import01_CTF> m_collection;
  std::vector<Message> m_messages;
  std::string m_patient;
  bool m_isComplete = true;
};

}  // namespace tool
