// The functions for the versions of a set file give 1, storing and loading: how a transfer ends early is told
// past them.
#include "tests/file/SetFixture.h"
#include "tests/support/PrivateMember.h"

namespace {

using Version = int (CDipoleFace9File::*)(CArchive&);

struct Current : PrivateTag<Version> {};
struct Dipoles : PrivateTag<Version> {};
struct Face : PrivateTag<Version> {};
struct Of20011118 : PrivateTag<Version> {};
struct Of20010901 : PrivateTag<Version> {};
struct Of20010101 : PrivateTag<Version> {};

}  // namespace

template struct PrivateMember<Current, &CDipoleFace9File::serialize20050629>;
template struct PrivateMember<Dipoles, &CDipoleFace9File::_00serializeDipoles>;
template struct PrivateMember<Face, &CDipoleFace9File::_01serializeDipoleFace>;
template struct PrivateMember<Of20011118, &CDipoleFace9File::serialize2001_11_18>;
template struct PrivateMember<Of20010901, &CDipoleFace9File::Serialize20010901>;
template struct PrivateMember<Of20010101, &CDipoleFace9File::Serialize20010101>;

namespace {

std::string stored(CDipoleFace9File& set, Version version) {
  return storedBytes([&](CArchive& archive) { EXPECT_EQ((set.*version)(archive), 1); });
}

void expectLoaded(const std::string& bytes, Version version, int dipoles) {
  const Set set = filledSet(1);
  loadBytes(bytes, [&](CArchive& archive) { EXPECT_EQ(((*set).*version)(archive), 1); });
  EXPECT_EQ(set->m_totalDipoles, dipoles);
}

}  // namespace

TEST(VersionResults, AreOneForWhatIsWrittenAndRead) {
  const Set set = filledSet(3);
  expectLoaded(stored(*set, privateFunction<Current>), privateFunction<Current>, 3);
  expectLoaded(stored(*set, privateFunction<Dipoles>), privateFunction<Dipoles>, 3);
  expectLoaded(stored(*set, privateFunction<Face>), privateFunction<Face>, 1);
  expectLoaded(stored(*set, privateFunction<Of20011118>), privateFunction<Of20011118>, 3);
}

TEST(VersionResults, AreOneForWhatIsOnlyRead) {
  constexpr std::size_t behindVersion = 4;
  expectLoaded(archiveBytes("set_20010901").substr(behindVersion), privateFunction<Of20010901>, 2);
  expectLoaded(archiveBytes("set_20010101_version_0").substr(behindVersion), privateFunction<Of20010101>, 2);
}

TEST(VersionResults, OfVersionsThatAreOnlyReadAreOneForAStoringArchiveToWhichNothingIsWritten) {
  const Set set = filledSet(3);
  EXPECT_EQ(stored(*set, privateFunction<Of20010901>), "");
  EXPECT_EQ(stored(*set, privateFunction<Of20010101>), "");
}
