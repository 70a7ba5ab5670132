// One file of dipoles in a set of its own, whole or not at all: what other programs write by the module's
// import, sets by the module's reader, tables by that of this program.
#pragma once

#include <afxwin.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/dipoles/UnknownValues.h"
#include "host/exchange/FileKind.h"
#include "host/exchange/ImportAudit.h"
#include "host/exchange/ModuleMessages.h"
#include "host/exchange/NeuromagSet.h"
#include "host/head/HeadFrame.h"
#include "module/dipole.h"

namespace host {

struct ImportedFile {
  CString path;      // as it was given
  std::string name;  // as findings give it, UTF-8
  DipoleFormat format = DipoleFormat::ctf;
  // Never null. Locations mm in the head frame (x left, y up, z front), latencies ms. Empty when there was a
  // failure; a file that was read may hold no dipoles either.
  std::unique_ptr<CDipoleFace9File> set;
  std::string failure;  // UTF-8: why nothing came, such as "No such file or directory"; else empty
  std::vector<ModuleMessage> messages;  // of the module, in order

  std::optional<ImportSource> source;  // of a text file that was read
  UnknownValues unknown;               // by slot of `set`
  std::vector<Finding> findings;       // what audit or reader say of it, as it is now; about slots of `set`
  std::vector<std::string> repaired;   // UTF-8, a sentence for each thing that repairs changed

  // Whether its places were carried from another head frame, and by which points of the head; none: as if
  // the ears lay symmetric.
  bool isCarried = false;
  std::optional<Fiducials> carriedBy;

  int dipoles() const;  // slots of the set may be empty

  // Applies remedies to `set`, which nobody has changed since the import; a set or a table has none. Throws
  // what an allocation throws.
  void repair(const Repairs& repairs);
};

// Reads a file by the format given, whatever its name, audits it and applies the remedies that are wanted.
// The current folder stays. A file that cannot be opened is told once, by `failure`: the module does not
// see it. Findings give the file's name as `name`, or as the path when that is empty. Throws what an
// allocation throws, and std::runtime_error when memory ran out within the module. `head`: whose
// dipoles they are, for formats whose head frame is another one; see host/exchange/NeuromagSet.h.
ImportedFile importFile(const CString& path, DipoleFormat format, const std::string& name = {},
                        const Repairs& repairs = {}, const CarryingHead& head = {});

}  // namespace host
