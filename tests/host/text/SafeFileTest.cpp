// A file that is written safely is the whole new one or what it was before, and nothing else is left.
#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "host/text/PathText.h"
#include "host/text/SafeFile.h"
#include "tests/host/text/Failing.h"
#include "tests/support/TempFolder.h"
#include "tests/sweep/FaultSweep.h"

namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

std::string failureOfWriting(const CString& path, const std::string& bytes = "new") {
  return failureOf([&] {
    host::writeSafely(path, [&](CFile& file) { file.Write(bytes.data(), static_cast<UINT>(bytes.size())); });
  });
}

std::string cannotWrite(const CString& path, const std::string& cause) {
  return "cannot write " + host::utf8Of(path) + ": " + cause;
}

}  // namespace

TEST(SafeFile, WritesAFileThatWasNotThere) {
  const TempFolder folder;
  EXPECT_EQ(failureOfWriting(folder.path("a.set")), "");
  EXPECT_EQ(folder.read("a.set"), "new");
  EXPECT_EQ(folder.names(), Names{"a.set"});
}

TEST(SafeFile, ReplacesAFileAndKeepsItsPermissions) {
  const TempFolder folder;
  const fs::path path = host::pathOf(folder.write("a.set", "an old and longer one"));
  const auto mode = fs::perms::owner_read | fs::perms::owner_write;
  fs::permissions(path, mode);
  const fs::perms before = fs::status(path).permissions();
  EXPECT_EQ(failureOfWriting(folder.path("a.set")), "");
  EXPECT_EQ(folder.read("a.set"), "new");
  EXPECT_EQ(fs::status(path).permissions(), before);
}

TEST(SafeFile, WritesNamesOfEveryScript) {
  const TempFolder folder;
  const std::string name = "\xC3\xA4 \xE8\x84\xB3 \xF0\x9F\xA7\xA0.set";
  EXPECT_EQ(failureOfWriting(folder.path(name)), "");
  EXPECT_EQ(folder.names(), Names{name});
}

TEST(SafeFile, OldContentStaysUntilTheNewOneIsWhole) {
  const TempFolder folder;
  const CString path = folder.write("a.set", "old");
  host::writeSafely(path, [&](CFile& file) {
    file.Write("half", 4);
    EXPECT_EQ(folder.read("a.set"), "old");
  });
  EXPECT_EQ(folder.read("a.set"), "half");
}

TEST(SafeFile, NewFileIsNoneThatAnImportOfTheFolderWouldTake) {
  const TempFolder folder;
  host::writeSafely(folder.path("a.txt"), [&](CFile& file) {
    file.Write("a", 1);
    const auto unfinished = fs::directory_iterator(host::pathOf(folder.path()));
    ASSERT_NE(unfinished, fs::directory_iterator());
    const std::string name = unfinished->path().filename().string();
    EXPECT_NE(name.find("dipole-"), std::string::npos) << name;
    EXPECT_TRUE(name.ends_with(".tmp")) << name;
  });
  EXPECT_EQ(folder.names(), Names{"a.txt"});
}

TEST(SafeFile, RefusesAFolder) {
  const TempFolder folder;
  const CString path = folder.makeFolder("a.set");
  EXPECT_EQ(failureOfWriting(path), cannotWrite(path, "it is a folder"));
  EXPECT_EQ(folder.names(), Names{"a.set"});
}

TEST(SafeFile, RefusesAWriteProtectedFile) {
  const TempFolder folder;
  const CString path = folder.write("a.set", "old");
  fs::permissions(host::pathOf(path),
                  fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                  fs::perm_options::remove);
  EXPECT_EQ(failureOfWriting(path), cannotWrite(path, "it is write-protected"));
  EXPECT_EQ(folder.read("a.set"), "old");
  EXPECT_EQ(folder.names(), Names{"a.set"});
  fs::permissions(host::pathOf(path), fs::perms::owner_write, fs::perm_options::add);
}

