// CArchive moves values bit by bit, little-endian, and says at once when the file is not what it should be.
#include <afx.h>

#include <bit>
#include <climits>
#include <gtest/gtest.h>

#include "tests/support/FailingOs.h"
#include "tests/support/MemoryArchive.h"
#include "tests/support/Promising.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Thrown.h"

namespace {

template <class Value>
std::string stored(Value value) {
  return storedBytes([&](CArchive& archive) { archive << value; });
}

template <class Value>
Value loaded(const std::string& bytes) {
  Value value{};
  loadBytes(bytes, [&](CArchive& archive) { archive >> value; });
  return value;
}

TEST(Archive, ValuesHaveTheirDocumentedWidths) {
  EXPECT_EQ(stored(BYTE{0xFE}), "\xFE");
  EXPECT_EQ(stored(char{-2}), "\xFE");
  EXPECT_EQ(stored(short{-2}), "\xFE\xFF");
  EXPECT_EQ(stored(WORD{0x1234}), "\x34\x12");
  EXPECT_EQ(stored(int{-2}), "\xFE\xFF\xFF\xFF");
  EXPECT_EQ(stored(LONG{0x12345678}), "\x78\x56\x34\x12");
  EXPECT_EQ(stored(UINT{0x12345678}), "\x78\x56\x34\x12");
  EXPECT_EQ(stored(DWORD{0xFEDCBA98}), "\x98\xBA\xDC\xFE");
  EXPECT_EQ(stored(LONGLONG{-2}), "\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF");
  EXPECT_EQ(stored(ULONGLONG{0x0102030405060708}), "\x08\x07\x06\x05\x04\x03\x02\x01");
  EXPECT_EQ(stored(1.0F), std::string("\0\0\x80\x3F", 4));
  EXPECT_EQ(stored(-2.0), std::string("\0\0\0\0\0\0\0\xC0", 8));
}

TEST(Archive, ValuesAreReadBack) {
  EXPECT_EQ(loaded<BYTE>("\xFE"), 0xFE);
  EXPECT_EQ(loaded<char>("\xFE"), -2);
  EXPECT_EQ(loaded<short>("\xFE\xFF"), -2);
  EXPECT_EQ(loaded<WORD>("\x34\x12"), 0x1234);
  EXPECT_EQ(loaded<int>("\xFE\xFF\xFF\xFF"), -2);
  EXPECT_EQ(loaded<LONG>("\x78\x56\x34\x12"), 0x12345678);
  EXPECT_EQ(loaded<UINT>("\x98\xBA\xDC\xFE"), 0xFEDCBA98);
  EXPECT_EQ(loaded<DWORD>("\x98\xBA\xDC\xFE"), 0xFEDCBA98);
  EXPECT_EQ(loaded<LONGLONG>("\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF"), -2);
  EXPECT_EQ(loaded<ULONGLONG>("\x08\x07\x06\x05\x04\x03\x02\x01"), 0x0102030405060708ULL);
  EXPECT_EQ(loaded<float>(std::string("\0\0\x80\x3F", 4)), 1.0F);
  EXPECT_EQ(loaded<double>(std::string("\0\0\0\0\0\0\0\xC0", 8)), -2.0);
}

TEST(Archive, NotANumberKeepsItsPayload) {
  const std::string quiet("\x01\x02\x03\x04\x05\x06\xF8\x7F", 8);
  const std::string signalling("\x01\x02\x03\x04\x05\x06\xF0\xFF", 8);
  for (const std::string& bytes : {quiet, signalling}) {
    double value = 0;
    loadBytes(bytes, [&](CArchive& archive) { archive >> value; });
    EXPECT_EQ(storedBytes([&](CArchive& archive) { archive << value; }), bytes);
  }
  const std::string single("\x01\x02\xA0\x7F", 4);
  float value = 0;
  loadBytes(single, [&](CArchive& archive) { archive >> value; });
  EXPECT_EQ(storedBytes([&](CArchive& archive) { archive << value; }), single);
}

TEST(Archive, KnowsItsDirectionAndFile) {
  CMemFile file;
  CArchive store(&file, CArchive::store);
  EXPECT_TRUE(store.IsStoring());
  EXPECT_FALSE(store.IsLoading());
  EXPECT_EQ(store.GetFile(), &file);
  const CArchive load(&file, CArchive::load);
  EXPECT_TRUE(load.IsLoading());
  EXPECT_FALSE(load.IsStoring());
}

// Values that lie across the end of the smallest buffer, at every offset.
TEST(Archive, ValuesCrossTheBuffersEnd) {
  for (int offset = 115; offset <= 130; ++offset) {
    const auto write = [&](CArchive& archive) {
      for (int i = 0; i < offset; ++i) {
        archive << static_cast<BYTE>(i);
      }
      archive << 0.1 << BYTE{7} << 1234567890;
    };
    const std::string bytes = storedBytes(write, 128);
    EXPECT_EQ(bytes, storedBytes(write, 4096));
    ASSERT_EQ(bytes.size(), static_cast<std::size_t>(offset) + 13);
    loadBytes(
        bytes,
        [&](CArchive& archive) {
          for (int i = 0; i < offset; ++i) {
            BYTE byte = 0;
            archive >> byte;
            ASSERT_EQ(byte, static_cast<BYTE>(i));
          }
          double number = 0;
          BYTE seven = 0;
          int integer = 0;
          archive >> number >> seven >> integer;
          EXPECT_EQ(number, 0.1);
          EXPECT_EQ(seven, 7);
          EXPECT_EQ(integer, 1234567890);
        },
        128);
  }
}

TEST(Archive, ReadsAndWritesBlocksOfAnySize) {
  for (const UINT size : {0U, 1U, 127U, 128U, 129U, 1000U, 5000U}) {
    std::string block(size, '\0');
    for (UINT i = 0; i < size; ++i) {
      block[i] = static_cast<char>(i * 7);
    }
    const std::string bytes = storedBytes(
        [&](CArchive& archive) {
          archive << BYTE{1};
          archive.Write(block.data(), size);
          archive << BYTE{2};
        },
        128);
    EXPECT_EQ(bytes, "\x01" + block + "\x02");
    loadBytes(
        bytes,
        [&](CArchive& archive) {
          BYTE first = 0;
          BYTE last = 0;
          std::string read(size, '?');
          archive >> first;
          EXPECT_EQ(archive.Read(read.data(), size), size);
          archive >> last;
          EXPECT_EQ(read, block);
          EXPECT_EQ(first, 1);
          EXPECT_EQ(last, 2);
        },
        128);
  }
}

TEST(Archive, ReadIsShortAtTheEndAndDoesNotThrow) {
  loadBytes("abc", [](CArchive& archive) {
    char buffer[200] = {};
    EXPECT_EQ(archive.Read(buffer, 200), 3U);
    EXPECT_EQ(std::string(buffer, 3), "abc");
    EXPECT_EQ(archive.Read(buffer, 1), 0U);
  });
  loadBytes(
      std::string(300, 'x'),
      [](CArchive& archive) {
        char buffer[1000];
        EXPECT_EQ(archive.Read(buffer, 1000), 300U);
      },
      128);
}

TEST(Archive, ValuesBeyondTheEndThrowEndOfFile) {
  const auto endsFor = [](auto value, std::size_t available) {
    return archiveCause(
        [&] { loadBytes(std::string(available, 'x'), [&](CArchive& archive) { archive >> value; }); });
  };
  EXPECT_EQ(endsFor(BYTE{}, 0), CArchiveException::endOfFile);
  EXPECT_EQ(endsFor(short{}, 1), CArchiveException::endOfFile);
  EXPECT_EQ(endsFor(int{}, 3), CArchiveException::endOfFile);
  EXPECT_EQ(endsFor(double{}, 7), CArchiveException::endOfFile);
  EXPECT_EQ(endsFor(double{}, 8), nothingThrown);
}

TEST(Archive, ExceptionsNameTheFile) {
  const TempFolder folder;
  CFile file(folder.write("x.dip", ""), CFile::modeRead);
  CArchive archive(&file, CArchive::load);
  BYTE byte = 0;
  try {
    archive >> byte;
    FAIL();
  } catch (CArchiveException* exception) {
    EXPECT_EQ(toUtf8(exception->m_strFileName), folder.pathUtf8("x.dip"));
    exception->Delete();
  }
  archive.Abort();
}

TEST(Archive, WrongDirectionThrows) {
  CMemFile file;
  CArchive store(&file, CArchive::store);
  BYTE byte = 0;
  int number = 0;
  CString text;
  EXPECT_EQ(archiveCause([&] { store >> byte; }), CArchiveException::writeOnly);
  EXPECT_EQ(archiveCause([&] { store >> number; }), CArchiveException::writeOnly);
  EXPECT_EQ(archiveCause([&] { store >> text; }), CArchiveException::writeOnly);
  EXPECT_EQ(archiveCause([&] { store.Read(&byte, 1); }), CArchiveException::writeOnly);
  CMemFile other;
  CArchive load(&other, CArchive::load);
  EXPECT_EQ(archiveCause([&] { load << byte; }), CArchiveException::readOnly);
  EXPECT_EQ(archiveCause([&] { load << number; }), CArchiveException::readOnly);
  EXPECT_EQ(archiveCause([&] { load << text; }), CArchiveException::readOnly);
  EXPECT_EQ(archiveCause([&] { load.Write(&byte, 1); }), CArchiveException::readOnly);
  EXPECT_EQ(archiveCause([&] { load.WriteString(_T("x")); }), CArchiveException::readOnly);
}

TEST(Archive, ClosedArchiveRefusesEverything) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  archive.Close();
  archive.Close();
  archive.Flush();
  EXPECT_EQ(archive.GetFile(), nullptr);
  EXPECT_EQ(archiveCause([&] { archive << BYTE{1}; }), CArchiveException::genericException);
}

