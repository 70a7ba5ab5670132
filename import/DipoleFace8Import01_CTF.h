// Layer 5 of the dipole collection: import of CTF dipole files (".dip").
//
// A CTF file is 8-bit text in sections: a name alone on a line, "{", rows, "}". The importer appends what it
// finds to the collection and never clears it. It converts the CTF head frame (cm; x to the nose, y to the
// left ear, z up) to the host's (mm; x left, y up, z front), so host x, y, z = CTF y, z, x; latencies become
// ms. Everything the user is told goes through AfxMessageBox.
//
// docs/messages.md lists the messages. File faults while reading are reported by the framework's own box and
// end the import, exhausted memory ends it silently; no exception leaves the two import operations.
#pragma once

#include <vector>

#include "collection/DipoleFace3On3DView.h"

class AnsiLine;
class AnsiLineReader;
struct CtfDipoleRow;
struct CtfMovingDipoleRow;

class AFX_EXT_CLASS CDipoleFace8Import01_CTF : public CDipoleFace3On3DView {
 public:
  CDipoleFace8Import01_CTF();
  CDipoleFace8Import01_CTF(const CDipoleFace8Import01_CTF&);
  CDipoleFace8Import01_CTF& operator=(const CDipoleFace8Import01_CTF&);
  ~CDipoleFace8Import01_CTF() override;

  // Lets the user choose files and imports them in the order chosen. Afterwards the head-frame fiducials are
  // set (unless m_skipFiducialSetup), the new dipoles' raw backups are taken, and the total is shown.
  // Returns 0 when the dialog was cancelled or gave no file, else 1.
  int importCTFDipoles();

  // Reads one line, see import/AnsiLineReader.h. Returns 1, or 0 at the end of the file, with the text that
  // no line end closed. The archive then stands right behind the line. A file fault raises CFileException*,
  // and memory may run out.
  int readANSI(CArchive& archive, CString& line);

  // Derives m_fiducialCtf (head frame, mm) from m_fiducialMri (voxels of a 256-voxel MRI of 0.859375 mm), or,
  // with fewer than three MRI points, from the radius of the head sphere. Puts the origin of
  // m_sphereLocational to 0, 0, 0 and its radius to that of m_sphereCtf. Returns 1; without a head sphere
  // shows "Can't set CTF dipole fiducial points without MEG sphere" and returns 0.
  int setCtfFiducial();

  // Rotate three values in place from the CTF axes to the host's, without sign change or scaling:
  // new x, y, z = old y, z, x. Return 1.
  int coordinateCtf2zq(float& x, float& y, float& z);
  int coordinateCtf2zq_double(double& x, double& y, double& z);

  CWnd* m_pParentWnd = nullptr;  // the host's window, for the dialogs
  int m_importFirst = 0;         // the last import: index of its first dipole
  int m_importEnd = 0;           // and one past its last

 protected:
  // Imports the file of a path and, when offered and agreed to, every file with the same last four characters
  // in its folder, which becomes the current directory. Then goes on as importCTFDipoles does.
  // Returns 0 when the path is not found, after "Find file:%s error \n", else 1.
  int importCTFDipolesX(CString& path, bool offerWholeFolder);

  // Reads one file into the collection. Returns 1, or 0 after a message when it cannot be opened.
  int parseCTFDipoles(CString path);

  // Called at the end of every import, for layers that show the list. Returns 1.
  virtual int updateDipoleList();

  // Steps that the importers of other formats share. The files of an import by path (none, after the message,
  // when it is not found); the user's answer to a location beyond 300 along an axis, in the unit given; raw
  // backups, total message and list update at the end; a dipole's location (mm) and orientation from three
  // values along the axes of the file.
  std::vector<CString> findImportFiles(const CString& path, bool offerWholeFolder);
  static bool isLocationRefused(const float (&location)[3]);
  void finishImport();
  void setFromFileAxes(double (&target)[3], const float (&values)[3]);

 private:
  struct CtfUnits;

  void importCtfFiles(const std::vector<CString>& paths);
  void setHeadFiducialsFromMri();

  // The section readers, in CtfSections.cpp. Each reads from behind the section's name to its "}".
  void readCtfSections(AnsiLineReader& reader);
  int readCtfFileInfo(AnsiLineReader& reader);       // 1, or 0 at the end of the file
  int readCtfModelInfo(AnsiLineReader& reader);      // 1, or 0 at the end of the file
  int readCtfMEGsphere(AnsiLineReader& reader);      // always 1
  int readCtfDipoles(AnsiLineReader& reader);        // the collection's count, or 0 at the end of the file
  int readCtfMovingDipoles(AnsiLineReader& reader);  // the collection's count, or 0 at the end of the file
  // The file's first slot plus the number of rows read, or 0 at the end of the file.
  int readCtfDipoleFlag(AnsiLineReader& reader, unsigned long firstSlot);
  int readCtfDipoleFitInfo(AnsiLineReader& reader, int firstSlot);
  int readCtfMriFiducialPt(AnsiLineReader& reader);  // 1, or 0 at the end of the file

  template <typename Row>
  int applyCtfRows(AnsiLineReader& reader, int firstSlot);
  template <typename Row, typename Append>
  bool readCtfRows(AnsiLineReader& reader, CtfUnits& units, Append append);
  bool appendCtfDipole(const CtfDipoleRow& row, const CtfUnits& units);
  bool appendCtfMovingDipole(const CtfMovingDipoleRow& row, const CtfUnits& units);
  bool fillCtfSlot(int slot, bool& wasEmpty);
  void acceptCtfSphere(const double (&centre)[3], double radius);
  void readMriFiducial(const AnsiLine& line);
};
