// A head of 256 x 256 x 256 voxels of 1 mm and 16 bits as a file of each format: a ball of grain with a
// bright shell, stored from left to right.
#pragma once

#include <cstddef>
#include <string>

enum class BenchHeadFormat { nifti, ctf, mgh };

// The bytes of the file, not packed. The CTF file holds fiducial points too.
std::string benchHead(BenchHeadFormat format);

// The same bytes, packed with gzip as such files usually are.
std::string gzipped(const std::string& bytes);

// The `size` bytes that were packed, by zlib alone.
std::string gunzipped(const std::string& packed, std::size_t size);
