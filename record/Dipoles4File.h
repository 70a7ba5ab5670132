// Layer 3 of the dipole record: its archive record.
//
// docs/file-formats.md tells the layouts byte by byte. Four versions exist, named by their dates: 2001-01-01,
// 2001-11-18, 2005-06-29 and 2006-12-06. A read leaves every member that its version does not carry as it
// was. Faults of the archive pass through as CArchiveException* and CFileException*, unless said otherwise,
// and so does memory that runs out.
#pragma once

#include "record/Dipoles3Display2D.h"

class AFX_EXT_CLASS CDipoles4File : public CDipoles3Display2D {
 public:
  CDipoles4File();
  CDipoles4File(const CDipoles4File&);
  CDipoles4File& operator=(const CDipoles4File&);
  ~CDipoles4File() override;

  // The stand-alone form: "DIPOLEZQ", a version and a record. Writes 2006-12-06, reads it and 2005-06-29.
  // Returns 1. Loading: another magic returns 0 silently, another version shows "Wrong file format!" and
  // returns 0; the dipole is unchanged in both cases.
  int serializeDipole(CArchive& archive);

  // The form inside a dipole-set file. Despite its name it writes the current one, 2001-11-18; it reads that
  // and 2001-01-01. Returns 1. A file fault shows "3DPtB file could not be opened " and returns 0; what was
  // read before it stays.
  int serializeObsolete20050629(CArchive& archive);

 private:
  int serialize2001_01_01(CArchive& archive);  // behind m_show; cannot be written, on purpose; returns 1
  int serialize2001_11_18(CArchive& archive);  // behind the version; returns 1
  int serialize20050629(CArchive& archive);    // returns 1
  int serialize20061206(CArchive& archive);    // returns 1

  template <typename Transfer>
  void transfer2001(Transfer transfer);
  template <typename Transfer>
  void transfer2005(Transfer transfer);
  int transferEmbedded(CArchive& archive);
};
