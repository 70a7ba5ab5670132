// CTF files to order, and what is found in a file in short.
#pragma once

#include <string>
#include <vector>

#include "host/audit/Finding.h"

using Lines = std::vector<std::string>;

// "wrong unit" and the like, in order.
inline Lines outlineOf(const std::vector<host::Finding>& findings) {
  Lines outline;
  for (const host::Finding& finding : findings) {
    outline.push_back(std::string(nameOf(finding.severity)) + " " + std::string(nameOf(finding.code)));
  }
  return outline;
}

// Text that a CTF file has around its dipoles.
inline const std::string ctfSphere =
    "MEG_Sphere\n{\n\tORIGIN_X:\t0.5\n\tORIGIN_Y:\t0.1\n\tORIGIN_Z:\t5.0\n\tRADIUS:\t8.5\n}\n";
inline const std::string ctfHeading = "\t// xp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\tMom(nAm)\tLabel\n";
inline const std::string ctfFit =
    "Dipole_FitInfo\n{\n\t//\tTrial\tStart\tLatency "
    "(s)\tN_Pts\tError\tMEG_Error\tEEG_Error\tErrType\tFitType\t"
    "Good\tDataset\n";

// A section of dipoles with the rows given, "1:\t1.00 ..." each without its line end.
inline std::string ctfSection(const std::string& name, const std::string& heading, const Lines& rows) {
  std::string text = name + "\n{\n" + heading;
  for (const std::string& row : rows) {
    text += row + "\n";
  }
  return text + "}\n";
}
