// What the classes and functions of an extension library are exported and imported with: the library defines
// _AFXEXT while it is built, and whoever uses it does not. With PLATFORM_UNMARKED_CLASSES they carry no mark:
// such code may be linked to the library, and as well to what the library is made of.
//
// Elsewhere than on Windows a library exports what it holds, and the marks say nothing.
#pragma once

#ifdef _WIN32
#define AFX_CLASS_EXPORT __declspec(dllexport)
#define AFX_CLASS_IMPORT __declspec(dllimport)
#define AFX_API_EXPORT __declspec(dllexport)
#define AFX_API_IMPORT __declspec(dllimport)
#else
#define AFX_CLASS_EXPORT
#define AFX_CLASS_IMPORT
#define AFX_API_EXPORT
#define AFX_API_IMPORT
#endif

#ifdef PLATFORM_UNMARKED_CLASSES
#define AFX_EXT_CLASS
#define AFX_EXT_API
#elif defined _AFXEXT
#define AFX_EXT_CLASS AFX_CLASS_EXPORT
#define AFX_EXT_API AFX_API_EXPORT
#else
#define AFX_EXT_CLASS AFX_CLASS_IMPORT
#define AFX_EXT_API AFX_API_IMPORT
#endif
