// One dipole file, imported into a collection of its own by the operation of the module that a viewer's user
// would start.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/audit/FileAudit.h"
#include "host/dipoles/UnknownValues.h"
#include "module/dipole.h"
#include "tool/InputFile.h"
#include "tool/TerminalOperator.h"

namespace tool {

class FileImport {
 public:
  // What the module says goes to standard error, as do warnings of the program about dipoles that were in the
  // file and did not arrive. Throws std::runtime_error when the module did not accept the name.
  FileImport(const InputFile& file, Answers answers);

  // Locations mm in the host's head frame (x to the left ear, y up, z to the nose), latencies ms.
  CDipoleFace9File& collection() { return *m_collection; }
  // By slot of the collection.
  const host::UnknownValues& unknown() const { return m_unknown; }
  std::unique_ptr<CDipoleFace9File> takeCollection() { return std::move(m_collection); }

  // The module's messages and the program's own warnings.
  const std::vector<Message>& messages() const { return m_messages; }

  // What the audit of a text file found; the file is named as the user wrote it.
  const std::vector<host::Finding>& findings() const { return m_findings; }

  // Whether the file could be read at all.
  bool isReadable() const { return m_isReadable; }

  // Whether the file was read to its end, the audit found no rows or sections lost but by the user's answers,
  // and at least one dipole arrived.
  bool isComplete() const { return m_isComplete; }

 private:
  void importCtf(Answers answers);
  void importMsi(Answers answers);
  void loadDipset();
  void loadTable();

  void checkOutcome();
  void checkText(host::DipoleTextFormat format);

  bool wasSaid(const char* text) const;
  void warn(const std::string& text);
  void warnOfLoss(const std::string& text);

  InputFile m_file;
  std::string m_path;  // absolute: the module may change the current folder
  std::unique_ptr<CDipoleFace9File> m_collection;
  host::UnknownValues m_unknown;
  std::vector<Message> m_messages;
  std::vector<host::Finding> m_findings;
  bool m_isReadable = true;
  bool m_isComplete = true;
};

// How many slots of a set hold a dipole.
int countDipoles(const CDipoleFace& set);

}  // namespace tool
