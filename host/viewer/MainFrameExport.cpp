// Files of dipoles for other programs, and the pictures.
#include <afxdlgs.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "host/text/PathText.h"
#include "host/text/Utf8.h"
#include "host/viewer/MainFrame.h"

namespace host {

namespace {

// One entry for each format, in the order of exportKinds().
CString exportFilter() {
  CString filter;
  for (const ExportKind& kind : exportKinds()) {
    const CString pattern = CString(_T("*")) + fromUtf8(kind.ending);
    filter += fromUtf8(kind.name) + _T(" (") + pattern + _T(")|") + pattern + _T("|");
  }
  return filter + _T("All files (*.*)|*.*||");
}

bool isThere(const CString& path) {
  std::error_code error;
  return std::filesystem::exists(pathOf(path), error);
}

// The format that the filter names, unless the ending that the user wrote is one of others. Nothing: the user
// does not want to say which.
std::optional<ExportFormat> formatOf(const CString& path, std::size_t filter) {
  const std::vector<ExportFormat> named = exportFormatsOf(path);
  const bool isKnown = filter < exportKinds().size();
  if (isKnown &&
      (named.empty() || std::find(named.begin(), named.end(), exportKinds()[filter].format) != named.end())) {
    return exportKinds()[filter].format;
  }
  if (named.size() == 2 && named.front() == ExportFormat::ctf) {
    const int answer = AfxMessageBox(
        _T("A .dip file is of CTF or of Neuromag/MNE. Write one of CTF? No writes one of Neuromag/MNE."),
        MB_YESNOCANCEL | MB_ICONQUESTION);
    return answer == IDCANCEL ? std::nullopt : std::optional(named[answer == IDYES ? 0 : 1]);
  }
  if (named.empty()) {
    AfxMessageBox(_T("The name tells no format: choose one from the list of types."), MB_ICONEXCLAMATION);
    return std::nullopt;
  }
  return named.front();
}

// With the ending of its format; empty: a file of that name is there, and is to stay.
CString withEnding(const CString& path, ExportFormat format) {
  if (!exportFormatsOf(path).empty()) {
    return path;
  }
  const auto kind = std::find_if(exportKinds().begin(), exportKinds().end(),
                                 [&](const ExportKind& one) { return one.format == format; });
  const CString whole = path + fromUtf8(kind->ending);
  const bool mayReplace =
      !isThere(whole) || AfxMessageBox(fileNameOf(whole) + _T(" is there already. Replace it?"),
                                       MB_YESNO | MB_DEFBUTTON2 | MB_ICONEXCLAMATION) == IDYES;
  return mayReplace ? whole : CString();
}

}  // namespace

void MainFrame::exportSet(const CString& path, ExportFormat format) {
  try {
    noteQuietChange();
    CString told;
    for (const std::string& sentence : m_session->exportSet(path, format)) {
      told += (told.IsEmpty() ? _T("") : _T("\n")) + fromUtf8(sentence);
    }
    if (!told.IsEmpty()) {
      AfxMessageBox(fileNameOf(path) + _T(" was written.\n") + told, MB_ICONINFORMATION);
    }
  } catch (const std::exception& problem) {
    tell(problem);
  }
}

void MainFrame::OnExport() {
  const CString filter = exportFilter();
  CFileDialog dialog(FALSE, nullptr, nullptr, OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY, filter, this);
  dialog.m_ofn.nFilterIndex = m_exportFilter;
  if (dialog.DoModal() != IDOK) {
    return;
  }
  const CString chosen = dialog.GetPathName();
  m_exportFilter = dialog.m_ofn.nFilterIndex;
  const std::optional<ExportFormat> format = formatOf(chosen, std::size_t{m_exportFilter} - 1);
  if (!format) {
    return;
  }
  const CString path = withEnding(chosen, *format);
  if (!path.IsEmpty()) {
    exportSet(path, *format);
  }
}

}  // namespace host
