#include "host/exchange/SetExport.h"

#include <algorithm>
#include <array>

#include "host/exchange/ForeignFile.h"
#include "host/exchange/SetFile.h"
#include "host/exchange/TableFile.h"
#include "host/text/PathText.h"

namespace host {

namespace {

constexpr std::array<ExportKind, 11> kinds = {
    {{ExportFormat::csv, ".csv", "Table with commas"},
     {ExportFormat::tsv, ".tsv", "Table with tabs"},
     {ExportFormat::slicer, ".mrk.json", "3D Slicer points"},
     {ExportFormat::slicerArrows, ".mrk.json", "3D Slicer arrows"},
     {ExportFormat::json, ".json", "Table as JSON"},
     {ExportFormat::text, ".txt", "Text for spreadsheets, two decimals"},
     {ExportFormat::ctf, ".dip", "CTF dipole file"},
     {ExportFormat::neuromag, ".dip", "Neuromag/MNE dipole file"},
     {ExportFormat::bdip, ".bdip", "Neuromag/MNE binary dipole file"},
     {ExportFormat::vtp, ".vtp", "VTK points (ParaView, PyVista, 3D Slicer)"},
     {ExportFormat::dipset, ".dipset", "Dipole set"}}};

ForeignFormat foreignOf(ExportFormat format) {
  switch (format) {
    case ExportFormat::neuromag:
      return ForeignFormat::neuromag;
    case ExportFormat::bdip:
      return ForeignFormat::bdip;
    case ExportFormat::slicer:
      return ForeignFormat::slicer;
    case ExportFormat::slicerArrows:
      return ForeignFormat::slicerArrows;
    case ExportFormat::vtp:
      return ForeignFormat::vtp;
    default:
      return ForeignFormat::ctf;
  }
}

std::vector<std::string> toldOf(const UnknownValues& unknown) {
  std::string loss = lossOf(unknown);
  return loss.empty() ? std::vector<std::string>() : std::vector{std::move(loss)};
}

}  // namespace

std::span<const ExportKind> exportKinds() {
  return kinds;
}

std::vector<ExportFormat> exportFormatsOf(const CString& path) {
  std::vector<ExportFormat> formats;
  std::string_view longest;
  for (const ExportKind& kind : kinds) {
    const std::string_view ending = kind.ending;
    if (hasEnding(path, ending) && ending.size() >= longest.size()) {
      if (ending.size() > longest.size()) {
        formats.clear();
        longest = ending;
      }
      formats.push_back(kind.format);
    }
  }
  return formats;
}

std::vector<std::string> exportSet(CDipoleFace9File& set, const UnknownValues& unknown, ExportFormat format,
                                   const CString& path, const KnownHead& head) {
  switch (format) {
    case ExportFormat::dipset:
      writeSet(set, path);
      return toldOf(unknown);
    case ExportFormat::text:
      writeSpreadsheetText(set, path);
      return toldOf(unknown);
    case ExportFormat::csv:
      writeTable(set, unknown, TableFormat::csv, path);
      return {};
    case ExportFormat::tsv:
      writeTable(set, unknown, TableFormat::tsv, path);
      return {};
    case ExportFormat::json:
      writeTable(set, unknown, TableFormat::json, path);
      return {};
    default: {
      ForeignFile file = foreignFile(foreignOf(format), set, unknown, head);
      writeText(file.bytes, path);
      return std::move(file.told);
    }
  }
}

}  // namespace host
