// One file of dipoles in a set of its own, whole or not at all: what other programs write by the module's
// import, sets by the module's reader, tables by that of this program.
#pragma once

#include <afxwin.h>

#include <memory>
#include <string>
#include <vector>

#include "host/audit/FileAudit.h"
#include "host/exchange/FileKind.h"
#include "host/exchange/ModuleMessages.h"
#include "module/dipole.h"

namespace host {

struct ImportedFile {
  CString path;  // as it was given
  DipoleFormat format = DipoleFormat::ctf;
  // Never null. Locations mm in the head frame (x left, y up, z front), latencies ms. Empty when there was a
  // failure; a file that was read may hold no dipoles either.
  std::unique_ptr<CDipoleFace9File> set;
  std::string failure;  // UTF-8: why nothing came, such as "No such file or directory"; else empty
  std::vector<ModuleMessage> messages;  // of the module, in order

  UnknownValues unknown;  // by slot of `set`, of a table
  AuditReport report;     // of a text file, about the slots of `set`

  [[nodiscard]] int dipoles() const;  // slots of the set may be empty
  // Whether all dipoles of the file are there, but for those that the user's answers left out; one at least.
  [[nodiscard]] bool isComplete() const;
};

// Whether a finding tells of dipoles that are missing, other than by what the user answered.
[[nodiscard]] bool isLoss(const Finding& finding);

// Reads a file by the format given, whatever its name. The current folder stays. A file that cannot be opened
// is told once, by `failure`: the module does not see it. Findings give the file's name as `name`, or as the
// path when that is empty. Throws what an allocation throws, and std::runtime_error when memory ran out
// within the module.
[[nodiscard]] ImportedFile importFile(const CString& path, DipoleFormat format, const std::string& name = {});

}  // namespace host
