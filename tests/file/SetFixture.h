// Helpers shared by the tests of the set file.
#pragma once

#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "file/DipoleFace9File.h"
#include "tests/file/ExactMembers.h"
#include "tests/record/DipoleMembers.h"
#include "tests/support/MemoryArchive.h"
#include "tests/support/ScriptedOperator.h"

using Texts = std::vector<std::string>;
using Set = std::unique_ptr<CDipoleFace9File>;  // large: on the heap

// A set whose members all have values of their own, with so many dipoles, all different too.
inline Set filledSet(int count) {
  auto set = std::make_unique<CDipoleFace9File>();
  for (int slot = 0; slot < count; ++slot) {
    set->addDipole();
    fillMembers(*set->m_dipoles[slot]);
    set->m_dipoles[slot]->m_number = 5000 + slot;
    set->m_dipoles[slot]->m_label.Format(_T("before %d"), slot);
  }
  fillMembers(*set);
  return set;
}

// `bytes` with an int32 written over its place.
inline std::string patched(std::string bytes, std::size_t place, int value) {
  std::memcpy(bytes.data() + place, &value, sizeof value);
  return bytes;
}

inline std::string currentBytes(CDipoleFace9File& set) {
  return storedBytes([&](CArchive& archive) { EXPECT_EQ(set.serializeDipolesFace(archive), 1); });
}

inline std::string obsoleteBytes(CDipoleFace9File& set) {
  return storedBytes([&](CArchive& archive) { EXPECT_EQ(set.serializeObsolete20050630(archive), 1); });
}

// Each reads from bytes and gives the result; `rest` is what stays unread, up to 64 bytes.
inline int readCurrent(const std::string& bytes, CDipoleFace9File& set, std::size_t* rest = nullptr) {
  int result = -1;
  loadBytes(bytes, [&](CArchive& archive) {
    result = set.serializeDipolesFace(archive);
    char unread[64];
    const UINT count = archive.Read(unread, sizeof unread);
    if (rest != nullptr) {
      *rest = count;
    }
  });
  return result;
}

inline int readObsolete(const std::string& bytes, CDipoleFace9File& set, std::size_t* rest = nullptr) {
  int result = -1;
  loadBytes(bytes, [&](CArchive& archive) {
    result = set.serializeObsolete20050630(archive);
    char unread[64];
    const UINT count = archive.Read(unread, sizeof unread);
    if (rest != nullptr) {
      *rest = count;
    }
  });
  return result;
}

// The name of a line's member: all in front of its value.
inline std::string memberOf(const std::string& line) {
  std::string::size_type end = line.find(' ');
  const auto next = [&] { end = line.find(' ', end + 1); };
  const bool isInSlot = line.compare(0, 5, "slot ") == 0 && line.find("empty") == std::string::npos;
  const bool isInFiducials = line.compare(0, 10, "m_fiducial") == 0;
  if (isInSlot || (isInFiducials && line.find(" point ") != std::string::npos)) {
    next();
    next();
  } else if (isInFiducials) {
    next();
  }
  return line.substr(0, end);
}

// `lines` with the values that `listed` gives instead; names that only `listed` knows are added.
inline Lines replaced(const Lines& lines, const Lines& listed) {
  std::map<std::string, std::string> all;
  for (const Lines* part : {&lines, &listed}) {
    for (const std::string& line : *part) {
      all[memberOf(line)] = line;
    }
  }
  Lines values;
  for (const auto& [member, line] : all) {
    values.push_back(line);
  }
  return values;
}

// What the file of a name holds, read into a set of these set-wide members. Its slots start as new dipoles.
inline Lines expectedLines(const std::string& name, const CDipoleFace& before) {
  const Lines listed = archiveLines(name);
  Lines start = linesOf(before);
  for (int slot = 0; slot < 8; ++slot) {
    const std::string prefix = "slot " + std::to_string(slot) + " ";
    for (const std::string& line : listed) {
      if (line.compare(0, prefix.size(), prefix) == 0 && line != prefix + "empty") {
        const Lines dipole = prefixed(prefix, linesOf(CDipoleszq()));
        start.insert(start.end(), dipole.begin(), dipole.end());
        break;
      }
    }
  }
  return replaced(start, listed);
}
