// An atlas is read from an image of labels and a text of names; what would name wrong places is refused.
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "host/head/AtlasFile.h"
#include "host/text/PathText.h"
#include "tests/host/head/NiftiFile.h"
#include "tests/host/text/Failing.h"
#include "tests/support/TempFolder.h"

namespace {

using host::Atlas;
using host::NamedPlace;
using host::pathOf;

// 4 x 1 x 1 voxels of 10 mm, the first at 0: labels 1, 2, 0, 0.
NiftiFile fourVoxels() {
  NiftiFile file;
  file.dim = {3, 4, 1, 1, 1, 1, 1, 1};
  file.type = 2;
  file.sformCode = 4;
  file.srow = {10, 0, 0, 0, 0, 10, 0, 0, 0, 0, 10, 0};
  for (const int label : {1, 2, 0, 0}) {
    file.add(static_cast<std::uint8_t>(label));
  }
  return file;
}

Atlas readAs(const std::string& name, const std::string& bytes) {
  const TempFolder folder;
  return host::readAtlas({pathOf(folder.write(name, bytes)), {}});
}

// What is said of the file, without its name.
std::string refusal(const std::string& bytes, const std::string& name = "one.nii") {
  const std::string text = failureOf([&] { (void)readAs(name, bytes); });
  const std::size_t at = text.find(name + ": ");
  return at == std::string::npos ? text : text.substr(at + name.size() + 2);
}

std::string nameAt(const Atlas& atlas, const host::Vector3& place) {
  const std::optional<NamedPlace> found = atlas.at(place);
  return found ? found->text() : "-";
}

}  // namespace

TEST(AtlasFile, NamesStandInTheTextBesideTheImage) {
  const TempFolder folder;
  folder.write("mine.nii.txt", "1 One_L 10\r\n2 One_R 20\r\n\r\n");
  const Atlas atlas =
      host::readAtlas({pathOf(folder.write("mine.nii.gz", gzip(fourVoxels().version1()))), {}});
  EXPECT_EQ(atlas.name(), "mine");
  EXPECT_EQ(nameAt(atlas, {0, 0, 0}), "One_L");
  EXPECT_EQ(nameAt(atlas, {14, 4, -4}), "One_R");
  EXPECT_EQ(nameAt(atlas, {20.5, 0, 0}), "near One_R, 10.5 mm");
  EXPECT_EQ(nameAt(atlas, {30, 0, 0}), "near One_R, 20.0 mm");
  EXPECT_EQ(nameAt(atlas, {30.1, 0, 0}), "-");
  EXPECT_EQ(nameAt(atlas, {std::nan(""), 0, 0}), "-");
}

TEST(AtlasFile, GivenNamesComeBeforeThoseBeside) {
  const TempFolder folder;
  folder.write("mine.nii.txt", "1 a\n2 b\n");
  const CString names = folder.write("other.txt", "1\tother\n");
  const Atlas atlas =
      host::readAtlas({pathOf(folder.write("mine.nii", fourVoxels().version1())), pathOf(names)});
  EXPECT_EQ(nameAt(atlas, {0, 0, 0}), "other");
  EXPECT_EQ(nameAt(atlas, {10, 0, 0}), "label 2");
}

TEST(AtlasFile, NamesThatCannotBeReadAreNotPassedOver) {
  const TempFolder folder;
  const CString image = folder.write("mine.nii", fourVoxels().version1());
  EXPECT_NE(failureOf([&] { (void)host::readAtlas({pathOf(image), pathOf(folder.path("none.txt"))}); }), "");
  folder.write("mine.nii.txt", "no names\n");
  EXPECT_NE(failureOf([&] { (void)host::readAtlas({pathOf(image), {}}); }), "");
}

TEST(AtlasFile, WithoutNamesLabelsAreNumbersOfAreasOnlyWhereTheyAre) {
  EXPECT_EQ(nameAt(readAs("brodmann.nii", fourVoxels().version1()), {0, 0, 0}), "area 1");
  EXPECT_EQ(nameAt(readAs("brodmann_152.nii", fourVoxels().version1()), {0, 0, 0}), "label 1");
  EXPECT_EQ(nameAt(readAs("mine.nii", fourVoxels().version1()), {0, 0, 0}), "label 1");
}

