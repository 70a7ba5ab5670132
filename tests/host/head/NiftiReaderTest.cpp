// The NIfTI reader gives the values and the places that the file states, and refuses by name what it cannot
// use.
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "host/head/HeadReader.h"
#include "host/text/PathText.h"
#include "tests/host/head/NiftiFile.h"
#include "tests/host/text/Failing.h"
#include "tests/support/TempFolder.h"

namespace {

using host::Vector3;
using host::Volume;

constexpr const char* notKnown =
    "not an MRI that can be read: neither a NIfTI file, a CTF MRI (.mri), MGH nor MGZ";

std::filesystem::path pathOf(const TempFolder& folder, const std::string& name) {
  const std::string text = folder.pathUtf8(name);
  return std::u8string(text.begin(), text.end());
}

Volume read(const std::string& bytes) {
  const TempFolder folder;
  folder.write("head.nii", bytes);
  return host::readHead(pathOf(folder, "head.nii")).volume;
}

// The cause that the reader gives, without the file's name before it.
std::string causeOf(const std::string& bytes) {
  const TempFolder folder;
  folder.write("head.nii", bytes);
  const std::string name = pathOf(folder, "head.nii").string() + ": ";
  try {
    (void)host::readHead(pathOf(folder, "head.nii"));
  } catch (const std::runtime_error& error) {
    const std::string text = error.what();
    EXPECT_EQ(text.substr(0, name.size()), name);
    return text.substr(name.size());
  }
  return "was read";
}

std::string patched(std::string bytes, std::size_t offset, const std::string& patch) {
  return bytes.replace(offset, patch.size(), patch);
}

NiftiFile counted() {
  NiftiFile file;
  file.count();
  return file;
}

template <typename Number>
std::vector<float> readBack(std::endian order, bool second, int type, const std::vector<Number>& values) {
  NiftiFile file;
  file.order = order;
  file.type = type;
  file.dim = {3, static_cast<std::int64_t>(values.size()), 1, 1, 1, 1, 1, 1};
  for (const Number value : values) {
    file.add(value);
  }
  return read(second ? file.version2() : file.version1()).voxels();
}

template <typename Number>
void expectRead(int type, const std::vector<Number>& values, const std::vector<float>& expected) {
  for (const std::endian order : {std::endian::little, std::endian::big}) {
    for (const bool second : {false, true}) {
      EXPECT_EQ(readBack(order, second, type, values), expected) << type << ' ' << second;
    }
  }
}

void expectNear(const Vector3& found, const Vector3& expected) {
  EXPECT_NEAR(found.x, expected.x, 1e-5);
  EXPECT_NEAR(found.y, expected.y, 1e-5);
  EXPECT_NEAR(found.z, expected.z, 1e-5);
}

}  // namespace

TEST(NiftiReader, ReadsEveryNumberTypeInBothOrdersAndVersions) {
  expectRead<std::uint8_t>(2, {0, 1, 255}, {0, 1, 255});
  expectRead<std::int8_t>(256, {0, -128, 127}, {0, -128, 127});
  expectRead<std::int16_t>(4, {-32768, 258, 32767}, {-32768, 258, 32767});
  expectRead<std::uint16_t>(512, {0, 258, 65535}, {0, 258, 65535});
  expectRead<std::int32_t>(8, {-16777216, 66051, 7}, {-16777216, 66051, 7});
  expectRead<std::uint32_t>(768, {4294967040U, 66051U, 7U}, {4294967040.0F, 66051, 7});
  expectRead<std::int64_t>(1024, {-(std::int64_t{1} << 40), 3, 5}, {-1099511627776.0F, 3, 5});
  expectRead<std::uint64_t>(1280, {std::uint64_t{1} << 63U, 3, 5}, {9223372036854775808.0F, 3, 5});
  expectRead<float>(16, {-1.5F, 0.1F, 3e30F}, {-1.5F, 0.1F, 3e30F});
  expectRead<double>(64, {-1.5, 0.25, 3e30}, {-1.5F, 0.25F, 3e30F});
}

