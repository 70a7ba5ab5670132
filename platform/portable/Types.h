// The Win32 types, constants and few functions that the MFC names are made of.
//
// On Windows they come from the system's headers. Elsewhere they stand here, with Windows' widths: LONG and
// DWORD are 32 bits, LONGLONG is 64, TCHAR is one UTF-16 code unit.
#pragma once

#include <cstddef>
#include <cstdint>

#ifdef _WIN32

#include <tchar.h>
#include <windows.h>

#else

using BYTE = unsigned char;
using WORD = unsigned short;
using DWORD = std::uint32_t;
using INT = int;
using UINT = unsigned int;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using LONGLONG = long long;
using ULONGLONG = unsigned long long;
using BOOL = int;
using COLORREF = DWORD;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using TCHAR = char16_t;
using LPTSTR = TCHAR*;
using LPCTSTR = const TCHAR*;
using LPSTR = char*;
using LPCSTR = const char*;
using LPVOID = void*;
using LPCVOID = const void*;
using PUINT = UINT*;

// A text literal of TCHAR: the one way to write one that is right on every system.
#define _T(text) u##text

constexpr BOOL FALSE = 0;
constexpr BOOL TRUE = 1;
constexpr int MAX_PATH = 260;

// Colours are 0x00BBGGRR.
constexpr COLORREF RGB(int red, int green, int blue) {
  return static_cast<COLORREF>((red & 0xFF) | ((green & 0xFF) << 8) | ((blue & 0xFF) << 16));
}
constexpr BYTE GetRValue(COLORREF color) {
  return static_cast<BYTE>(color & 0xFFU);
}
constexpr BYTE GetGValue(COLORREF color) {
  return static_cast<BYTE>((color >> 8) & 0xFFU);
}
constexpr BYTE GetBValue(COLORREF color) {
  return static_cast<BYTE>((color >> 16) & 0xFFU);
}
constexpr COLORREF CLR_INVALID = 0xFFFFFFFFU;

// Message boxes: the buttons, the icon, the default button; and the answers.
constexpr UINT MB_OK = 0x0;
constexpr UINT MB_OKCANCEL = 0x1;
constexpr UINT MB_ABORTRETRYIGNORE = 0x2;
constexpr UINT MB_YESNOCANCEL = 0x3;
constexpr UINT MB_YESNO = 0x4;
constexpr UINT MB_RETRYCANCEL = 0x5;
constexpr UINT MB_TYPEMASK = 0xF;
constexpr UINT MB_ICONSTOP = 0x10;
constexpr UINT MB_ICONERROR = 0x10;
constexpr UINT MB_ICONQUESTION = 0x20;
constexpr UINT MB_ICONEXCLAMATION = 0x30;
constexpr UINT MB_ICONWARNING = 0x30;
constexpr UINT MB_ICONINFORMATION = 0x40;
constexpr UINT MB_ICONMASK = 0xF0;
constexpr UINT MB_DEFBUTTON1 = 0x0;
constexpr UINT MB_DEFBUTTON2 = 0x100;
constexpr UINT MB_DEFBUTTON3 = 0x200;
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDABORT = 3;
constexpr int IDRETRY = 4;
constexpr int IDIGNORE = 5;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

// Pixels, y down.
struct POINT {
  LONG x;
  LONG y;
};

// Pixels, y down; right and bottom lie just outside.
struct RECT {
  LONG left;
  LONG top;
  LONG right;
  LONG bottom;
};
using LPRECT = RECT*;
using LPCRECT = const RECT*;

// Makes `path` the process' current directory. FALSE when it is no directory or is out of reach.
BOOL SetCurrentDirectory(LPCTSTR path);

// Copies the current directory with its terminator into `buffer` of `size` units and returns its length
// without the terminator. When it does not fit, copies nothing and returns the size needed. 0 on failure.
DWORD GetCurrentDirectory(DWORD size, LPTSTR buffer);

#endif

static_assert(sizeof(TCHAR) == 2, "text is UTF-16: build with UNICODE and _UNICODE");

// A place in a collection, opaque to its user. The null pointer is behind the end.
struct PositionTag;
using POSITION = PositionTag*;

// Windows are passed by pointer only, and only as parents of dialogs.
class CWnd;
