// Files are known by how they begin, whatever they are called, and a head tells what its file holds besides.
#include <gtest/gtest.h>
#include <string>

#include "host/head/HeadReader.h"
#include "host/text/PathText.h"
#include "tests/host/head/NiftiFile.h"
#include "tests/host/text/Failing.h"
#include "tests/support/TempFolder.h"

namespace {

std::string failureOfReading(const CString& path) {
  const std::string failure = failureOf([&] { (void)host::readHead(host::pathOf(path)); });
  const std::string name = host::utf8Of(path) + ": ";
  EXPECT_TRUE(failure.starts_with(name)) << failure;
  return failure.substr(name.size());
}

std::string withMarkAt(std::size_t at) {
  return std::string(at, '\0') + "DICM" + std::string(200, '\0');
}

}  // namespace

TEST(HeadReader, SendsADicomFileToItsFolderByTheMarkBehind128Bytes) {
  const TempFolder folder;
  for (const std::string& bytes : {withMarkAt(128), gzip(withMarkAt(128)), withMarkAt(128).substr(0, 132)}) {
    const CString path = folder.write("image.nii", bytes);
    EXPECT_EQ(failureOfReading(path), "a DICOM file: open the folder of its series instead");
    EXPECT_FALSE(host::isHead(host::pathOf(path)));
  }
  for (const std::string& bytes : {withMarkAt(127), withMarkAt(129), withMarkAt(128).substr(0, 131)}) {
    EXPECT_TRUE(failureOfReading(folder.write("image.dcm", bytes)).starts_with("not an MRI")) << bytes.size();
  }
}

TEST(HeadReader, SaysThatOfASeriesTheFirstVolumeIsShown) {
  const TempFolder folder;
  NiftiFile file;
  for (const std::int64_t volumes : {1, 2}) {
    file.dim[0] = 4;
    file.dim[4] = volumes;
    file.count();
    const auto source = host::readHead(host::pathOf(folder.write("a.nii", file.version1()))).source;
    ASSERT_EQ(source.remarks.size(), volumes == 1 ? 0U : 1U);
    if (volumes == 2) {
      EXPECT_EQ(source.remarks[0].text, "The file holds several volumes; the first one is shown");
      EXPECT_EQ(source.remarks[0].doubt, host::Doubt::note);
    }
  }
}