TEST(NiftiReader, PutsTheFirstIndexFastest) {
  const Volume volume = read(counted().version1());
  EXPECT_EQ(volume.dimensions(), (std::array<int, 3>{2, 3, 4}));
  EXPECT_EQ(volume.voxel(1, 0, 0), 1.0F);
  EXPECT_EQ(volume.voxel(0, 1, 0), 2.0F);
  EXPECT_EQ(volume.voxel(0, 0, 1), 6.0F);
  EXPECT_EQ(volume.voxel(1, 2, 3), 23.0F);
}

TEST(NiftiReader, ScalesTheStoredValues) {
  NiftiFile file = counted();
  file.slope = 2.0;
  file.intercept = -3.0;
  EXPECT_EQ(read(file.version1()).voxel(1, 2, 3), 43.0F);
  EXPECT_EQ(read(file.version2()).voxel(1, 2, 3), 43.0F);
}

TEST(NiftiReader, TakesASlopeOfZeroAsUnscaled) {
  NiftiFile file = counted();
  file.intercept = 100.0;
  EXPECT_EQ(read(file.version1()).voxel(1, 2, 3), 23.0F);
}

TEST(NiftiReader, MakesValuesThatAreNotFiniteZero) {
  const float infinity = std::numeric_limits<float>::infinity();
  expectRead<float>(16, {std::nanf(""), infinity, -infinity, 4.0F}, {0, 0, 0, 4});
}

TEST(NiftiReader, HoldsDoublesBeyondFloatAtItsEnds) {
  const float most = std::numeric_limits<float>::max();
  expectRead<double>(64, {1e300, -1e300, 1.0}, {most, -most, 1.0F});
}

TEST(NiftiReader, PrefersTheSform) {
  NiftiFile file = counted();
  file.srow = {0, -2, 0, 10, 3, 0, 0, 20, 0, 0, 4, 30};
  file.qformCode = 1;
  const Volume volume = read(file.version1());
  expectNear(volume.toScanner()({1, 2, 3}), {6, 23, 42});
  EXPECT_TRUE(volume.sidesStated());
}

TEST(NiftiReader, TurnsByTheQuaternion) {
  NiftiFile file = counted();
  file.sformCode = 0;
  file.qformCode = 1;
  file.pixdim = {1, 2, 3, 4, 0, 0, 0, 0};
  // A quarter turn about the third axis carries the first axis to the second.
  file.quaternion = {0, 0, std::sqrt(0.5)};
  file.qoffset = {10, 20, 30};
  const Volume volume = read(file.version1());
  expectNear(volume.toScanner()({1, 0, 0}), {10, 22, 30});
  expectNear(volume.toScanner()({0, 1, 0}), {7, 20, 30});
  expectNear(volume.toScanner()({0, 0, 1}), {10, 20, 34});
  EXPECT_TRUE(volume.sidesStated());
  expectNear(read(file.version2()).toScanner()({1, 1, 1}), {7, 22, 34});
}

TEST(NiftiReader, TurnsAroundTheThirdAxisForANegativeQfac) {
  NiftiFile file = counted();
  file.sformCode = 0;
  file.qformCode = 1;
  file.pixdim = {-1, 2, 3, 4, 0, 0, 0, 0};
  expectNear(read(file.version1()).toScanner()({1, 1, 1}), {2, 3, -4});
}

TEST(NiftiReader, TakesAHalfTurnWhoseQuaternionIsRoundedBeyondOne) {
  NiftiFile file = counted();
  file.sformCode = 0;
  file.qformCode = 1;
  file.quaternion = {0, 1.0001, 0};
  expectNear(read(file.version1()).toScanner()({1, 1, 1}), {-1, 1, -1});
}

TEST(NiftiReader, FallsBackOnTheVoxelSizeAndSaysSo) {
  NiftiFile file = counted();
  file.sformCode = 0;
  file.pixdim = {1, 2, 3, 4, 0, 0, 0, 0};
  const Volume volume = read(file.version1());
  expectNear(volume.toScanner()({1, 1, 1}), {2, 3, 4});
  EXPECT_FALSE(volume.sidesStated());
}

