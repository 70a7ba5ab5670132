// CString.
#pragma once

#include "documented/Win32.h"

template <typename Character>
struct OtherCharacter;
template <>
struct OtherCharacter<char> {
  using Type = wchar_t;
};
template <>
struct OtherCharacter<wchar_t> {
  using Type = char;
};

template <typename BaseType>
class CSimpleStringT {
 public:
  typedef BaseType XCHAR;
  typedef BaseType* PXSTR;
  typedef const BaseType* PCXSTR;

  CSimpleStringT(const CSimpleStringT&);
  ~CSimpleStringT() noexcept;
  void Append(const CSimpleStringT&);
  void Append(PCXSTR, int);
  void Append(PCXSTR);
  void AppendChar(XCHAR);
  static void CopyChars(XCHAR*, const XCHAR*, int) noexcept;
  static void CopyChars(XCHAR*, size_t, const XCHAR*, int) noexcept;
  static void CopyCharsOverlapped(XCHAR*, const XCHAR*, int) noexcept;
  void Empty() noexcept;
  void FreeExtra();
  int GetAllocLength() const noexcept;
  XCHAR GetAt(int) const;
  PXSTR GetBuffer(int);
  PXSTR GetBuffer();
  PXSTR GetBufferSetLength(int);
  int GetLength() const noexcept;
  PCXSTR GetString() const noexcept;
  bool IsEmpty() const noexcept;
  PXSTR LockBuffer();
  XCHAR operator[](int) const;
  CSimpleStringT& operator+=(PCXSTR);
  CSimpleStringT& operator+=(const CSimpleStringT&);
  CSimpleStringT& operator+=(char);
  CSimpleStringT& operator+=(unsigned char);
  CSimpleStringT& operator+=(wchar_t);
  CSimpleStringT& operator=(PCXSTR);
  CSimpleStringT& operator=(const CSimpleStringT&);
  operator PCXSTR() const noexcept;
  void Preallocate(int);
  void ReleaseBuffer(int = -1);
  void ReleaseBufferSetLength(int);
  void SetAt(int, XCHAR);
  void SetString(PCXSTR, int);
  void SetString(PCXSTR);
  static int StringLength(PCXSTR) noexcept;
  void Truncate(int);
  void UnlockBuffer() noexcept;
};

template <typename BaseType>
class StrTraitMFC;

// Where a macro makes constructors explicit, they are; where a text may come from a variant, it may not.
template <typename BaseType, class StringTraits>
class CStringT : public CSimpleStringT<BaseType> {
 public:
  typedef CSimpleStringT<BaseType> CThisSimpleString;
  typedef BaseType XCHAR;
  typedef BaseType* PXSTR;
  typedef const BaseType* PCXSTR;
  typedef typename OtherCharacter<BaseType>::Type YCHAR;
  typedef const YCHAR* PCYSTR;

