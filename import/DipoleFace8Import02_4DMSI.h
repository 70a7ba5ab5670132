// Layer 6 of the dipole collection: import of dipole tables that 4D/MSI software exports as text (".txt").
//
// A file is 8-bit text: a header, a block of file information behind a line with "Disk Media:", and the table
// behind a line with "Latency", one dipole a line, to the end of the file. Axes, frame and the line reader
// are those of the CTF importer: cm with x to the nose become mm in host axes. Latencies are ms as written,
// moments nAm, goodness of fit (0 to 1) becomes a fit error in percent.
#pragma once

#include "import/DipoleFace8Import01_CTF.h"

struct MsiDipoleRow;

class AFX_EXT_CLASS CDipoleFace8Import02_4DMSI : public CDipoleFace8Import01_CTF {
 public:
  CDipoleFace8Import02_4DMSI();
  CDipoleFace8Import02_4DMSI(const CDipoleFace8Import02_4DMSI&);
  CDipoleFace8Import02_4DMSI& operator=(const CDipoleFace8Import02_4DMSI&);
  ~CDipoleFace8Import02_4DMSI() override;

 protected:
  // Imports the file of a path and, when offered and agreed to, every file with the same ending in its
  // folder. Afterwards the head sphere is the fixed one of 70 mm at the origin, whatever was set before; raw
  // backups are taken and the total is shown. A file that cannot be opened ends the whole import, after its
  // message and the framework's own. Returns 0 when the path is not found, after "Find file:%s error \n",
  // else 1.
  int import4DMSIDipolesX(CString& path, bool offerWholeFolder);

 private:
  int parse4DDipoles(CString path);  // always 1
  void read4DMSIZones(AnsiLineReader& reader);
  int read4DMSIFileInfo(AnsiLineReader& reader);  // 1, or 0 at the end of the file
  int read4DMSIDipoles(AnsiLineReader& reader);   // 0 at the end of the file, else the collection's count
  bool appendMsiDipole(const MsiDipoleRow& row);
};