TEST(NiftiReader, ConvertsMetresAndMicrometres) {
  NiftiFile file = counted();
  file.srow = {0.002, 0, 0, 0.01, 0, 0.002, 0, 0, 0, 0, 0.002, 0};
  file.units = 1 + 8;  // seconds stand in the higher bits
  expectNear(read(file.version1()).toScanner()({1, 0, 0}), {12, 0, 0});
  expectNear(read(file.version2()).toScanner()({1, 0, 0}), {12, 0, 0});
  file.srow = {2000, 0, 0, 10000, 0, 2000, 0, 0, 0, 0, 2000, 0};
  file.units = 3;
  expectNear(read(file.version1()).toScanner()({1, 0, 0}), {12, 0, 0});
}

TEST(NiftiReader, SkipsExtensionsBeforeTheVoxels) {
  NiftiFile file = counted();
  file.voxelOffset = 400;
  EXPECT_EQ(read(file.version1().insert(352, std::string(48, 'x'))).voxel(1, 2, 3), 23.0F);
}

TEST(NiftiReader, ReadsTheFirstOfSeveralVolumes) {
  NiftiFile file = counted();
  file.dim = {4, 2, 3, 4, 2, 1, 1, 1};
  for (int i = 0; i < 24; ++i) {
    file.add(-1.0F);
  }
  EXPECT_EQ(read(file.version1()).voxel(1, 2, 3), 23.0F);
  EXPECT_EQ(read(gzip(file.version1())).voxels().size(), 24U);
}

TEST(NiftiReader, UnpacksGzipWhateverTheName) {
  EXPECT_EQ(read(gzip(counted().version1())).voxel(1, 2, 3), 23.0F);
  EXPECT_EQ(read(gzip(counted().version2())).voxel(1, 2, 3), 23.0F);
}

TEST(NiftiReader, UnpacksSeveralGzipMembersAndZerosBehindThem) {
  const std::string bytes = counted().version1();
  const std::string packed = gzip(bytes.substr(0, 100)) + gzip(bytes.substr(100));
  EXPECT_EQ(read(packed).voxel(1, 2, 3), 23.0F);
  EXPECT_EQ(read(packed + std::string(512, '\0')).voxel(1, 2, 3), 23.0F);
}

TEST(NiftiReader, ReadsAFileWhoseNameIsNotAscii) {
  const TempFolder folder;
  folder.write("Müller Kopf.nii", counted().version1());
  EXPECT_EQ(host::readHead(pathOf(folder, "Müller Kopf.nii")).volume.voxel(1, 2, 3), 23.0F);
}

TEST(NiftiReader, NamesTheFileThatIsNotThere) {
  const TempFolder folder;
  try {
    (void)host::readHead(pathOf(folder, "none.nii"));
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(std::string(error.what()),
              pathOf(folder, "none.nii").string() + ": " +
                  std::make_error_code(std::errc::no_such_file_or_directory).message());
  }
}

TEST(NiftiReader, RefusesAFolderWithoutDicomImages) {
  const TempFolder folder;
  folder.makeFolder("head.nii");
  try {
    (void)host::readHead(pathOf(folder, "head.nii"));
    FAIL();
  } catch (const std::runtime_error& error) {
    const std::string text = error.what();
    EXPECT_NE(text.find("head.nii: "), std::string::npos) << text;
    EXPECT_NE(text.find(" folder "), std::string::npos) << text;  // holds none, or needs a program
  }
}

TEST(NiftiReader, RefusesEveryTruncation) {
  for (const bool second : {false, true}) {
    const std::string whole = second ? counted().version2() : counted().version1();
    for (std::size_t size = 0; size < whole.size(); ++size) {
      EXPECT_NE(causeOf(whole.substr(0, size)), "was read") << size;
      EXPECT_NE(causeOf(gzip(whole.substr(0, size))), "was read") << size;
    }
  }
}

TEST(NiftiReader, RefusesEveryTruncationOfPackedData) {
  const std::string whole = gzip(counted().version1());
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_NE(causeOf(whole.substr(0, size)), "was read") << size << " of " << whole.size();
  }
}

TEST(NiftiReader, SaysHowMuchIsMissing) {
  const std::string whole = counted().version1();
  EXPECT_EQ(causeOf(""), notKnown);
  EXPECT_EQ(causeOf(whole.substr(0, 200)), "the file is cut off within its header");
  EXPECT_EQ(causeOf(whole.substr(0, 352)), "the file is cut off: 0 of 96 bytes of voxels are there");
  EXPECT_EQ(causeOf(whole.substr(0, 447)), "the file is cut off: 95 of 96 bytes of voxels are there");
  EXPECT_EQ(causeOf(gzip(whole.substr(0, 447))), "the file is cut off: 95 of 96 bytes of voxels are there");
  EXPECT_EQ(causeOf(gzip(whole).substr(0, 100)), "the packed data are cut off");
}

