// The set file: its bytes, and what a reader finds in files that another program wrote.
#include <limits>

#include "platform/Utf.h"
#include "tests/file/SetFixture.h"
#include "tests/headmodel/ArchiveRecord.h"
#include "tests/support/Thrown.h"

namespace {

std::string textOf(const ByteWriter& writer) {
  return {writer.bytes().begin(), writer.bytes().end()};
}

// The record of a dipole inside a set file.
std::string embedded(CDipoleszq& dipole) {
  return storedBytes([&](CArchive& archive) { dipole.serializeObsolete20050629(archive); });
}

template <class Record>
std::string recordOf(Record& record) {
  return storedBytes([&](CArchive& archive) { record.serialize(archive); });
}

std::string faceFields() {
  ByteWriter bytes;
  bytes.value(2.5).value(3).value(4.5).value(5.5).value(6.5).value(7);
  bytes.text("version 8").text("patient 9").text("file 10").value(11).value(12).value(13).value(BYTE{1});
  bytes.value(14).value(17.5F).value(18).value(19).value(20).value(21).value(22);
  return textOf(bytes.value(23.5).value(24.5).value(25.5));
}

class CurrentFile : public testing::TestWithParam<const char*> {};
class ObsoleteFile : public testing::TestWithParam<const char*> {};

}  // namespace

TEST(SetFile, BytesFollowTheLayout) {
  const Set set = filledSet(3);
  set->deleteDipole(1, 0);
  set->m_currentDipole = 2;
  std::string expected =
      textOf(ByteWriter().text("DIPOLESFACEZQ").value(20050629).value(2).value(3).value(1));
  expected += embedded(*set->m_dipoles[0]) + textOf(ByteWriter().value(0).value(1));
  expected += embedded(*set->m_dipoles[2]) + faceFields();
  EXPECT_EQ(currentBytes(*set), expected);
}

TEST(SetFile, StartsWithItsMagicAndVersion) {
  EXPECT_EQ(currentBytes(*std::make_unique<CDipoleFace9File>()).substr(0, 34),
            std::string("\xFF\xFE\xFF\x0D"
                        "D\0I\0P\0O\0L\0E\0S\0F\0A\0C\0E\0Z\0Q\0"
                        "\xC5\xF2\x31\x01",
                        34));
}

TEST(SetFile, BytesOf2001FollowTheLayout) {
  const Set set = filledSet(2);
  ByteWriter front;
  front.value(20011118).value(14).value(300.25).value(300.5).value(300.75);
  front.text("version 8").text("file 10").text("patient 9").value(11).value(12).value(18);
  ByteWriter middle;
  middle.value(7).value(3).value(19).value(2.5).value(23.5).value(24.5).value(25.5);
  middle.value(4.5).value(5.5).value(6.5).value(22).value(20).value(21).value(1).value(2);
  CSpherezq fresh;
  const std::string expected = textOf(front) + recordOf(set->m_fiducialMri) + recordOf(set->m_fiducialCtf) +
                               textOf(middle) + embedded(*set->m_dipoles[0]) + embedded(*set->m_dipoles[1]) +
                               recordOf(set->m_sphereLocational) + recordOf(set->m_sphereCtf) +
                               recordOf(fresh);
  EXPECT_EQ(obsoleteBytes(*set), expected);
}

TEST(SetFile, EmptySlotsAreLeftOutAndNotCountedIn2001) {
  const Set set = filledSet(3);
  const std::string whole = obsoleteBytes(*set);
  set->deleteDipole(1, 0);
  const std::string bytes = obsoleteBytes(*set);
  EXPECT_LT(bytes.size(), whole.size());
  auto read = std::make_unique<CDipoleFace9File>();
  std::size_t rest = 1;
  readObsolete(bytes, *read, &rest);
  EXPECT_EQ(rest, 0U);
  ASSERT_EQ(read->m_totalDipoles, 2);
  EXPECT_EQ(read->m_dipoles[0]->m_number, 5000);
  EXPECT_EQ(read->m_dipoles[1]->m_number, 5002);
}

TEST(SetFile, TheCurrentDipoleIsWrittenByItsPlaceAmongThoseWrittenIn2001) {
  struct Case {
    int current;
    int written;
  };
  // Slots 0 and 2 of five are empty.
  for (const Case& c : {Case{0, -1}, Case{1, 0}, Case{2, -1}, Case{3, 1}, Case{4, 2}, Case{5, 5},
                        Case{-1, -1}, Case{-6, -6}}) {
    const Set set = filledSet(5);
    set->deleteDipole(0, 0);
    set->deleteDipole(2, 0);
    set->m_currentDipole = c.current;
    const Set read = filledSet(0);
    EXPECT_EQ(readObsolete(obsoleteBytes(*set), *read), 1);
    ASSERT_EQ(read->m_currentDipole, c.written) << c.current;
    EXPECT_EQ(set->m_currentDipole, c.current);
    if (c.written >= 0 && c.written < 3) {
      EXPECT_EQ(read->getCurrentDipole()->m_number, set->getCurrentDipole()->m_number) << c.current;
    }
  }
}

