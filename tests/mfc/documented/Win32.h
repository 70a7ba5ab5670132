// What the system's own headers give, and the conventions that MFC adds.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <cstdarg>
#include <cstddef>
#include <tchar.h>
#include <windows.h>

#define AFXAPI __stdcall
#define AFX_CDECL __cdecl
#define afx_msg

// A library of classes exports what a program that uses it imports.
#define AFX_CLASS_EXPORT __declspec(dllexport)
#define AFX_CLASS_IMPORT __declspec(dllimport)
#ifdef _AFXEXT
#define AFX_EXT_CLASS AFX_CLASS_EXPORT
#else
#define AFX_EXT_CLASS AFX_CLASS_IMPORT
#endif

typedef struct __POSITION* POSITION;
