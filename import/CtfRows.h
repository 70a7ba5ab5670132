// The rows of a CTF file's sections, as they are scanned. Axes and units are those of the file: x to the
// nose, y to the left ear, z up; lengths in cm or mm and latencies in s or ms, as the section's header says.
// Numbers keep single precision.
#pragma once

#include <afx.h>

#include "import/AnsiLine.h"
#include "record/Dipoleszq.h"

// "%d : %f %f %f   %f %f %f   %f  %s" of the section "Dipoles"; the label may be missing.
struct CtfDipoleRow {
  bool scan(const AnsiLine& line);  // false: not such a row

  float location[3] = {};
  float orientation[3] = {};
  float moment = 0.0F;
  CString label = _T("Non");  // a row without a label keeps that of the row before it
};

// "%d: %d %d %f  %f %f %f   %f %f %f   %f  %f %s" of the section "Fit_Results"; the label may be missing.
struct CtfMovingDipoleRow {
  bool scan(const AnsiLine& line);  // false: not such a row

  int id = 0;
  int fitTag = 0;
  float latency = 0.0F;
  float location[3] = {};
  float orientation[3] = {};
  float moment = 0.0F;
  float fitError = 0.0F;  // percent
  CString label;          // "Non" when it is missing
};

// "%d: %d %d %d %d %d" of the section "Dipole_Flags": colour and shape of a dipole.
struct CtfFlagRow {
  bool scan(const AnsiLine& line);         // false: not such a row
  void applyTo(CDipoleszq& dipole) const;  // m_colorF and m_display

  int color = 0;  // 0 yellow, 1 green, 2 red, 3 cyan, 4 magenta, 5 white, 6 black, others blue
  int shape = 0;  // 0 and 3 are displayed, 1 and 4 give display state 2, others 0
};

// "%d: %d %d %f %d %f %d %d %d %s" of the section "Dipole_FitInfo"; the last text may be missing.
struct CtfFitInfoRow {
  bool scan(const AnsiLine& line);         // false: not such a row
  void applyTo(CDipoleszq& dipole) const;  // m_id, m_fitTag, m_latency (ms), m_fitError

  int id = 0;
  int fitTag = 0;
  float latency = 0.0F;   // s
  float fitError = 0.0F;  // percent
};
