// The audit of a text file of dipoles that was imported just now, and its repairs. importFile does it for
// files of its own; who lets the module import otherwise does it right behind the import, before the next
// file.
#pragma once

#include <afx.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/audit/FileAudit.h"
#include "host/exchange/FileKind.h"
#include "host/exchange/ModuleMessages.h"

namespace host {

// Which of the remedies the user wants.
struct Repairs {
  std::set<FindingCode> codes;
  std::optional<LengthUnit>
      unit;  // of positions where the file leaves it open; counts as the code `unit` too

  bool isEmpty() const { return codes.empty() && !unit; }
};

// What an audit reads beside the set. Holds all bytes of the file.
struct ImportSource {
  std::string name;  // as findings give it, UTF-8
  std::string text;
  DipoleTextFormat format = DipoleTextFormat::ctf;
  ImportAnswers answers;
};

// Whether files of a format are text that other programs wrote: sets and tables are this program's own.
bool isAudited(DipoleFormat format);

// For a format that is audited. `messages`: what the module showed while it imported this file. A file that
// cannot be read has no bytes.
ImportSource sourceOf(const CString& path, DipoleFormat format, const std::vector<ModuleMessage>& messages,
                      const std::string& name);

// The file's dipoles are the last ones of the set, from `firstSlot` on; slots of findings are those of the
// set.
AuditReport auditImport(const ImportSource& source, const CDipoleFace9File& set, int firstSlot);

// See host/audit/FileAudit.h, repair.
RepairReport repairImport(const ImportSource& source, CDipoleFace9File& set, int firstSlot,
                          const Repairs& repairs);

}  // namespace host
