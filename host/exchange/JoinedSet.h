// The dipoles of several files as one set, one file after the other.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/exchange/ImportFile.h"
#include "host/head/Head.h"
#include "module/dipole.h"

namespace host {

class JoinedSet {
 public:
  // A file that brought dipoles, and which slots of the set are its.
  struct Part {
    CString path;
    std::string name;  // as findings give it, UTF-8
    int firstSlot = 0;
    int endSlot = 0;                  // one past the last
    std::string patient;              // see host/dipoles/HeaderText.h
    bool isInNAm = false;             // whether it says that its moments are nAm
    std::optional<Fiducials> points;  // see host/dipoles/SetFiducials.h, measuredPoints
    std::optional<Fiducials> slices;  // the same points as the file has them, slicesOfSet
  };

  // For a set that has so many dipoles already, or for none: slots and numbers count on from there.
  explicit JoinedSet(int before = 0);

  // Appends what a file brought, as far as there is room. The dipoles of a text file are numbered on, as one
  // import after the other numbers them; those of a set or a table keep their numbers. What belongs to the
  // whole set is that of the first file with dipoles; its moments are nAm when every file says so.
  void add(ImportedFile file);

  CDipoleFace9File& set() { return madeSet(); }
  const CDipoleFace9File& set() const { return madeSet(); }
  const std::vector<Part>& parts() const { return m_parts; }
  std::vector<std::string> patients() const;  // whom the parts name, each once, in order

  // How many dipoles the other set has already: the slots of the parts and of findings count on from there.
  int before() const { return m_before; }
  // How many more there is room for.
  int room() const;

  // What the files left open, and what is to be said of them: what their audits found, and dipoles that lie
  // outside of their head sphere (host/audit/HeadChecks.h). About the slots behind those that the other set
  // has.
  const UnknownValues& unknown() const { return m_unknown; }
  const std::vector<Finding>& findings() const { return m_findings; }
  // Some files say that their moments are nAm, and some do not.
  bool hasMixedUnits() const { return m_hasMixedUnits; }
  // What was left out for want of room, and spheres that differ; UTF-8, with the file's name.
  const std::vector<std::string>& warnings() const { return m_warnings; }
  // How many dipoles found no room.
  int leftOut() const { return m_leftOut; }

 private:
  void takeFinding(Finding finding, int first);
  void append(const ImportedFile& file);
  CDipoleFace9File& madeSet() const;

  int nextSlot() const;

  int m_before;
  bool m_hasMixedUnits = false;
  int m_leftOut = 0;
  mutable std::unique_ptr<CDipoleFace9File> m_set;  // a quarter of a megabyte, so made when it is needed
  std::vector<Part> m_parts;
  UnknownValues m_unknown;
  std::vector<Finding> m_findings;
  std::vector<std::string> m_warnings;
};

// A file's own dipoles as those of slots `first` .. end-1.
JoinedSet::Part partOf(const ImportedFile& file, int first, int end);

// What the parts say of each other: several patients, other heads. Of one set, or of several.
std::vector<Finding> findingsBetween(std::span<const JoinedSet::Part> parts);

// Whether a part's points are those of a registered head: by the slices when both give them, else by the
// distances between them.
std::optional<Finding> findOtherHead(const JoinedSet::Part& part, const Head& head);

// What the parts say in an MRI: dipoles outside of it, points of another head. Nothing in a head that is not
// registered, nor in the phantom, which is nobody's. Slots are as in JoinedSet::findings.
std::vector<Finding> findingsIn(const Head& head, const JoinedSet& joined);

// Adds a name to a list of patients, unless it is empty or there already.
void addPatient(std::vector<std::string>& names, const std::string& patient);

// Puts copies of the dipoles of a joined set that was made for this one behind its own, as the module's
// imports into that set would: the last one is the current one. A set that had no dipoles gets what the
// files say about the whole set; else it keeps its own, and its moments are nAm only when all of them are.
// There has to be room. Throws what an allocation throws; the set may then hold a part.
void appendTo(CDipoleFace9File& set, const CDipoleFace9File& more);

}  // namespace host