TEST(SafeFile, RefusesAFolderThatIsNotThere) {
  const TempFolder folder;
  const CString path = folder.path("gone/a.set");
  EXPECT_TRUE(failureOfWriting(path).starts_with(cannotWrite(path, ""))) << failureOfWriting(path);
  EXPECT_EQ(folder.names(), Names{});
}

TEST(SafeFile, TellsWhenTheFolderVanishesMeanwhile) {
  const TempFolder folder;
  folder.makeFolder("sub");
  const CString path = folder.path("sub/a.set");
  const std::string failure = failureOf([&] {
    host::writeSafelyByName(path, [&](const CString&) { fs::remove_all(host::pathOf(folder.path("sub"))); });
  });
  EXPECT_TRUE(failure.starts_with(cannotWrite(path, ""))) << failure;
  EXPECT_EQ(folder.names(), Names{});
}

TEST(SafeFile, TellsWhenTheTargetBecomesAFolderMeanwhile) {
  const TempFolder folder;
  const CString path = folder.path("a.set");
  const std::string failure = failureOf([&] {
    host::writeSafely(path, [&](CFile&) {
      folder.makeFolder("a.set");
      folder.write("a.set/inside", "x");
    });
  });
  EXPECT_TRUE(failure.starts_with(cannotWrite(path, ""))) << failure;
  EXPECT_EQ(folder.names(), Names{"a.set"});
}

TEST(SafeFile, PassesTheTextOfItsWriter) {
  const TempFolder folder;
  const CString path = folder.write("a.set", "old");
  EXPECT_EQ(
      failureOf([&] { host::writeSafely(path, [](CFile&) { throw std::runtime_error("the set is mad"); }); }),
      "the set is mad");
  EXPECT_EQ(folder.read("a.set"), "old");
  EXPECT_EQ(folder.names(), Names{"a.set"});
}

TEST(SafeFile, GivesWritersOfNamesAFileBesideTheTarget) {
  const TempFolder folder;
  host::writeSafelyByName(folder.path("a.set"), [&](const CString& name) {
    EXPECT_EQ(name.Right(4), CString(_T(".tmp")));  // which no import of a folder takes
    EXPECT_EQ(host::pathOf(name).parent_path(), host::pathOf(folder.path()));
    CFile file(name, CFile::modeCreate | CFile::modeWrite);
    file.Write("by name", 7);
  });
  EXPECT_EQ(folder.read("a.set"), "by name");
}

TEST(SafeFile, WriterOfNamesThatWritesNothingIsTold) {
  const TempFolder folder;
  const CString path = folder.write("a.set", "old");
  const std::string failure = failureOf([&] { host::writeSafelyByName(path, [](const CString&) {}); });
  EXPECT_TRUE(failure.starts_with(cannotWrite(path, ""))) << failure;
  EXPECT_EQ(folder.read("a.set"), "old");
}

TEST(SafeFile, WhateverGivesOutTheTargetIsTheOldOneOrTheNewOne) {
  const TempFolder folder;
  const std::string bytes(9000, 'n');
  const FailurePoints points = sweep("safe file", allFaults(), [&](Fault& fault) {
    const CString path = folder.write("a.set", "old");
    bool isThrown = false;
    fault.during([&] {
      try {
        host::writeSafely(path,
                          [&](CFile& file) { file.Write(bytes.data(), static_cast<UINT>(bytes.size())); });
      } catch (...) {
        isThrown = true;
        throw;
      }
    });
    const std::string now = folder.read("a.set");
    EXPECT_TRUE(now == (isThrown ? "old" : bytes)) << now.size() << " bytes";
    EXPECT_TRUE(fault.happened() || !isThrown);
    EXPECT_EQ(folder.names(), Names{"a.set"});
  });
  EXPECT_GE(points.fileCalls, 5);  // open, write, close, open and flush again
  EXPECT_GE(points.allocations, 5);
}
