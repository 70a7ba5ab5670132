// One or more dipole files as one set: each imported by itself, their dipoles one after the other.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/dipoles/UnknownValues.h"
#include "module/dipole.h"
#include "tool/FileImport.h"
#include "tool/InputFile.h"
#include "tool/TerminalOperator.h"

namespace tool {

class ImportSession {
 public:
  // Imports the files in order; at least one. What the module says goes to standard error, as do warnings of
  // the program: about dipoles that were in a file and did not arrive, files of different patients, moments
  // in different units. Throws std::runtime_error when the module did not accept a name.
  ImportSession(const std::vector<InputFile>& files, Answers answers);

  // Every dipole has all of its members; those of a text file are numbered on, as one import after the other
  // numbers them. Members of the whole set are those of the first file that gave dipoles.
  // Locations mm in the host's head frame (x to the left ear, y up, z to the nose), latencies ms.
  CDipoleFace9File& collection() { return *m_collection; }
  const CDipoleFace9File& collection() const { return *m_collection; }

  // By a key of host/dipoles/SortSet.h.
  void sort(int key);

  // By slot of the collection.
  const host::UnknownValues& unknown() const { return m_unknown; }

  // The module's messages and the program's own warnings.
  const std::vector<Message>& messages() const { return m_messages; }

  // Whether every import was complete, see FileImport::isComplete, and the set had room for all.
  bool isComplete() const { return m_isComplete; }

  // As the first file that gave dipoles names them; the patient's name or number is empty unless all files
  // give the same.
  const std::string& patient() const { return m_patient; }
  const std::string& version() const { return m_version; }

  // Whether all files say that their moments are nAm.
  bool isMomentInNAm() const { return m_isMomentInNAm; }

 private:
  void add(const InputFile& file, Answers answers);
  void append(FileImport& import, const InputFile& file);
  void addUnknown(const FileImport& import, int first, int count);
  void takeSet(FileImport& import, const InputFile& file);
  void checkPatients();
  void checkUnits();

  std::unique_ptr<CDipoleFace9File> m_collection;
  host::UnknownValues m_unknown;
  std::vector<Message> m_messages;
  std::vector<std::string> m_patients;  // of each file that could be read
  std::vector<bool> m_units;            // of each file that gave dipoles: whether its moments are nAm
  std::string m_patient;
  std::string m_version;
  bool m_isMomentInNAm = false;
  bool m_isComplete = true;
};

}  // namespace tool
