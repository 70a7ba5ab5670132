#include "host/exchange/ImportFile.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "host/exchange/DelimitedText.h"
#include "host/exchange/DipContent.h"
#include "host/exchange/NeuromagBinary.h"
#include "host/exchange/SetFile.h"
#include "host/exchange/TableFile.h"
#include "host/text/Failure.h"
#include "host/text/FileBytes.h"
#include "host/text/PathText.h"

namespace host {

namespace {

constexpr int unreached = -1;

// The steps that the module's imports by dialog and by name are made of. They show what those show, but for a
// file that cannot be read to its end, of which this one tells the caller.
class Importer : public CDipoleFace9File {
 public:
  void importCtf(const CString& path) {
    m_importFirst = m_totalDipoles;
    parseCTFDipoles(path);
    if (m_skipFiducialSetup == 0) {
      setCtfFiducial();
    }
    finishImport();
  }

  // False when the import did not reach its end: the module then leaves the bounds of the import as they are.
  bool importMsi(CString path) {
    m_importEnd = unreached;
    return import4DMSIDipolesX(path, false) != 0 && m_importEnd == m_totalDipoles;
  }
};

// An import of a table makes the file's folder the current one; it is what it was after a scope.
class CurrentFolderKept {
 public:
  CurrentFolderKept() {
    std::error_code error;
    m_folder = std::filesystem::current_path(error);
  }
  ~CurrentFolderKept() {
    std::error_code error;
    std::filesystem::current_path(m_folder, error);
  }
  CurrentFolderKept(const CurrentFolderKept&) = delete;
  CurrentFolderKept& operator=(const CurrentFolderKept&) = delete;

 private:
  std::filesystem::path m_folder;
};

// As the system tells it, without the file's name.
std::string reasonOf(const CFileException& fault) {
  return std::error_code(fault.m_lOsError, std::system_category()).message();
}

// Why a file cannot be opened; empty when it can.
std::string whyUnreadable(const CString& path) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(pathOf(path), error);
  if (std::filesystem::is_directory(status)) {
    return "it is a folder, not a file";
  }
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    return "it is not a regular file";
  }
  CFile file;
  CFileException fault;
  if (file.Open(path, CFile::modeRead | CFile::shareDenyNone, &fault) == FALSE) {
    return reasonOf(fault);
  }
  const std::uintmax_t size = std::filesystem::file_size(pathOf(path), error);
  return !error && size > mostFileBytes ? "it is larger than 256 MiB" : "";
}

// The module looks for the file of a table as for a pattern, and would take the first one that fits.
bool isPattern(const CString& path) {
  return fileNameOf(path).FindOneOf(_T("*?")) >= 0;
}

// Why a .dip is not what its reader was told; empty when it may be.
std::string whyOtherDip(DipoleFormat format, const CString& path) {
  if (format == DipoleFormat::ctf) {
    return isNeuromag(dipContentOfFile(path)) ? "it is a Neuromag (Xfit, MNE) file of dipoles, not one of CTF"
                                              : "";
  }
  const bool isOfNeuromag = format == DipoleFormat::neuromag || format == DipoleFormat::bdip;
  return isOfNeuromag && dipContentOfFile(path) == DipContent::ctf
             ? "it is a CTF file of dipoles, not one of Neuromag"
             : "";
}

std::string importNeuromagInto(ImportedFile& file, const CString& path, const CarryingHead& head) {
  const std::string bytes = textOfFile(pathOf(path), {});
  try {
    NeuromagImport import = importNeuromag(
        file.format == DipoleFormat::bdip ? readNeuromagBinary(bytes) : readNeuromagText(bytes), file.name,
        head);
    file.set = std::move(import.set.dipoles);
    file.unknown = std::move(import.set.unknown);
    file.findings = std::move(import.findings);
    file.isCarried = true;
    file.carriedBy = head.points;
    return {};
  } catch (const TableFault& fault) {
    return fault.of({}).what();
  }
}

// Gives the file its set, or says why there is none.
std::string importInto(ImportedFile& file, const CString& path, const CarryingHead& head) {
  if (std::string other = whyOtherDip(file.format, path); !other.empty()) {
    return other;
  }
  if (file.format == DipoleFormat::neuromag || file.format == DipoleFormat::bdip) {
    return importNeuromagInto(file, path, head);
  }
  if (file.format == DipoleFormat::set) {
    file.set = readSet(path);
    return {};
  }
  if (const std::optional<TableFormat> table = tableFormatOf(file.format)) {
    TableSet read = readTableFile(pathOf(path), *table, {});
    file.set = std::move(read.dipoles);
    file.unknown = std::move(read.unknown);
    return {};
  }
  auto importer = std::make_unique<Importer>();
  if (file.format == DipoleFormat::ctf) {
    importer->importCtf(path);
  } else if (isPattern(path)) {
    return "* and ? in the name of a 4D/MSI table cannot be told from a pattern";
  } else if (!importer->importMsi(path)) {
    return "it could not be read to its end";
  }
  file.set = std::move(importer);
  return {};
}

std::string failureOfImport(ImportedFile& file, const CString& path, const CarryingHead& head) {
  try {
    return importInto(file, path, head);
  } catch (const FileFailure& failure) {
    return failure.cause();
  } catch (const std::runtime_error& problem) {
    return problem.what();  // of a table
  } catch (CMemoryException* exception) {
    exception->Delete();
  } catch (CFileException* exception) {
    const std::unique_ptr<CFileException, ExceptionDeleter> caught(exception);
    return "it could not be read to its end: " + reasonOf(*caught);
  }
  throwNoMemory();
}

void takeReport(ImportedFile& file, AuditReport report) {
  file.findings = std::move(report.findings);
  file.unknown = std::move(report.unknown);
}

}  // namespace

int ImportedFile::dipoles() const {
  int count = 0;
  for (int slot = 0; slot < set->m_totalDipoles; ++slot) {
    count += set->m_dipoles[slot] != nullptr ? 1 : 0;
  }
  return count;
}

void ImportedFile::repair(const Repairs& repairs) {
  if (!source || repairs.isEmpty()) {
    return;
  }
  RepairReport report = repairImport(*source, *set, 0, repairs);
  repaired.insert(repaired.end(), report.told.begin(), report.told.end());
  takeReport(*this, std::move(report.left));
}

ImportedFile importFile(const CString& path, DipoleFormat format, const std::string& name,
                        const Repairs& repairs, const CarryingHead& head) {
  const CurrentFolderKept folder;
  const ModuleMessages messages;
  ImportedFile file;
  file.path = path;
  file.name = name.empty() ? utf8Of(path) : name;
  file.format = format;
  const CString full = fullPath(path);
  file.failure = whyUnreadable(full);
  if (file.failure.empty()) {
    file.failure = failureOfImport(file, full, head);
  }
  if (!file.set) {
    file.set = std::make_unique<CDipoleFace9File>();
  }
  file.messages = messages.all();
  if (file.failure.empty() && isAudited(format)) {
    file.source = sourceOf(full, format, file.messages, file.name);
    takeReport(file, auditImport(*file.source, *file.set, 0));
    file.repair(repairs);
  }
  return file;
}

}  // namespace host