TEST(Archive, StoringReachesTheFileOnFlushCloseAndDestruction) {
  CMemFile file;
  {
    CArchive archive(&file, CArchive::store);
    archive << BYTE{1};
    EXPECT_EQ(file.GetLength(), 0U);
    archive.Flush();
    EXPECT_EQ(file.GetLength(), 1U);
    archive << BYTE{2};
    archive.Close();
    EXPECT_EQ(file.GetLength(), 2U);
  }
  {
    CArchive archive(&file, CArchive::store);
    archive << BYTE{3};
  }
  EXPECT_EQ(file.GetLength(), 3U);
}

TEST(Archive, AbortAndNoFlushWriteNothing) {
  CMemFile file;
  {
    CArchive archive(&file, CArchive::store);
    archive << BYTE{1};
    archive.Abort();
  }
  {
    CArchive archive(&file, CArchive::store | CArchive::bNoFlushOnDelete);
    archive << BYTE{1};
  }
  EXPECT_EQ(file.GetLength(), 0U);
}

TEST(Archive, DestructionOnTheWayOfAnExceptionWritesNothing) {
  const Promising promising(Promising::more);
  CMemFile file;
  EXPECT_EQ(fileCause([&] {
              CArchive archive(&file, CArchive::store);
              archive << BYTE{1};
              AfxThrowFileException(CFileException::hardIO);
            }),
            CFileException::hardIO);
  EXPECT_EQ(file.GetLength(), 0U);
}

