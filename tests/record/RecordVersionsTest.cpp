// The functions for the versions of a dipole's record, of which no entry point shows every side: the oldest
// version cannot be written, and the one of 2005 is written by nobody.
#include <gtest/gtest.h>
#include <string>

#include "record/Dipoleszq.h"
#include "tests/record/DipoleMembers.h"
#include "tests/support/MemoryArchive.h"
#include "tests/support/PrivateMember.h"

namespace {

using Version = int (CDipoles4File::*)(CArchive&);

struct Record20010101 : PrivateTag<Version> {};
struct Record20011118 : PrivateTag<Version> {};
struct Record20050629 : PrivateTag<Version> {};
struct Record20061206 : PrivateTag<Version> {};

}  // namespace

template struct PrivateMember<Record20010101, &CDipoles4File::serialize2001_01_01>;
template struct PrivateMember<Record20011118, &CDipoles4File::serialize2001_11_18>;
template struct PrivateMember<Record20050629, &CDipoles4File::serialize20050629>;
template struct PrivateMember<Record20061206, &CDipoles4File::serialize20061206>;

namespace {

std::string stored(Version version) {
  CDipoleszq dipole;
  fillMembers(dipole);
  return storedBytes([&](CArchive& archive) { EXPECT_EQ((dipole.*version)(archive), 1); });
}

// What a new dipole writes in a version, after it has read these bytes.
std::string storedAgain(const std::string& bytes, Version version) {
  CDipoleszq dipole;
  loadBytes(bytes, [&](CArchive& archive) { EXPECT_EQ((dipole.*version)(archive), 1); });
  return storedBytes([&](CArchive& archive) { (dipole.*version)(archive); });
}

}  // namespace

TEST(RecordVersions, GiveOneForWhatTheyWriteAndRead) {
  for (const Version version :
       {privateFunction<Record20011118>, privateFunction<Record20050629>, privateFunction<Record20061206>}) {
    const std::string bytes = stored(version);
    EXPECT_GT(bytes.size(), 150U);
    EXPECT_EQ(storedAgain(bytes, version), bytes);
  }
}

TEST(RecordVersions, TheOldestWritesNothingAndGivesOne) {
  EXPECT_EQ(stored(privateFunction<Record20010101>), "");
}

TEST(RecordVersions, TheOldestReadsWhatTheNextOneWritesBehindItsFirstField) {
  const std::string next = stored(privateFunction<Record20011118>);
  CDipoleszq dipole;
  loadBytes(next.substr(sizeof(int)), [&](CArchive& archive) {
    EXPECT_EQ((dipole.*privateFunction<Record20010101>)(archive), 1);
    int number = 0;
    archive >> number;
    CDipoleszq filled;
    fillMembers(filled);
    EXPECT_EQ(number, filled.m_number);
    archive.Abort();
  });
}

TEST(RecordVersions, TheOneOf2005WritesWhatTheLaterOneDoesWithoutItsTwoLastFields) {
  const std::string later = stored(privateFunction<Record20061206>);
  constexpr std::size_t lastFields = sizeof(double) + sizeof(int);
  EXPECT_EQ(stored(privateFunction<Record20050629>), later.substr(0, later.size() - lastFields));
}