TEST(SetFile, WritingLeavesTheSetAsItIs) {
  const Set set = filledSet(2);
  const Lines before = linesOf(*set);
  currentBytes(*set);
  obsoleteBytes(*set);
  EXPECT_EQ(linesOf(*set), before);
}

TEST(SetFile, WritingEndsInTheFileItself) {
  const Set set = filledSet(1);
  CMemFile file;
  CArchive archive(&file, CArchive::store, 1 << 20);
  EXPECT_EQ(set->serializeDipolesFace(archive), 1);
  EXPECT_EQ(file.GetLength(), currentBytes(*set).size());
}

TEST_P(CurrentFile, IsReadFieldByFieldAndNothingElseChanges) {
  const ScriptedOperator user;
  const Set set = filledSet(0);
  const Lines expected = expectedLines(GetParam(), *set);
  std::size_t rest = 0;
  EXPECT_EQ(readCurrent(archiveBytes(GetParam()) + "rest", *set, &rest), 1);
  EXPECT_EQ(rest, 4U);
  EXPECT_EQ(differences(expected, linesOf(*set)), Lines{});
  EXPECT_EQ(user.texts(), Texts{});
}

TEST_P(CurrentFile, ReplacesTheSetThatWasThere) {
  const Set set = filledSet(5);
  const Lines expected = expectedLines(GetParam(), *filledSet(0));
  EXPECT_EQ(readCurrent(archiveBytes(GetParam()), *set), 1);
  EXPECT_EQ(differences(expected, linesOf(*set)), Lines{});
}

INSTANTIATE_TEST_SUITE_P(SetFile, CurrentFile,
                         testing::Values("set_20050629", "set_20050629_small", "set_20050629_empty",
                                         "set_20050629_odd"));

TEST_P(ObsoleteFile, IsReadFieldByFieldAndNothingElseChanges) {
  const ScriptedOperator user;
  const Set set = filledSet(0);
  const Lines expected = expectedLines(GetParam(), *set);
  std::size_t rest = 0;
  EXPECT_EQ(readObsolete(archiveBytes(GetParam()) + "rest", *set, &rest), 1);
  EXPECT_EQ(rest, 4U);
  EXPECT_EQ(differences(expected, linesOf(*set)), Lines{});
  EXPECT_EQ(user.texts(), Texts{});
}

// The dipoles that were there keep the members that the file does not carry, and those behind its count all.
TEST_P(ObsoleteFile, IsReadOverTheSetThatWasThere) {
  const Set set = filledSet(5);
  const CDipoleszq* third = set->m_dipoles[3];
  const Lines before = linesOf(*set);
  EXPECT_EQ(readObsolete(archiveBytes(GetParam()), *set), 1);
  EXPECT_EQ(differences(replaced(before, archiveLines(GetParam())), linesOf(*set)), Lines{});
  EXPECT_EQ(set->m_dipoles[3], third);
}

INSTANTIATE_TEST_SUITE_P(SetFile, ObsoleteFile,
                         testing::Values("set_20011118", "set_20011118_foreign", "set_20011118_odd",
                                         "set_20010901", "set_20010901_odd", "set_20010101_version_0",
                                         "set_20010101_version_1", "set_20010101_odd"));

TEST(SetFile, WhatAnotherProgramWroteIsWrittenAgainByteForByte) {
  for (const char* name : {"set_20050629", "set_20050629_small", "set_20050629_odd"}) {
    const Set set = filledSet(0);
    readCurrent(archiveBytes(name), *set);
    EXPECT_EQ(currentBytes(*set), archiveBytes(name)) << name;
  }
  for (const char* name : {"set_20011118", "set_20011118_odd"}) {
    const Set set = filledSet(0);
    readObsolete(archiveBytes(name), *set);
    EXPECT_EQ(obsoleteBytes(*set), archiveBytes(name)) << name;
  }
}

