// What is to be said of the files that the dipoles of a set came from, wherever the dipoles go, in every
// state that undo and redo come back to.
//
// A dipole is known by its object, as in host/dipoles/UnknownDipoles.h; undo may make it anew, so each state
// of the history has a note of which of its slots came from where.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/exchange/JoinedSet.h"
#include "host/head/Head.h"
#include "host/undo/UndoHistory.h"
#include "module/dipole.h"

namespace host {

// A file that was imported.
struct AuditedFile {
  JoinedSet::Part part;           // its slots are not kept up to date
  std::vector<Finding> findings;  // as they are now; slots from 0, those of the file's own dipoles
  std::optional<ImportSource> source;
  std::optional<LengthUnit> unit;  // of its positions, as the user has said
  bool isCarried = false;          // see host/exchange/ImportFile.h
  std::optional<Fiducials> carriedBy;
  // What the import, and repairs since, made of the file; null when nothing of it can be repaired.
  std::unique_ptr<CDipoleFace9File> own;

  // Where its dipoles are in a set.
  void takePart(const JoinedSet::Part& taken) { part = taken; }
  // What the audit and the head sphere say of its dipoles, as they are in `own` or another set.
  void takeFindings(std::vector<Finding> audited, const CDipoleFace9File& set);
};
// Of a file that was imported just now; where its dipoles go is not known yet.
AuditedFile auditedFileOf(const ImportedFile& file);

// A finding that holds for the set as it is.
struct StandingFinding {
  static constexpr std::size_t none = static_cast<std::size_t>(-1);

  Finding finding;          // slots of the set
  std::size_t file = none;  // of those that were imported; none: it is about several, or the set
  bool isShown = true;      // it bears on what is shown: the file has dipoles in the set

  bool operator==(const StandingFinding&) const = default;
};

class AuditedSet {
 public:
  explicit AuditedSet(CDipoleFace9File& dipoles) : m_dipoles(dipoles) {}

  // The set is another one, of which nothing is to be said.
  void startAnew() noexcept;
  // A file whose dipoles came to the set right now; `part` has their slots. Throws what an allocation throws.
  void add(AuditedFile file);
  // Takes note of the state that the set is in, behind a change that undo knows, or a move of it. Without
  // memory dipoles that undo makes anew are not told from others; the files' findings without dipoles stay.
  void noteState(const UndoHistory& history) noexcept;
  void noteMove(const UndoHistory& history) noexcept;

  // About the files alone, in the order of their import, and then about each other.
  std::vector<StandingFinding> findings() const;
  // About the dipoles in an MRI; nothing in a head that is not registered, nor in the phantom.
  std::vector<StandingFinding> findingsIn(const Head& head) const;

  // Applies remedies of one file, see host/exchange/ImportAudit.h. Throws std::runtime_error, and changes
  // nothing, when dipoles have been changed since, averages were made, or there is no room; else what an
  // allocation throws, when the set may be changed in part.
  RepairReport repair(std::size_t file, const Repairs& repairs);

 private:
  struct Origin {
    int file = -1;  // -1: it was there before, or came of no file
    int slot = -1;
    bool operator==(const Origin&) const = default;
  };
  struct Entry {
    DipoleTable::Hold held;
    Origin origin;
  };
  using Files = std::vector<std::shared_ptr<const AuditedFile>>;
  using Origins = std::vector<std::optional<Origin>>;  // by slot; nothing: it came since
  struct State {
    std::shared_ptr<const Files> files;
    std::shared_ptr<const Origins> origins;
  };

  static std::shared_ptr<const Files> noFiles() noexcept {
    static const auto none = std::make_shared<const Files>();
    return none;
  }
  void keepState(const UndoHistory& history);
  void know(int slot, const Origin& origin);
  Origins originsNow() const;
  std::vector<std::vector<int>> slotsNow() const;  // for each file and each of its slots; -1: gone
  std::vector<int> slotsAfter(const std::vector<const CDipoleszq*>& dipoles) const;
  std::vector<JoinedSet::Part> partsNow(const std::vector<std::vector<int>>& slots) const;
  bool hasAverages() const;

  CDipoleFace9File& m_dipoles;
  std::shared_ptr<const Files> m_files = noFiles();
  std::unordered_map<const CDipoles*, Entry> m_known;  // empty as long as there are no files
  std::map<std::uint64_t, State> m_states;
  bool m_hasGaps = false;  // there was no memory to note a state
};

}  // namespace host
