// Layer 7 of the dipole collection: the module's own file for a whole set, the text export, and the choice of
// an importer by a file's name.
//
// docs/file-formats.md tells the layouts of the set file byte by byte. The host opens the file and the
// archive. A file that breaks off raises CArchiveException*, a file fault between two dipoles
// CFileException*, and memory may run out in the set's own texts; the collection then holds what was read
// whole. Imports and exportExelFile throw nothing.
#pragma once

#include "import/DipoleFace8Import02_4DMSI.h"

struct ObsoleteFace;

class AFX_EXT_CLASS CDipoleFace9File : public CDipoleFace8Import02_4DMSI {
 public:
  // Bytes that an archive should hold back when it stores a full set (7 MB): with fewer, much of the time
  // goes to the calls that write them.
  static constexpr int archiveBuffer = 512 * 1024;

  CDipoleFace9File();
  CDipoleFace9File(const CDipoleFace9File&);
  CDipoleFace9File& operator=(const CDipoleFace9File&);
  ~CDipoleFace9File() override;

  // Writes or reads the current format: "DIPOLESFACEZQ", version 20050629, the set. Loading replaces the set.
  // Returns 1. Another magic returns 0 silently; another version, or more dipoles than the table has room
  // for, shows "Wrong file format!" and returns 0. The collection is unchanged in these cases. A count below
  // 1 is an empty set. Loading without memory for a dipole shows "Not enough memory", keeps what was read and
  // returns 1; a file fault inside a dipole shows "3DPtB file could not be opened " and returns 0, with what
  // was read, or with the file half written.
  int serializeDipolesFace(CArchive& archive);

  // Writes version 20011118 without a magic, and reads it and the older 20010901, 1 and 0. Loading does not
  // clean the set first: slots are overwritten. Deliberately returns 1 in every case, also after "Dipole file
  // format error" for an unknown version or too many dipoles, which changes nothing. Empty slots are not
  // written, and the current dipole as the place that it has among those written, -1 when its slot is empty.
  int serializeObsolete20050630(CArchive& archive);

  // Asks for a file name and writes every dipole as one line of UTF-16 text, as stored. Appends ".txt" to a
  // name that holds no ".txt". Returns 1, or 0 when cancelled, or, after "File could not be opened ", when
  // the file cannot be written.
  int exportExelFile();

  // Writes the same to a file of exactly this name, in place of what is there; asks and says nothing. Returns
  // 1. A file that cannot be written raises CFileException*, memory that runs out std::bad_alloc or
  // CMemoryException*; what was written so far stays.
  int exportExelFileX(const CString& path);

  // Hands a path to the importer of its ending: ".dip" or ".DIP", ".txt" or ".TXT", exactly. Returns the
  // importer's result, or 0 for any other ending.
  int importDipoleX(CString& path, bool offerWholeFolder);

 private:
  // Each is one version, or a part of one, behind its number. All return 1.
  int serialize20050629(CArchive& archive);
  int _00serializeDipoles(CArchive& archive);
  int _01serializeDipoleFace(CArchive& archive);
  int serialize2001_11_18(CArchive& archive);
  int Serialize20010901(CArchive& archive);  // loads only; a storing archive stays as it is
  int Serialize20010101(CArchive& archive);  // likewise

  void storeFlaggedDipoles(CArchive& archive);
  void loadFlaggedDipoles(CArchive& archive);
  void storeOldDipoles(CArchive& archive);
  void loadOldDipoles(CArchive& archive, ObsoleteFace& face);  // the face loses its texts
  void loadDipole(CArchive& archive);
  void forgetSource();
  void countLoaded(int current);
  void serializeSpheres(CArchive& archive);
};