TEST(Archive, ClosingALoadingArchiveLeavesTheFileBehindWhatWasRead) {
  const Promising promising(Promising::more);
  std::string bytes = "abcdef";
  CMemFile file(reinterpret_cast<BYTE*>(bytes.data()), 6);
  CArchive archive(&file, CArchive::load);
  BYTE byte = 0;
  archive >> byte >> byte;
  EXPECT_EQ(file.GetPosition(), 6U);
  archive.Flush();
  EXPECT_EQ(file.GetPosition(), 2U);
  archive >> byte;
  EXPECT_EQ(byte, 'c');
  archive.Close();
  EXPECT_EQ(file.GetPosition(), 3U);
}

TEST(Archive, UsesTheCallersBuffer) {
  CMemFile file;
  BYTE buffer[128] = {};
  CArchive archive(&file, CArchive::store, 128, buffer);
  archive << BYTE{9};
  EXPECT_EQ(buffer[0], 9);
  archive.Close();
}

// A full disk is reported by whichever call meets it, once; the archive's end is silent then.
TEST(Archive, FullDiskArrivesOnce) {
  const TempFolder folder;
  FailingOs os;
  CFile file(folder.path("x"), CFile::modeCreate | CFile::modeWrite);
  os.failAt(FailingOs::Call::write, 1, CFileException::diskFull);
  EXPECT_EQ(fileCause([&] {
              CArchive archive(&file, CArchive::store);
              archive << 1;
              archive.Close();
            }),
            CFileException::diskFull);
  os.failAt(FailingOs::Call::write, 1, CFileException::diskFull);
  EXPECT_EQ(fileCause([&] {
              CArchive archive(&file, CArchive::store);
              archive << 1;
            }),
            CFileException::diskFull);
  os.failAt(FailingOs::Call::write, 2, CFileException::diskFull);
  EXPECT_EQ(fileCause([&] {
              CArchive archive(&file, CArchive::store, 128);
              for (int i = 0; i < 1000; ++i) {
                archive << i;
              }
              archive.Close();
            }),
            CFileException::diskFull);
  EXPECT_EQ(file.GetLength(), 128U);
}

TEST(Archive, FailingReadArrives) {
  const TempFolder folder;
  CFile file(folder.write("x", "abc"), CFile::modeRead);
  FailingOs os(FailingOs::Call::read, 1, CFileException::hardIO);
  EXPECT_EQ(fileCause([&] {
              CArchive archive(&file, CArchive::load);
              BYTE byte = 0;
              archive >> byte;
            }),
            CFileException::hardIO);
}

}  // namespace