TEST(NiftiReader, RefusesDamagedPackedData) {
  const std::string whole = gzip(counted().version1());
  const std::size_t checkSum = whole.size() - 8;
  std::string damaged = whole;
  damaged[checkSum] = static_cast<char>(damaged[checkSum] ^ 1);
  EXPECT_EQ(causeOf(damaged), "the packed data are damaged");
  EXPECT_EQ(causeOf(patched(whole, 20, "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF")), "the packed data are damaged");
}

TEST(NiftiReader, RefusesOtherFilesByTheirStart) {
  EXPECT_EQ(causeOf("\x89PNG and so on, long enough for a header"), notKnown);
  NiftiFile file = counted();
  file.magic = std::string(4, '\0');
  EXPECT_EQ(causeOf(file.version1()), "not a NIfTI file: the header does not end with the mark n+1 or ni1");
  file.magic = std::string("n+2\0\n\r\x1A\n", 8);
  EXPECT_EQ(causeOf(file.version2()), "not a NIfTI file: the header does not bear the mark n+2 or ni2");
}

TEST(NiftiReader, ReadsAPairByEitherName) {
  NiftiFile file = counted();
  file.voxelOffset = 16;
  for (const bool second : {false, true}) {
    file.magic = second ? std::string("ni2\0\r\n\x1A\n", 8) : std::string("ni1\0", 4);
    const std::string whole = second ? file.version2() : file.version1();
    const std::string voxels = std::string(16, '\x7F') + file.voxels;
    for (const bool pack : {false, true}) {
      const TempFolder folder;
      const std::string ending = pack ? ".gz" : "";
      const std::string header = whole.substr(0, whole.size() - file.voxels.size());
      folder.write("head.hdr" + ending, pack ? gzip(header) : header);
      folder.write("head.img" + ending, pack ? gzip(voxels) : voxels);
      for (const char* name : {"head.hdr", "head.img"}) {
        const host::ReadHead head = host::readHead(pathOf(folder, name + ending));
        EXPECT_EQ(head.volume.voxels(), read(counted().version1()).voxels());
        EXPECT_EQ(head.source.format, second ? "NIfTI-2 pair" : "NIfTI-1 pair");
      }
    }
  }
}

TEST(NiftiReader, ReadsVoxelsThatBeginAsAnMghFileDoes) {
  const TempFolder folder;
  NiftiFile file = counted();
  file.magic = std::string("ni1\0", 4);
  file.voxelOffset = 4;
  const std::string whole = file.version1();
  folder.write("head.hdr", whole.substr(0, whole.size() - file.voxels.size()));
  const std::string voxels = std::string("\0\0\0\1", 4) + file.voxels;
  EXPECT_EQ(host::readHead(host::pathOf(folder.write("head.img", voxels))).source.format, "NIfTI-1 pair");
}

TEST(NiftiReader, RefusesHalfAPair) {
  NiftiFile file = counted();
  file.magic = std::string("ni1\0", 4);
  file.voxelOffset = 1;
  EXPECT_EQ(causeOf(file.version1()),
            "a NIfTI header without voxels: no .img file of the same name is beside it");
  const TempFolder folder;
  const CString header = folder.write("head.HDR", file.version1());
  folder.write("head.IMG", file.voxels);
  const std::string failure = failureOf([&] { (void)host::readHead(host::pathOf(header)); });
  EXPECT_NE(failure.find("95 of 96 bytes of voxels"), std::string::npos) << failure;
  const CString alone = folder.write("alone.img", file.voxels);
  const std::string unknown = failureOf([&] { (void)host::readHead(host::pathOf(alone)); });
  EXPECT_NE(unknown.find(notKnown), std::string::npos) << unknown;
}