  CStringT() noexcept;
  CStringT(const CStringT&);
  CStringT(const CThisSimpleString&);
  CStringT(const XCHAR*);
  explicit CStringT(const YCHAR*);
  explicit CStringT(const unsigned char*);
  explicit CStringT(unsigned char*);
  explicit CStringT(wchar_t*);
  explicit CStringT(char, int = 1);
  explicit CStringT(wchar_t, int = 1);
  CStringT(const XCHAR*, int);
  CStringT(const YCHAR*, int);
  ~CStringT() noexcept;
  void AnsiToOem();
  void __cdecl AppendFormat(PCXSTR, ...);
  void __cdecl AppendFormat(UINT, ...);
  int Collate(PCXSTR) const noexcept;
  int CollateNoCase(PCXSTR) const noexcept;
  int Compare(PCXSTR) const;
  int CompareNoCase(PCXSTR) const noexcept;
  int Delete(int, int = 1);
  int Find(PCXSTR, int = 0) const noexcept;
  int Find(XCHAR, int = 0) const noexcept;
  int FindOneOf(PCXSTR) const noexcept;
  void __cdecl Format(UINT, ...);
  void __cdecl Format(PCXSTR, ...);
  void __cdecl FormatMessage(UINT, ...);
  void __cdecl FormatMessage(PCXSTR, ...);
  void FormatV(PCXSTR, va_list);
  BOOL GetEnvironmentVariable(PCXSTR);
  int Insert(int, PCXSTR);
  int Insert(int, XCHAR);
  CStringT Left(int) const;
  BOOL LoadString(HINSTANCE, UINT, WORD);
  BOOL LoadString(HINSTANCE, UINT);
  BOOL LoadString(UINT);
  CStringT& MakeLower();
  CStringT& MakeReverse();
  CStringT& MakeUpper();
  CStringT Mid(int, int) const;
  CStringT Mid(int) const;
  void OemToAnsi();
  CStringT& operator=(const CStringT&);
  CStringT& operator=(PCXSTR);
  CStringT& operator=(PCYSTR);
  CStringT& operator=(const unsigned char*);
  CStringT& operator=(XCHAR);
  CStringT& operator=(YCHAR);
  friend CStringT operator+(const CStringT&, const CStringT&);
  friend CStringT operator+(const CStringT&, PCXSTR);
  friend CStringT operator+(PCXSTR, const CStringT&);
  friend CStringT operator+(char, const CStringT&);
  friend CStringT operator+(const CStringT&, char);
  friend CStringT operator+(const CStringT&, wchar_t);
  friend CStringT operator+(wchar_t, const CStringT&);
  CStringT& operator+=(const CThisSimpleString&);
  CStringT& operator+=(PCXSTR);
  CStringT& operator+=(PCYSTR);
  CStringT& operator+=(char);
  CStringT& operator+=(unsigned char);
  CStringT& operator+=(wchar_t);
  friend bool operator==(const CStringT&, const CStringT&) noexcept;
  friend bool operator==(const CStringT&, PCXSTR) noexcept;
  friend bool operator==(const CStringT&, PCYSTR) noexcept;
  friend bool operator==(const CStringT&, XCHAR) noexcept;
  friend bool operator==(PCXSTR, const CStringT&) noexcept;
  friend bool operator==(PCYSTR, const CStringT&) noexcept;
  friend bool operator==(XCHAR, const CStringT&) noexcept;
  friend bool operator!=(const CStringT&, const CStringT&) noexcept;
  friend bool operator!=(const CStringT&, PCXSTR) noexcept;
  friend bool operator!=(const CStringT&, PCYSTR) noexcept;
  friend bool operator!=(const CStringT&, XCHAR) noexcept;
  friend bool operator!=(PCXSTR, const CStringT&) noexcept;
  friend bool operator!=(PCYSTR, const CStringT&) noexcept;
  friend bool operator!=(XCHAR, const CStringT&) noexcept;
  friend bool operator<(const CStringT&, const CStringT&) noexcept;
  friend bool operator<(const CStringT&, PCXSTR) noexcept;
  friend bool operator<(PCXSTR, const CStringT&) noexcept;
  friend bool operator>(const CStringT&, const CStringT&) noexcept;
  friend bool operator>(const CStringT&, PCXSTR) noexcept;
  friend bool operator>(PCXSTR, const CStringT&) noexcept;
  friend bool operator<=(const CStringT&, const CStringT&) noexcept;
  friend bool operator<=(const CStringT&, PCXSTR) noexcept;
  friend bool operator<=(PCXSTR, const CStringT&) noexcept;
  friend bool operator>=(const CStringT&, const CStringT&) noexcept;
  friend bool operator>=(const CStringT&, PCXSTR) noexcept;
  friend bool operator>=(PCXSTR, const CStringT&) noexcept;
  int Remove(XCHAR);
  int Replace(PCXSTR, PCXSTR);
  int Replace(XCHAR, XCHAR);
  int ReverseFind(XCHAR) const noexcept;
  CStringT Right(int) const;
  CStringT SpanExcluding(PCXSTR) const;
  CStringT SpanIncluding(PCXSTR) const;
  CStringT Tokenize(PCXSTR, int&) const;
  CStringT& Trim(XCHAR);
  CStringT& Trim(PCXSTR);
  CStringT& Trim();
  CStringT& TrimLeft(XCHAR);
  CStringT& TrimLeft(PCXSTR);
  CStringT& TrimLeft();
  CStringT& TrimRight(XCHAR);
  CStringT& TrimRight(PCXSTR);
  CStringT& TrimRight();
};

typedef CStringT<TCHAR, StrTraitMFC<TCHAR>> CString;
typedef CStringT<char, StrTraitMFC<char>> CStringA;
typedef CStringT<wchar_t, StrTraitMFC<wchar_t>> CStringW;
