// CMemFile grows its own memory, or uses the caller's in place.
#include <afx.h>

#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>

#include "tests/support/Promising.h"
#include "tests/support/Thrown.h"

namespace {

TEST(MemFile, GrowsAndReadsBack) {
  CMemFile file(4);
  file.Write("0123456789", 10);
  EXPECT_EQ(file.GetLength(), 10U);
  EXPECT_EQ(file.GetPosition(), 10U);
  EXPECT_EQ(file.Seek(-3, CFile::end), 7U);
  char buffer[10] = {};
  EXPECT_EQ(file.Read(buffer, 10), 3U);
  EXPECT_EQ(std::string(buffer, 3), "789");
  EXPECT_EQ(file.Read(buffer, 10), 0U);
}

TEST(MemFile, GapBehindTheEndIsZeros) {
  const Promising promising(Promising::more);
  CMemFile file;
  file.Write("ab", 2);
  file.Seek(4, CFile::begin);
  EXPECT_EQ(file.GetLength(), 2U);
  file.Write("c", 1);
  file.SeekToBegin();
  char buffer[5];
  EXPECT_EQ(file.Read(buffer, 5), 5U);
  EXPECT_EQ(std::string(buffer, 5), std::string("ab\0\0c", 5));
}

TEST(MemFile, CutAndGrownAgainIsZeros) {
  const Promising promising(Promising::more);
  CMemFile file;
  file.Write("abcd", 4);
  file.SetLength(1);
  file.SetLength(3);
  file.SeekToBegin();
  char buffer[3];
  EXPECT_EQ(file.Read(buffer, 3), 3U);
  EXPECT_EQ(std::string(buffer, 3), std::string("a\0\0", 3));
}

TEST(MemFile, AttachedMemoryIsUsedInPlace) {
  BYTE memory[4] = {1, 2, 3, 4};
  CMemFile file(memory, 4);
  EXPECT_EQ(file.GetLength(), 4U);
  BYTE read[2];
  EXPECT_EQ(file.Read(read, 2), 2U);
  EXPECT_EQ(read[1], 2);
  const BYTE nine = 9;
  file.Write(&nine, 1);
  EXPECT_EQ(memory[2], 9);
}

TEST(MemFile, AttachedMemoryDoesNotGrow) {
  BYTE memory[4] = {1, 2, 3, 4};
  CMemFile file(memory, 4);
  const BYTE five[5] = {9, 9, 9, 9, 9};
  EXPECT_TRUE(throwsMemoryException([&] { file.Write(five, 5); }));
  EXPECT_EQ(memory[0], 1);
  EXPECT_EQ(file.GetLength(), 4U);
  EXPECT_TRUE(throwsMemoryException([&] { file.SetLength(5); }));
  file.Write(five, 4);
  EXPECT_EQ(memory[3], 9);
}

TEST(MemFile, AttachedMemoryWithGrowthStartsEmpty) {
  auto* memory = static_cast<BYTE*>(std::malloc(2));
  CMemFile file(memory, 2, 16);
  EXPECT_EQ(file.GetLength(), 0U);
  file.Write("abc", 3);
  EXPECT_EQ(file.GetLength(), 3U);
}

TEST(MemFile, DetachGivesTheMemoryUp) {
  CMemFile file;
  file.Write("abc", 3);
  BYTE* memory = file.Detach();
  ASSERT_NE(memory, nullptr);
  EXPECT_EQ(memory[2], 'c');
  std::free(memory);
  EXPECT_EQ(file.GetLength(), 0U);
  EXPECT_EQ(file.Detach(), nullptr);
}

TEST(MemFile, DetachReturnsTheCallersMemory) {
  BYTE memory[4] = {};
  CMemFile file(memory, 4);
  EXPECT_EQ(file.Detach(), memory);
}

TEST(MemFile, BadSeeksThrowAndKeepThePosition) {
  CMemFile file;
  file.Write("abc", 3);
  EXPECT_EQ(fileCause([&] { file.Seek(-4, CFile::current); }), CFileException::badSeek);
  EXPECT_EQ(fileCause([&] { file.Seek(-1, CFile::begin); }), CFileException::badSeek);
  EXPECT_EQ(fileCause([&] { file.Seek((std::numeric_limits<LONGLONG>::min)(), CFile::end); }),
            CFileException::badSeek);
  EXPECT_EQ(fileCause([&] { file.Seek((std::numeric_limits<LONGLONG>::max)(), CFile::end); }),
            CFileException::badSeek);
  EXPECT_EQ(fileCause([&] { file.Seek(0, 3); }), CFileException::badSeek);
  EXPECT_EQ(file.GetPosition(), 3U);
}

TEST(MemFile, MoreThanAllMemoryIsRefused) {
  CMemFile file;
  EXPECT_TRUE(throwsMemoryException([&] { file.SetLength(1ULL << 62); }));
  EXPECT_EQ(file.GetLength(), 0U);
}

TEST(MemFile, HasNoNameAndCannotBeOpened) {
  CMemFile file;
  CFileException error;
  EXPECT_FALSE(file.Open(_T("x"), CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::invalidFile);
  EXPECT_TRUE(file.GetFilePath().IsEmpty());
  EXPECT_TRUE(file.GetFileName().IsEmpty());
  file.Flush();
  file.Close();
  EXPECT_EQ(file.GetLength(), 0U);
}

}  // namespace
