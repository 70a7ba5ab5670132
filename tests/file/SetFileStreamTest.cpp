// Set files that come from where there is no length and no seeking.
#include "tests/file/SetFixture.h"
#include "tests/support/StreamFile.h"
#include "tests/support/Thrown.h"

namespace {

bool isCurrent(const std::string& name) {
  return name.find("set_20050629") == 0;
}

// Reads a stream to its end; gives the result.
int readStream(const std::string& bytes, bool current, CDipoleFace9File& set, int buffer) {
  StreamFile file(bytes);
  CArchive archive(&file, CArchive::load, buffer);
  const int result = current ? set.serializeDipolesFace(archive) : set.serializeObsolete20050630(archive);
  archive.Close();
  return result;
}

class Stream : public testing::TestWithParam<const char*> {};

}  // namespace

TEST_P(Stream, IsReadAsAFileIs) {
  const std::string name = GetParam();
  const Set expected = filledSet(1);
  const auto read = isCurrent(name) ? readCurrent : readObsolete;
  ASSERT_EQ(read(archiveBytes(name), *expected, nullptr), 1);
  for (const int buffer : {128, 200, 4096}) {
    const ScriptedOperator user;
    const Set set = filledSet(1);
    EXPECT_EQ(readStream(archiveBytes(name), isCurrent(name), *set, buffer), 1) << buffer;
    EXPECT_EQ(differences(linesOf(*expected), linesOf(*set)), Lines{}) << buffer;
    EXPECT_EQ(user.texts(), Texts{});
  }
}

TEST_P(Stream, ThatBreaksOffEndsInTheArchiveException) {
  const std::string name = GetParam();
  const std::string whole = archiveBytes(name);
  for (std::size_t length = 0; length < whole.size(); length += 13) {
    const ScriptedOperator user;
    const Set set = filledSet(1);
    const int cause = archiveCause([&] { readStream(whole.substr(0, length), isCurrent(name), *set, 128); });
    EXPECT_EQ(cause, CArchiveException::endOfFile) << length;
    EXPECT_EQ(user.texts(), Texts{}) << length;
  }
}

INSTANTIATE_TEST_SUITE_P(SetFile, Stream,
                         testing::Values("set_20050629", "set_20050629_small", "set_20050629_empty",
                                         "set_20011118", "set_20011118_foreign", "set_20010901",
                                         "set_20010101_version_0", "set_20010101_version_1"));
