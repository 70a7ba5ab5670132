// What a file is, by the ending of its name, and where that does not tell by what stands in it; ASCII letters
// of an ending may be large or small.
#pragma once

#include <afx.h>

#include <optional>

namespace host {

// In the order in which a viewer opens files: dipoles come to a head and a set that are there already.
enum class FileKind {
  mri,     // .nii, .mri, .mgh, .mgz, .hdr, .img, packed ones too, and others that begin as such a file
  set,     // .dipset
  dipoles  // everything else: the importers look into it
};

FileKind kindOf(const CString& path);

// The files of dipoles that can be read.
enum class DipoleFormat {
  ctf,       // .dip
  neuromag,  // .dip too, see host/exchange/DipContent.h
  bdip,      // .bdip, the same in binary
  msi,       // .txt, tables of 4D/MSI software
  set,       // .dipset
  csv,       // tables of this program, see host/exchange/TableFile.h
  tsv,
  json
};

// Whether other programs write them, which do not number their dipoles.
constexpr bool isForeign(DipoleFormat format) {
  return format == DipoleFormat::ctf || format == DipoleFormat::msi || format == DipoleFormat::neuromag ||
         format == DipoleFormat::bdip;
}

// By the ending alone: a .dip is CTF's.
std::optional<DipoleFormat> dipoleFormatOf(const CString& path);

// What a .dip is stands in it; other endings tell, whatever the file holds. A file that cannot be read counts
// as one that holds nothing.
std::optional<DipoleFormat> dipoleFormatOfFile(const CString& path);

}  // namespace host
