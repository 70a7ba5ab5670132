// Whole dipole sets to and from files, whatever happens meanwhile: the target of a save is the whole new
// file or what it was before (host/text/SafeFile.h), and a set that was read is the whole one.
//
// All throw std::runtime_error that names the file and the cause. The module shows messages of its own too.
#pragma once

#include <afxwin.h>

#include <memory>
#include <string>
#include <string_view>

#include "host/dipoles/UnknownValues.h"
#include "module/dipole.h"

namespace host {

// The module's set file, of today or of 2001. What the file does not hold is as in a new set.
std::unique_ptr<CDipoleFace9File> readSet(const CString& path);

void writeSet(CDipoleFace9File& set, const CString& path);

// A set file of version 20011118, the one that holds the head spheres and the fiducial points as well.
void writeOldSet(CDipoleFace9File& set, const CString& path);

// The module's text for spreadsheets, UTF-16.
void writeSpreadsheetText(CDipoleFace9File& set, const CString& path);

// A set file, and the text, cannot say that values are unknown: they hold the members as if they were known.
// What the user should hear of that, UTF-8; empty when every value is known.
std::string lossOf(const UnknownValues& unknown);

// Bytes as they are.
void writeText(std::string_view text, const CString& path);

}  // namespace host
