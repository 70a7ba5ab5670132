// The header of a NIfTI-1 (348 bytes) or NIfTI-2 (540 bytes) file, as far as a picture needs it. Lengths are
// in mm, whatever unit the file names. Layout: the NIfTI-1 and NIfTI-2 standards.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "host/head/Affine.h"
#include "host/head/VoxelReader.h"

namespace host {

// Where the map from voxels to mm comes from.
enum class NiftiMap { sform, qform, spacing };

struct NiftiHeader {
  // The first three dimensions; a series in time is read as its first volume.
  VoxelFormat format;
  // Whether more than one volume follows.
  bool series = false;
  // Whether the voxels stand in a file of their own.
  bool isPair = false;
  // Whether the file says niftiAroundMiddle.
  bool isAroundMiddle = false;
  int version = 1;
  std::uint64_t voxelOffset = 0;  // bytes from the start of the file of the voxels
  Affine toScanner;
  NiftiMap map = NiftiMap::spacing;  // the voxel size alone says nothing about the patient's sides
  int mapCode = 0;                   // what the map leads to (host/head/MriSpace.h); 0 without one
};

// What the description says of a file whose millimetres are no scanner's: written with code 2, which others
// write for millimetres that may be.
constexpr const char* niftiAroundMiddle = "mm around the middle of the volume";

constexpr std::size_t nifti1HeaderSize = 348;
constexpr std::size_t nifti2HeaderSize = 540;

// How long the header is that begins with these first four bytes; 0 when they begin no NIfTI header.
std::size_t niftiHeaderSize(std::span<const std::byte, 4> start);
// Throws std::runtime_error with the cause when the header, of the size above, is not one that can be used.
NiftiHeader parseNiftiHeader(std::span<const std::byte> bytes);

}  // namespace host