TEST(AtlasFile, SaysInWhichSpaceAKnownAtlasIs) {
  EXPECT_EQ(readAs("aal.nii", fourVoxels().version1()).space(), "Colin27");
  EXPECT_EQ(readAs("BRODMANN.NII", fourVoxels().version1()).space(), "Colin27");
  EXPECT_EQ(readAs("HarvardOxford-cort.nii", fourVoxels().version1()).space(), "MNI152");
  EXPECT_EQ(readAs("mine.nii", fourVoxels().version1()).space(), "");
  EXPECT_EQ(readAs("aalother.nii", fourVoxels().version1()).space(), "");
  EXPECT_EQ(readAs("aal.nii", fourVoxels().version1()).about(),
            "AAL (Tzourio-Mazoyer et al., NeuroImage 2002), Colin27");
  EXPECT_EQ(readAs("mine.nii", fourVoxels().version1()).about(), "mine, nobody said in which MNI space");
}

TEST(AtlasFile, AnImageWithoutAnSformIsRefused) {
  NiftiFile file = fourVoxels();
  file.sformCode = 0;
  file.qformCode = 1;
  const std::string cause =
      "it has no sform, and the qforms of such images are often wrong: where its labels lie is not known";
  EXPECT_EQ(refusal(file.version1()), cause);
  EXPECT_EQ(refusal(file.version2()), cause);
}

TEST(AtlasFile, TheSformCountsThoughTheQformSaysOtherwise) {
  NiftiFile file = fourVoxels();
  file.qformCode = 1;
  file.qoffset = {500, 500, 500};
  EXPECT_EQ(nameAt(readAs("mine.nii", file.version1()), {0, 0, 0}), "label 1");
}

TEST(AtlasFile, ASpaceThatIsNotMniIsRefused) {
  NiftiFile file = fourVoxels();
  file.sformCode = 3;
  EXPECT_EQ(refusal(file.version1()), "its sform leads to Talairach's space, which is not MNI's");
}

TEST(AtlasFile, APatientsOwnScannerIsRefused) {
  NiftiFile file = fourVoxels();
  file.sformCode = 1;
  EXPECT_EQ(refusal(file.version1()),
            "its sform leads to the scanner in which one patient lay, not to MNI's space");
}

TEST(AtlasFile, NamesOfTheOtherSideAreRefused) {
  const TempFolder folder;
  NiftiFile file = fourVoxels();
  file.srow[3] = 5.0;  // all of it on the right
  const CString image = folder.write("mine.nii", file.version1());
  const auto causeWith = [&](const std::string& names) {
    folder.write("mine.nii.txt", names);
    return failureOf([&] { (void)host::readAtlas({pathOf(image), {}}); });
  };
  const std::string cause = "atlas " + host::utf8Of(image) +
                            ": by its sform, labels that are named left lie on the right: it is mirrored";
  EXPECT_EQ(causeWith("1 Hippocampus_L\n2 Pole\n"), cause);
  EXPECT_EQ(causeWith("1\tLeft Hippocampus\n2\tLeft Pole\n"), cause);
  EXPECT_EQ(causeWith("1 Hippocampus_R\n2 Pole_L\n"), "");  // no side has most
  EXPECT_EQ(causeWith("1 Hippocampus_R\n2 Right_Pole\n"), "");
  EXPECT_EQ(causeWith("1 Hippocampus\n2 Pole\n"), "");
}

TEST(AtlasFile, WhatAreNoLabelsIsRefused) {
  NiftiFile file = fourVoxels();
  file.dim = {4, 2, 1, 1, 2, 1, 1, 1};
  EXPECT_EQ(refusal(file.version1()), "it holds several volumes; an atlas is one volume of labels");
  file = fourVoxels();
  file.slope = 0.5;
  EXPECT_EQ(refusal(file.version1()), "it has numbers that are not whole: it is no image of labels");
  file = fourVoxels();
  file.type = 256;
  file.voxels[0] = '\xFF';
  EXPECT_EQ(refusal(file.version1()), "it has negative numbers, which are no labels");
  file = fourVoxels();
  file.slope = 65536.0;
  EXPECT_EQ(refusal(file.version1()), "it has numbers above 65535, which are no labels");
  file = fourVoxels();
  file.voxels.assign(4, '\0');
  EXPECT_EQ(refusal(file.version1()), "no voxel of it has a label");
}

