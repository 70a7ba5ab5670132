// Layer 7 of the dipole collection: the module's own file for a whole set, the text export, and the choice of
// an importer by a file's name.
//
// docs/file-formats.md tells the layouts of the set file byte by byte. The host opens the file and the
// archive. A file that breaks off raises CArchiveException*, a file fault between two dipoles
// CFileException*, and memory may run out in the set's own texts; the collection then holds what was read
// whole. Export and import throw nothing.
#pragma once

#include "import/DipoleFace8Import02_4DMSI.h"

struct ObsoleteFace;

class AFX_EXT_CLASS CDipoleFace9File : public CDipoleFace8Import02_4DMSI {
 public:
  CDipoleFace9File();
  CDipoleFace9File(const CDipoleFace9File&);
  CDipoleFace9File& operator=(const CDipoleFace9File&);
  ~CDipoleFace9File() override;

  // Writes or reads the current format: "DIPOLESFACEZQ", version 20050629, the set. Loading replaces the set.
  // Returns 1. Another magic returns 0 silently; another version, or a count that the table or the file has
  // no room for, shows "Wrong file format!" and returns 0. The collection is unchanged in these cases.
  // Loading without memory for a dipole shows "Not enough memory", keeps what was read and returns 1; a file
  // fault inside a dipole shows "3DPtB file could not be opened " and returns 0, with what was read, or with
  // the file half written.
  int serializeDipolesFace(CArchive& archive);

  // Writes version 20011118 without a magic, and reads it and the older 20010901, 1 and 0. Loading does not
  // clean the set first: slots are overwritten. Deliberately returns 1 in every case, also after "Dipole file
  // format error" for an unknown version or an impossible count, which changes nothing.
  int serializeObsolete20050630(CArchive& archive);

  // Asks for a file name and writes every dipole as one line of UTF-16 text, as stored. Appends ".txt" to a
  // name that holds no ".txt". Returns 1, or 0 when cancelled, or, after "File could not be opened ", when
  // the file cannot be written.
  int exportExelFile();

  // Hands a path to the importer of its ending: ".dip" or ".DIP", ".txt" or ".TXT", exactly. Returns the
  // importer's result, or 0 for any other ending.
  int importDipoleX(CString& path, bool offerWholeFolder);

 private:
  // How a transfer of a set ended.
  enum Outcome {
    rejected,  // nothing has changed; the entry point says so
    whole,
    cutShort,  // out of memory, and said so; what follows in the archive stands in the wrong place
    faulty     // a file fault, and said so
  };

  Outcome serialize20050629(CArchive& archive);
  Outcome _00serializeDipoles(CArchive& archive);
  Outcome _01serializeDipoleFace(CArchive& archive);
  Outcome serialize2001_11_18(CArchive& archive);
  Outcome Serialize20010901(CArchive& archive);  // loads only; a storing archive stays as it is
  Outcome Serialize20010101(CArchive& archive);  // likewise

  Outcome storeFlaggedDipoles(CArchive& archive);
  Outcome loadFlaggedDipoles(CArchive& archive);
  Outcome storeOldDipoles(CArchive& archive);
  Outcome loadOldDipoles(CArchive& archive, ObsoleteFace& face);  // the face loses its texts
  Outcome loadDipole(CArchive& archive);
  void forgetSource();
  void countLoaded(int current);
  Outcome serializeSpheres(CArchive& archive);
};
