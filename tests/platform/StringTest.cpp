// CString keeps UTF-16 text and takes every argument that MFC's takes.
#include <afx.h>

#include <gtest/gtest.h>
#include <stdexcept>

#include "platform/Utf.h"
#include "tests/support/Promising.h"

namespace {

std::string utf8(const CString& text) {
  return toUtf8(text);
}

TEST(CString, StartsEmptyAndIsClosedByZero) {
  const CString text;
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_EQ(text.GetLength(), 0);
  EXPECT_EQ(text.GetString()[0], 0);
}

TEST(CString, NullPointersAreEmptyTexts) {
  EXPECT_TRUE(CString(static_cast<LPCTSTR>(nullptr)).IsEmpty());
  EXPECT_TRUE(CString(static_cast<LPCTSTR>(nullptr), 3).IsEmpty());
  EXPECT_TRUE(CString(static_cast<LPCSTR>(nullptr)).IsEmpty());
  EXPECT_TRUE(CString(static_cast<LPCSTR>(nullptr), 3).IsEmpty());
  CString text = _T("old");
  text = static_cast<LPCTSTR>(nullptr);
  EXPECT_TRUE(text.IsEmpty());
  text = _T("a");
  text += static_cast<LPCTSTR>(nullptr);
  EXPECT_EQ(utf8(text), "a");
  EXPECT_EQ(text.Find(static_cast<LPCTSTR>(nullptr)), -1);
  EXPECT_TRUE(CString() == static_cast<LPCTSTR>(nullptr));
  EXPECT_EQ(utf8(static_cast<LPCTSTR>(nullptr) + text), "a");
}

TEST(CString, TakesACountOfUnitsWithZerosInside) {
  const CString text(_T("a\0b"), 3);
  EXPECT_EQ(text.GetLength(), 3);
  EXPECT_EQ(text[1], 0);
  EXPECT_EQ(text[2], _T('b'));
  EXPECT_TRUE(CString(_T("abc"), 0).IsEmpty());
  EXPECT_TRUE(CString(_T("abc"), -1).IsEmpty());
  EXPECT_EQ(utf8(CString("abc", 2)), "ab");
  EXPECT_TRUE(CString("abc", -1).IsEmpty());
}

TEST(CString, RepeatsAUnit) {
  EXPECT_EQ(utf8(CString(_T('x'), 3)), "xxx");
  EXPECT_EQ(utf8(CString(_T('x'))), "x");
  EXPECT_TRUE(CString(_T('x'), -2).IsEmpty());
}

// The characters of 80 to 9F in order, without the five bytes that the code page leaves undefined.
TEST(CString, EightBitTextIsWindows1252) {
  const std::string defined =
      "\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E\x91\x92\x93\x94\x95\x96\x97"
      "\x98\x99\x9A\x9B\x9C\x9E\x9F";
  EXPECT_EQ(utf8(CString(defined.c_str())), "€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ");
  for (const int byte : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) {
    const char bytes[] = {static_cast<char>(byte), 0};
    EXPECT_EQ(CString(bytes)[0], byte);
  }
  for (int byte = 0xA0; byte <= 0xFF; ++byte) {
    const char one = static_cast<char>(byte);
    EXPECT_EQ(CString(&one, 1)[0], byte);
  }
  for (int byte = 0; byte < 0x80; ++byte) {
    const char one = static_cast<char>(byte);
    EXPECT_EQ(CString(&one, 1)[0], byte);
  }
}

TEST(CString, IsAssignedFromEveryKindOfText) {
  CString text;
  text = _T("wide");
  EXPECT_EQ(utf8(text), "wide");
  text = "narrow \xE9";
  EXPECT_EQ(utf8(text), "narrow é");
  text = _T('c');
  EXPECT_EQ(utf8(text), "c");
  const CString other = _T("other");
  text = other;
  EXPECT_EQ(utf8(text), "other");
  text = text.GetString() + 2;  // a part of itself
  EXPECT_EQ(utf8(text), "her");
}

TEST(CString, GrowsByEveryKindOfText) {
  CString text = _T("a");
  text += _T("b");
  text += "\xE9";
  text += _T('d');
  text += text;
  EXPECT_EQ(utf8(text), "abédabéd");
  EXPECT_EQ(utf8(text + _T("-") + text + _T('!')), "abédabéd-abédabéd!");
  EXPECT_EQ(utf8(_T("<") + CString(_T("x"))), "<x");
  EXPECT_EQ(utf8(_T('<') + CString(_T("x"))), "<x");
}

TEST(CString, ComparesByUnits) {
  const CString a = _T("a");
  const CString b = _T("b");
  EXPECT_TRUE(a == CString(_T("a")) && a == _T("a") && _T("a") == a);
  EXPECT_TRUE(a != b && a != _T("b") && _T("b") != a);
  EXPECT_FALSE(a != CString(_T("a")) || a != _T("a") || _T("a") != a);
  EXPECT_TRUE(a < b && a < _T("b") && _T("a") < b);
  EXPECT_TRUE(b > a && b > _T("a") && _T("b") > a);
  EXPECT_FALSE(a < a || a > a || a < _T("a") || a > _T("a"));
  EXPECT_TRUE(a <= a && a >= a && a <= b && b >= a);
  EXPECT_FALSE(b <= a || a >= b);
  EXPECT_TRUE(CString(_T("Z")) < CString(_T("a")));
  EXPECT_LT(a.Compare(_T("aa")), 0);
  EXPECT_GT(b.Compare(_T("aa")), 0);
  EXPECT_EQ(a.Compare(_T("a")), 0);
}

TEST(CString, ComparesWithoutCaseOfAsciiLetters) {
  const Promising promising(Promising::more);
  EXPECT_EQ(CString(_T("File.DIP")).CompareNoCase(_T("fILE.dip")), 0);
  EXPECT_LT(CString(_T("a")).CompareNoCase(_T("B")), 0);
  EXPECT_GT(CString(_T("B")).CompareNoCase(_T("a")), 0);
  EXPECT_LT(CString(_T("a")).CompareNoCase(_T("ab")), 0);
  EXPECT_GT(CString(_T("ab")).CompareNoCase(_T("a")), 0);
  EXPECT_GT(CString(_T("a")).CompareNoCase(nullptr), 0);
  EXPECT_NE(CString(_T("[")).CompareNoCase(_T("{")), 0);
  EXPECT_NE(CString(_T("\u00C9")).CompareNoCase(_T("\u00E9")), 0);
}

TEST(CString, ChangesTheCaseOfAsciiLettersOnly) {
  const Promising promising(Promising::more);
  CString text = _T("aZ@[`{\u00E9\u00C9");
  EXPECT_EQ(utf8(text.MakeUpper()), "AZ@[`{éÉ");
  EXPECT_EQ(utf8(text.MakeLower()), "az@[`{éÉ");
}

TEST(CString, IndicesOutsideThrow) {
  const Promising promising(Promising::more);
  CString text = _T("ab");
  EXPECT_EQ(text[0], _T('a'));
  EXPECT_EQ(text.GetAt(1), _T('b'));
  EXPECT_EQ(text[2], 0);
  EXPECT_THROW(static_cast<void>(text[3]), std::out_of_range);
  EXPECT_THROW(static_cast<void>(text[-1]), std::out_of_range);
  text.SetAt(1, _T('c'));
  EXPECT_EQ(utf8(text), "ac");
  EXPECT_THROW(text.SetAt(2, _T('d')), std::out_of_range);
  EXPECT_THROW(text.SetAt(-1, _T('d')), std::out_of_range);
}

TEST(CString, PartsAreClamped) {
  const CString text = _T("abcd");
  EXPECT_EQ(utf8(text.Left(2)), "ab");
  EXPECT_EQ(utf8(text.Left(9)), "abcd");
  EXPECT_EQ(utf8(text.Left(-1)), "");
  EXPECT_EQ(utf8(text.Right(3)), "bcd");
  EXPECT_EQ(utf8(text.Right(9)), "abcd");
  EXPECT_EQ(utf8(text.Right(-1)), "");
  EXPECT_EQ(utf8(text.Mid(1)), "bcd");
  EXPECT_EQ(utf8(text.Mid(4)), "");
  EXPECT_EQ(utf8(text.Mid(9)), "");
  EXPECT_EQ(utf8(text.Mid(-3)), "abcd");
  EXPECT_EQ(utf8(text.Mid(1, 2)), "bc");
  EXPECT_EQ(utf8(text.Mid(3, 9)), "d");
  EXPECT_EQ(utf8(text.Mid(1, -1)), "");
}

TEST(CString, FindsUnitsAndTexts) {
  const CString text = _T("abcabc");
  EXPECT_EQ(text.Find(_T('b')), 1);
  EXPECT_EQ(text.Find(_T('b'), 2), 4);
  EXPECT_EQ(text.Find(_T('x')), -1);
  EXPECT_EQ(text.Find(_T('a'), -1), -1);
  EXPECT_EQ(text.Find(_T('a'), 7), -1);
  EXPECT_EQ(text.Find(_T("ca")), 2);
  EXPECT_EQ(text.Find(_T("abc"), 1), 3);
  EXPECT_EQ(text.Find(_T("abcd")), -1);
  EXPECT_EQ(text.Find(_T("a"), 7), -1);
  EXPECT_EQ(text.FindOneOf(_T("xcb")), 1);
  EXPECT_EQ(text.FindOneOf(_T("xy")), -1);
  EXPECT_EQ(text.ReverseFind(_T('a')), 3);
  EXPECT_EQ(text.ReverseFind(_T('x')), -1);
}

TEST(CString, DeletesAndInserts) {
  CString text = _T("abcdef");
  EXPECT_EQ(text.Delete(1), 5);
  EXPECT_EQ(utf8(text), "acdef");
  EXPECT_EQ(text.Delete(3, 99), 3);
  EXPECT_EQ(utf8(text), "acd");
  EXPECT_EQ(text.Delete(9), 3);
  EXPECT_EQ(text.Delete(0, -1), 3);
  EXPECT_EQ(text.Insert(1, _T("XY")), 5);
  EXPECT_EQ(utf8(text), "aXYcd");
  EXPECT_EQ(text.Insert(99, _T('!')), 6);
  EXPECT_EQ(text.Insert(-1, _T('<')), 7);
  EXPECT_EQ(utf8(text), "<aXYcd!");
  EXPECT_EQ(text.Insert(0, static_cast<LPCTSTR>(nullptr)), 7);
}

TEST(CString, ReplacesAndRemoves) {
  CString text = _T("aXbXc");
  EXPECT_EQ(text.Replace(_T('X'), _T('-')), 2);
  EXPECT_EQ(utf8(text), "a-b-c");
  EXPECT_EQ(text.Replace(_T("-"), _T("--")), 2);
  EXPECT_EQ(utf8(text), "a--b--c");
  EXPECT_EQ(text.Replace(_T("--"), nullptr), 2);
  EXPECT_EQ(utf8(text), "abc");
  EXPECT_EQ(text.Replace(_T(""), _T("x")), 0);
  EXPECT_EQ(text.Replace(_T("z"), _T("x")), 0);
  text = _T("aaaa");
  EXPECT_EQ(text.Replace(_T("aa"), _T("a")), 2);
  EXPECT_EQ(utf8(text), "aa");
  text = _T("banana");
  EXPECT_EQ(text.Remove(_T('a')), 3);
  EXPECT_EQ(utf8(text), "bnn");
  EXPECT_EQ(text.Remove(_T('a')), 0);
}

TEST(CString, TrimsWhiteSpaceOrWhatIsNamed) {
  CString text = _T(" \t\r\n\v\fa b \t\r\n\v\f");
  EXPECT_EQ(utf8(CString(text).TrimLeft()), "a b \t\r\n\v\f");
  EXPECT_EQ(utf8(CString(text).TrimRight()), " \t\r\n\v\fa b");
  EXPECT_EQ(utf8(text.Trim()), "a b");
  EXPECT_EQ(utf8(CString(_T("   ")).Trim()), "");
  EXPECT_EQ(utf8(CString(_T("xxaxx")).Trim(_T('x'))), "a");
  EXPECT_EQ(utf8(CString(_T("xxaxx")).TrimLeft(_T('x'))), "axx");
  EXPECT_EQ(utf8(CString(_T("xxaxx")).TrimRight(_T('x'))), "xxa");
  EXPECT_EQ(utf8(CString(_T("xyaxy")).Trim(_T("yx"))), "a");
  EXPECT_EQ(utf8(CString(_T("xyaxy")).TrimLeft(_T("yx"))), "axy");
  EXPECT_EQ(utf8(CString(_T("xyaxy")).TrimRight(_T("yx"))), "xya");
}

TEST(CString, BufferIsWrittenAndReleased) {
  const Promising promising(Promising::more);
  CString text = _T("ab");
  LPTSTR buffer = text.GetBuffer(10);
  EXPECT_EQ(buffer[0], _T('a'));
  buffer[2] = _T('c');
  buffer[3] = 0;
  buffer[9] = _T('z');
  text.ReleaseBuffer();
  EXPECT_EQ(utf8(text), "abc");
  text.GetBuffer()[0] = _T('X');
  text.ReleaseBuffer(2);
  EXPECT_EQ(utf8(text), "Xb");
  buffer = text.GetBufferSetLength(4);
  buffer[2] = _T('1');
  buffer[3] = _T('2');
  EXPECT_EQ(utf8(text), "Xb12");
  text.GetBufferSetLength(-1);
  EXPECT_TRUE(text.IsEmpty());
}

}  // namespace