TEST(NiftiReader, RefusesColoursAndOtherTypes) {
  NiftiFile file = counted();
  file.type = 128;
  EXPECT_EQ(causeOf(file.version1()), "the voxels are colours (type 128), not grey values");
  file.type = 2304;
  EXPECT_EQ(causeOf(file.version1()), "the voxels are colours (type 2304), not grey values");
  for (const int type : {-1, 0, 1, 32, 1536, 1792, 2048}) {
    file.type = type;
    EXPECT_EQ(causeOf(file.version1()), "the voxel type " + std::to_string(type) + " cannot be read");
  }
}

TEST(NiftiReader, RefusesDimensionsThatMakeNoSense) {
  NiftiFile file = counted();
  file.dim = {2, 2, 3, 1, 1, 1, 1, 1};
  EXPECT_EQ(causeOf(file.version1()), "not a volume: the file names 2 dimensions");
  file.dim[0] = 8;
  EXPECT_EQ(causeOf(file.version2()), "not a volume: the file names 8 dimensions");
  for (const int extent : {0, -1, -32768}) {
    file.dim = {3, 2, extent, 4, 1, 1, 1, 1};
    EXPECT_EQ(causeOf(file.version1()), "an extent of " + std::to_string(extent) + " voxels");
  }
  file.dim = {4, 2, 3, 4, -1, 1, 1, 1};
  EXPECT_EQ(causeOf(file.version1()), "an extent of -1 volumes");
}

TEST(NiftiReader, RefusesVolumesBeyondItsLimit) {
  const std::string cause = "the volume is too large: more than 268435456 voxels";
  NiftiFile file = counted();
  file.dim = {3, 32767, 32767, 32767, 1, 1, 1, 1};
  EXPECT_EQ(causeOf(file.version1()), cause);
  file.dim = {3, std::int64_t{1} << 62, 4, 4, 1, 1, 1, 1};
  EXPECT_EQ(causeOf(file.version2()), cause);
  file.dim = {3, 65536, 4096, 2, 1, 1, 1, 1};
  EXPECT_EQ(causeOf(file.version2()), cause);
}

TEST(NiftiReader, ChecksHugeClaimsAgainstWhatIsThere) {
  NiftiFile file = counted();
  file.type = 64;
  file.dim = {3, 65536, 4096, 1, 1, 1, 1, 1};
  EXPECT_EQ(causeOf(file.version2()), "the file is cut off: 96 of 2147483648 bytes of voxels are there");
  EXPECT_EQ(causeOf(gzip(file.version2())),
            "the file is cut off: 96 of 2147483648 bytes of voxels are there");
}

TEST(NiftiReader, RefusesMapsThatCannotBeInverted) {
  const std::string cause = "the map from voxels to mm cannot be inverted";
  const double nan = std::numeric_limits<double>::quiet_NaN();
  NiftiFile file = counted();
  file.srow[3] = nan;
  EXPECT_EQ(causeOf(file.version1()), cause);
  file.srow = {1, 0, 0, 0, 0, 1, 0, 0, 1, 1, 0, 0};
  EXPECT_EQ(causeOf(file.version1()), cause);
  file.srow = {};
  EXPECT_EQ(causeOf(file.version2()), cause);
  file.sformCode = 0;
  file.pixdim = {1, 1, 0, 1, 0, 0, 0, 0};
  EXPECT_EQ(causeOf(file.version1()), cause);
  file.qformCode = 1;
  file.quaternion = {nan, 0, 0};
  EXPECT_EQ(causeOf(file.version1()), cause);
}

TEST(NiftiReader, RefusesAPlaceOfTheVoxelsThatMakesNoSense) {
  const std::string cause = "the place of the voxels in the file makes no sense";
  NiftiFile file = counted();
  for (const double offset : {347.0, -1.0, 1e30, std::numeric_limits<double>::quiet_NaN(),
                              std::numeric_limits<double>::infinity()}) {
    file.voxelOffset = offset;
    EXPECT_EQ(causeOf(file.version1()), cause) << offset;
  }
  file.voxelOffset = 400;
  EXPECT_EQ(causeOf(file.version2()), cause);
  file.voxelOffset = 5000;
  EXPECT_EQ(causeOf(file.version1()), "the file is cut off: 0 of 96 bytes of voxels are there");
  EXPECT_EQ(causeOf(gzip(file.version1())), "the file is cut off: 0 of 96 bytes of voxels are there");
}
