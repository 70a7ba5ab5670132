// Archives in memory: bytes from what was stored, and values from bytes.
#pragma once

#include <afx.h>

#include <string>

// The bytes that `store(archive)` writes.
template <class Store>
std::string storedBytes(Store store, int bufferSize = 4096) {
  CMemFile file;
  {
    CArchive archive(&file, CArchive::store, bufferSize);
    store(archive);
    archive.Close();
  }
  std::string bytes(static_cast<std::size_t>(file.GetLength()), '\0');
  file.SeekToBegin();
  file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
  return bytes;
}

// Runs `load(archive)` on an archive over the bytes; what it throws passes.
template <class Load>
void loadBytes(std::string bytes, Load load, int bufferSize = 4096) {
  CMemFile file(reinterpret_cast<BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
  CArchive archive(&file, CArchive::load, bufferSize);
  load(archive);
  archive.Close();
}
