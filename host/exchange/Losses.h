// What a file cannot hold of a set, by name and by the number of dipoles that it is lost of, so that nothing
// goes without a word.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "host/exchange/DipoleFields.h"
#include "module/dipole.h"

namespace host {

class Losses {
 public:
  // Of so many dipoles; none is no loss. The same name adds up.
  void add(const std::string& name, int dipoles = 1);
  // Of the set as a whole.
  void addOfSet(const std::string& name);

  bool isEmpty() const { return m_ofDipoles.empty() && m_ofSet.empty(); }
  // "This file cannot hold: color of 3 dipoles, label of 1 dipole, patient."; empty without losses. UTF-8.
  std::string sentence() const;

  const std::vector<std::pair<std::string, int>>& ofDipoles() const { return m_ofDipoles; }
  const std::vector<std::string>& ofSet() const { return m_ofSet; }

 private:
  std::vector<std::pair<std::string, int>> m_ofDipoles;
  std::vector<std::string> m_ofSet;
};

// Adds members of dipoles that a format has no column for and that are not those of a new dipole. `held`: the
// columns that it has; the place, the number and what stands in several columns need not be named.
void addLostMembers(Losses& losses, const CDipoleFace& set, const UnknownValues& unknown,
                    std::initializer_list<std::size_t> held);

// What a set says as a whole, in headers that most formats do not have.
enum class SetPart { patient, version, mriFile, sphere, mriPoints };
void addLostParts(Losses& losses, const CDipoleFace& set, std::initializer_list<SetPart> lost);

}  // namespace host
