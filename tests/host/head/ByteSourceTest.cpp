// A file may hold so much and no more, packed or not: a packed one says nothing of its size beforehand.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "host/head/ByteSource.h"
#include "host/text/PathText.h"
#include "tests/host/head/NiftiFile.h"
#include "tests/host/text/Failing.h"
#include "tests/support/TempFolder.h"

namespace {

constexpr std::uint64_t most = std::uint64_t{1} << 20U;

std::string failureOfReading(const CString& path, std::size_t bytes) {
  return failureOf([&] {
    host::ByteSource source(host::pathOf(path), most);
    std::vector<std::byte> target(bytes);
    EXPECT_EQ(source.read(target), bytes);
  });
}

}  // namespace

TEST(ByteSource, OfAPackedFileStopsAtWhatItMayHold) {
  const TempFolder folder;
  const CString path = folder.write("bomb.gz", gzip(std::string(most + 1, '\0')));
  EXPECT_EQ(failureOfReading(path, most), "");
  EXPECT_EQ(failureOfReading(path, most + 1), "the file holds more than 1 MiB");
  EXPECT_EQ(failureOf([&] { (void)host::ByteSource(host::pathOf(path), most).skip(10 * most); }),
            "the file holds more than 1 MiB");
}

TEST(ByteSource, OfAPlainFileIsRefusedBeforeItIsRead) {
  const TempFolder folder;
  EXPECT_EQ(failureOfReading(folder.write("a", std::string(most, '\0')), most), "");
  EXPECT_EQ(failureOfReading(folder.write("b", std::string(most + 1, '\0')), 1),
            "the file holds more than 1 MiB");
}

#ifndef _WIN32
TEST(ByteSource, IsOfARegularFileAlone) {
  EXPECT_EQ(failureOf([] { const host::ByteSource source("/dev/null", most); }),
            "this is not a regular file");
}
#endif
