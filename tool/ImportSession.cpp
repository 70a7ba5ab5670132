#include "tool/ImportSession.h"

#include <algorithm>
#include <set>

#include "host/dipoles/HeaderText.h"
#include "host/dipoles/SortSet.h"
#include "tool/Text.h"

namespace tool {
namespace {

// Sets and tables keep the numbers of their dipoles.
bool isNumberedOn(InputFormat format) {
  return format == InputFormat::ctf || format == InputFormat::msi;
}

}  // namespace

ImportSession::ImportSession(const std::vector<InputFile>& files, Answers answers) {
  for (const InputFile& file : files) {
    add(file, answers);
  }
  checkPatients();
  checkUnits();
}

void ImportSession::add(const InputFile& file, Answers answers) {
  FileImport import(file, answers);
  m_messages.insert(m_messages.end(), import.messages().begin(), import.messages().end());
  m_isComplete = m_isComplete && import.isComplete();
  if (import.isReadable()) {
    m_patients.push_back(host::headerText(import.collection().m_patient, patientKeyword(file.format)));
  }
  if (import.collection().m_totalDipoles > 0) {
    m_units.push_back(import.collection().m_momentInNAm != 0);
  }
  if (m_collection == nullptr || m_collection->m_totalDipoles == 0) {
    takeSet(import, file);
  } else {
    append(import, file);
  }
}

void ImportSession::takeSet(FileImport& import, const InputFile& file) {
  const bool isBetter = m_collection == nullptr || import.collection().m_totalDipoles > 0;
  if (isBetter) {
    addUnknown(import, 0, import.collection().m_totalDipoles);
    m_collection = import.takeCollection();
    m_version = host::headerText(m_collection->m_fileVersion, versionKeyword(file.format));
  }
}

void ImportSession::addUnknown(const FileImport& import, int first, int count) {
  for (int slot = 0; slot < count; ++slot) {
    m_unknown.markAll(first + slot, import.unknown().of(slot));
  }
}

void ImportSession::append(FileImport& import, const InputFile& file) {
  const CDipoleFace9File& more = import.collection();
  const int first = m_collection->m_totalDipoles;
  const int count = (std::min)(more.m_totalDipoles, DipoleTable::capacity - first);
  for (int i = 0; i < count; ++i) {
    if (const CDipoleszq* dipole = more.m_dipoles[i]) {
      auto copy = std::make_unique<CDipoleszq>(*dipole);
      copy->m_number += isNumberedOn(file.format) ? first : 0;
      m_collection->m_dipoles.store(first + i, std::move(copy));
    }
  }
  m_collection->m_totalDipoles = first + count;
  addUnknown(import, first, count);
  if (count < more.m_totalDipoles) {
    m_isComplete = false;
    m_messages.push_back(warningOf(file.name + ": a set holds " + std::to_string(DipoleTable::capacity) +
                                   " dipoles, " + std::to_string(more.m_totalDipoles - count) +
                                   " of this file were left out"));
  }
}

void ImportSession::sort(int key) {
  host::sortSet(*m_collection, key, m_unknown);
}

void ImportSession::checkPatients() {
  std::set<std::string> patients(m_patients.begin(), m_patients.end());
  if (patients.size() == 1) {
    m_patient = *patients.begin();
  }
  patients.erase(std::string());  // a file that names nobody does not contradict the others
  if (patients.size() > 1) {
    m_messages.push_back(warningOf("the files name different patients"));
  }
}

void ImportSession::checkUnits() {
  const auto known = std::count(m_units.begin(), m_units.end(), true);
  const auto all = static_cast<std::ptrdiff_t>(m_units.size());
  m_isMomentInNAm = all > 0 ? known == all : m_collection->m_momentInNAm != 0;
  if (known > 0 && known < all) {
    m_messages.push_back(warningOf("not all files say that their moments are nAm: they may differ in unit"));
  }
}

}  // namespace tool