TEST(SetFile, ValuesThatAreNoNumbersSurviveBitByBit) {
  const Set set = filledSet(2);
  CDipoleszq& dipole = *set->m_dipoles[1];
  dipole.m_location[0] = std::numeric_limits<double>::quiet_NaN();
  dipole.m_location[1] = -std::numeric_limits<double>::infinity();
  dipole.m_location[2] = -0.0;
  dipole.m_latency = std::numeric_limits<double>::signaling_NaN();
  dipole.m_moment = std::numeric_limits<double>::denorm_min();
  dipole.m_colorF[1] = std::numeric_limits<float>::signaling_NaN();
  set->m_space[2] = -std::numeric_limits<double>::signaling_NaN();
  set->m_mergeRadius = -std::numeric_limits<float>::infinity();
  const Set read = filledSet(0);
  ASSERT_EQ(readCurrent(currentBytes(*set), *read), 1);
  const auto linesWith = [](const CDipoleFace& face, const std::string& name) {
    Lines lines = linesOf(face);
    std::erase_if(lines, [&](const std::string& line) { return line.find(name + " ") == std::string::npos; });
    return lines;
  };
  for (const char* name : {"m_location", "m_latency", "m_moment", "m_colorF", "m_space", "m_mergeRadius"}) {
    EXPECT_EQ(linesWith(*read, name), linesWith(*set, name));
  }
  EXPECT_EQ(linesWith(*read, "slot 1 m_location"),
            Lines{"slot 1 m_location 7ff8000000000000 fff0000000000000 8000000000000000"});
  EXPECT_EQ(linesWith(*read, "slot 1 m_latency"), Lines{"slot 1 m_latency 7ff4000000000000"});
}

TEST(SetFile, HolesStayWhereTheyWere) {
  const Set set = filledSet(4);
  set->deleteDipole(0, 0);
  set->deleteDipole(3, 0);
  const Set read = filledSet(9);
  ASSERT_EQ(readCurrent(currentBytes(*set), *read), 1);
  ASSERT_EQ(read->m_totalDipoles, 4);
  EXPECT_EQ(read->m_dipoles[0], nullptr);
  EXPECT_EQ(read->m_dipoles[1]->m_number, 5001);
  EXPECT_EQ(read->m_dipoles[2]->m_number, 5002);
  EXPECT_EQ(read->m_dipoles[3], nullptr);
}

TEST(SetFile, AnEmptySetKeepsItsCurrentIndex) {
  for (const int current : {0, -1}) {
    const auto set = std::make_unique<CDipoleFace9File>();
    set->m_currentDipole = current;
    const Set read = filledSet(2);
    ASSERT_EQ(readCurrent(currentBytes(*set), *read), 1);
    EXPECT_EQ(read->m_totalDipoles, 0);
    EXPECT_EQ(read->m_currentDipole, current);
    EXPECT_EQ(read->getCurrentDipole(), nullptr);
  }
}

TEST(SetFile, EveryPresenceFlagButZeroMeansADipole) {
  std::string bytes = archiveBytes("set_20050629_small");
  constexpr std::size_t flag = 42;  // behind magic, version, current index and count
  ASSERT_EQ(bytes.substr(flag, 4), std::string("\1\0\0\0", 4));
  bytes[flag] = 0;
  bytes[flag + 3] = '\x80';
  const Set set = filledSet(0);
  EXPECT_EQ(readCurrent(bytes, *set), 1);
  ASSERT_NE(set->m_dipoles[0], nullptr);
  EXPECT_EQ(toUtf8(set->m_dipoles[0]->m_label), "Spike");
}

TEST(SetFile, TheFlagForFiducialsIsAByteOfZeroOrOneAndAnyOtherButZeroIsTrue) {
  constexpr std::size_t behind = 52;  // what follows the flag in the file
  const Set set = filledSet(1);
  for (const bool skip : {false, true}) {
    set->m_skipFiducialSetup = skip;
    std::string bytes = currentBytes(*set);
    const std::size_t flag = bytes.size() - behind - 1;
    EXPECT_EQ(bytes[flag], skip ? '\1' : '\0');
    for (const char stored : {'\0', '\1', '\2', '\x80', '\xFF'}) {
      bytes[flag] = stored;
      const Set read = filledSet(0);
      read->m_skipFiducialSetup = stored == 0;
      ASSERT_EQ(readCurrent(bytes, *read), 1);
      EXPECT_EQ(read->m_skipFiducialSetup, stored != 0) << static_cast<int>(stored);
      EXPECT_EQ(read->m_showCurrentDipoleOnly, 14);
    }
  }
}

TEST(SetFile, AFullTableSurvives) {
  auto set = std::make_unique<CDipoleFace9File>();
  for (int slot = 0; slot < DipoleTable::capacity; ++slot) {
    set->addDipoleF(static_cast<float>(slot), 0.0F, 0.0F);
  }
  for (const bool current : {true, false}) {
    auto read = std::make_unique<CDipoleFace9File>();
    if (current) {
      readCurrent(currentBytes(*set), *read);
    } else {
      readObsolete(obsoleteBytes(*set), *read);
    }
    ASSERT_EQ(read->m_totalDipoles, DipoleTable::capacity);
    EXPECT_EQ(read->m_dipoles[DipoleTable::capacity - 1]->m_location[0], 29999.0);
  }
}
