// A set written as a file of any format that there is a writer for.
#pragma once

#include <afx.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/dipoles/UnknownValues.h"
#include "host/exchange/SetFrame.h"
#include "module/dipole.h"

namespace host {

enum class ExportFormat { dipset, text, csv, tsv, json, neuromag, bdip, ctf, slicer, slicerArrows, vtp };

struct ExportKind {
  ExportFormat format;
  const char* ending;  // ".mrk.json"
  const char* name;    // for people
};
// Each format once, the usual ones first.
std::span<const ExportKind> exportKinds();

// The formats that are called so, the usual one first: a .dip may be of CTF or of Neuromag. Empty: the ending
// tells none.
std::vector<ExportFormat> exportFormatsOf(const CString& path);

// Writes a set; what belongs to the set as a whole is its own. In the frame that host/exchange/ForeignFile.h
// tells for formats of other programs, else in the host's. Returns what the file cannot hold and what was
// assumed, sentences in UTF-8. The target is the whole new file or what it was before. Throws
// std::runtime_error that names the file and the cause.
std::vector<std::string> exportSet(CDipoleFace9File& set, const UnknownValues& unknown, ExportFormat format,
                                   const CString& path, const KnownHead& head);

}  // namespace host
