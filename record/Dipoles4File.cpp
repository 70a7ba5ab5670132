#include "record/Dipoles4File.h"

#include "headmodel/ArchiveTransfer.h"

namespace {

constexpr int version20011118 = 20011118;
constexpr int version20050629 = 20050629;
constexpr int version20061206 = 20061206;

}  // namespace

CDipoles4File::CDipoles4File() = default;
CDipoles4File::CDipoles4File(const CDipoles4File&) = default;
CDipoles4File& CDipoles4File::operator=(const CDipoles4File&) = default;
CDipoles4File::~CDipoles4File() = default;

// Fields 2 to 17 of the versions of 2001.
template <typename Transfer>
void CDipoles4File::transfer2001(Transfer transfer) {
  int unused = 1;
  transfer(m_showOrientation, m_scale, m_orientationScale, m_orientationLength, m_size, m_color, unused);
  transfer(m_colorF[2], m_colorF[1], m_colorF[0]);  // blue first
  transfer(m_orientation, m_location, m_dimZ, m_dimY, m_dimX);
  transfer(m_fitError, m_latency, m_moment, m_fitTag, m_id, m_display, m_label);
}

// The 18 fields of 2005-06-29.
template <typename Transfer>
void CDipoles4File::transfer2005(Transfer transfer) {
  transfer(m_number, m_listItemId, m_show, m_showOrientation, m_scale, m_color, m_id, m_fitTag);
  transfer(m_latency, m_moment, m_fitError, m_label, m_display, m_selected, m_location, m_size);
  transfer(m_orientation, m_orientationScale, m_orientationLength, m_dimY, m_dimX, m_dimZ, m_colorF);
}

int CDipoles4File::serialize2001_01_01(CArchive& archive) {
  if (!archive.IsStoring()) {
    transfer2001(ArchiveTransfer(archive));
  }
  return 1;
}

int CDipoles4File::serialize2001_11_18(CArchive& archive) {
  const ArchiveTransfer transfer(archive);
  transfer(m_show);
  transfer2001(transfer);
  transfer(m_number);
  CSpherezq unused;  // belongs to no member: written fresh, read and dropped
  unused.serialize(archive);
  return 1;
}

int CDipoles4File::serialize20050629(CArchive& archive) {
  transfer2005(ArchiveTransfer(archive));
  return 1;
}

int CDipoles4File::serialize20061206(CArchive& archive) {
  const ArchiveTransfer transfer(archive);
  transfer2005(transfer);
  transfer(m_extraValue, m_extraFlag);
  return 1;
}

int CDipoles4File::serializeDipole(CArchive& archive) {
  const CString magic = _T("DIPOLEZQ");
  if (archive.IsStoring()) {
    archive << magic << version20061206;
    return serialize20061206(archive);
  }
  if (!startsWith(archive, magic)) {
    return 0;
  }
  int version = 0;
  archive >> version;
  switch (version) {
    case version20050629:
      return serialize20050629(archive);
    case version20061206:
      return serialize20061206(archive);
    default:
      AfxMessageBox(_T("Wrong file format!"));
      return 0;
  }
}

int CDipoles4File::serializeObsolete20050629(CArchive& archive) {
  try {
    return transferEmbedded(archive);
  } catch (CFileException* exception) {
    exception->Delete();
    AfxMessageBox(_T("3DPtB file could not be opened "));
    return 0;
  }
}

int CDipoles4File::transferEmbedded(CArchive& archive) {
  if (archive.IsStoring()) {
    archive << version20011118;
    return serialize2001_11_18(archive);
  }
  int first = 0;
  archive >> first;
  if (first == version20011118) {
    return serialize2001_11_18(archive);
  }
  // A record of 2001-01-01 has no version: its first field is m_show. One whose m_show is 20011118 would be
  // mistaken; the format accepts that on purpose.
  m_show = first;
  return serialize2001_01_01(archive);
}