TEST(AtlasFile, TheLargestLabelIs65535) {
  NiftiFile file = fourVoxels();
  file.type = 512;
  file.voxels.clear();
  for (const int label : {65535, 256, 0, 0}) {
    file.add(static_cast<std::uint16_t>(label));
  }
  const Atlas atlas = readAs("mine.nii", file.version1());
  EXPECT_EQ(nameAt(atlas, {0, 0, 0}), "label 65535");
  EXPECT_EQ(nameAt(atlas, {10, 0, 0}), "label 256");
}

TEST(AtlasFile, APictureIsRefused) {
  NiftiFile file = fourVoxels();
  file.dim = {3, 16, 16, 8, 1, 1, 1, 1};
  file.voxels.clear();
  for (int i = 0; i < 2048; ++i) {
    file.add(static_cast<std::uint8_t>(1 + i * 37 % 250));
  }
  EXPECT_EQ(refusal(file.version1()),
            "it looks like a picture: voxels beside each other differ, labels do not");
}

TEST(AtlasFile, SizesAreWeighedBeforeMemoryIsTaken) {
  NiftiFile file = fourVoxels();
  file.dim = {3, 512, 512, 257, 1, 1, 1, 1};
  EXPECT_EQ(refusal(gzip(file.version1())), "the image is too large for an atlas: more than 67108864 voxels");
  file = fourVoxels();
  file.srow[0] = 10.1;
  EXPECT_EQ(refusal(file.version1()), "its voxels are not between 0.1 and 10 mm wide");
  file.srow[0] = 0.09;
  EXPECT_EQ(refusal(file.version1()), "its voxels are not between 0.1 and 10 mm wide");
  EXPECT_NE(refusal(fourVoxels().version1().substr(0, 354)), "");
  EXPECT_NE(refusal("no NIfTI file"), "");
}

TEST(AtlasFile, MirroredAndOtherUselessAtlasesAreRefusedByName) {
  const std::string mirrored =
      "this white matter atlas is mirrored: by its sform each of its labels of the left lies on the right, "
      "and "
      "the other way round";
  EXPECT_EQ(refusal(fourVoxels().version1(), "JHU-WhiteMatter-labels-1mm.nii"), mirrored);
  EXPECT_EQ(refusal(gzip(fourVoxels().version1()), "jhu-whitematter-LABELS-2mm.nii.gz"), mirrored);
  EXPECT_NE(refusal(fourVoxels().version1(), "jhu189.nii").find("has no names"), std::string::npos);
  EXPECT_EQ(refusal(fourVoxels().version1(), "inia19-NeuroMaps.nii"), "this is the brain of a monkey");
}

TEST(AtlasFile, APairIsOpenedByEitherName) {
  const TempFolder folder;
  NiftiFile file = fourVoxels();
  file.magic = std::string("ni1\0", 4);
  const std::string voxels = file.voxels;
  file.voxels.clear();
  file.voxelOffset = 0.0;
  std::string header = file.version1();
  put(header, 108, 0.0F, std::endian::little);
  const CString hdr = folder.write("mine.hdr", header);
  const CString img = folder.write("mine.img", voxels);
  EXPECT_EQ(nameAt(host::readAtlas({pathOf(hdr), {}}), {10, 0, 0}), "label 2");
  EXPECT_EQ(nameAt(host::readAtlas({pathOf(img), {}}), {10, 0, 0}), "label 2");
}

TEST(AtlasFile, TwoWordsMeanThePackagesAtlases) {
  const TempFolder folder;
  EXPECT_NE(failureOf([&] { (void)host::atlasFilesOf("aal", pathOf(folder.path())); }).find("mricron-data"),
            std::string::npos);
  const CString image = folder.write("aal.nii.gz", "");
  const host::AtlasFiles files = host::atlasFilesOf("aal", pathOf(folder.path()));
  EXPECT_EQ(files.image, pathOf(image));
  EXPECT_TRUE(files.names.empty());
}

TEST(AtlasFile, NamesFollowTheImageBehindAComma) {
  const TempFolder folder;
  const std::string path = folder.pathUtf8("a,b.nii");
  EXPECT_EQ(host::atlasFilesOf(path).names.filename(), "b.nii");
  folder.write("a,b.nii", "");
  EXPECT_EQ(host::atlasFilesOf(path).image, pathOf(folder.path("a,b.nii")));
  const host::AtlasFiles both = host::atlasFilesOf(path + "," + folder.pathUtf8("names.txt"));
  EXPECT_EQ(both.image, pathOf(folder.path("a,b.nii")));
  EXPECT_EQ(both.names, pathOf(folder.path("names.txt")));
}
