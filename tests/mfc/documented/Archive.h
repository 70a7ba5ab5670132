// Archives.
#pragma once

#include "documented/Files.h"

class CDocument;

class CArchive {
 public:
  enum Mode : UINT { store, load, bNoFlushOnDelete };
  ~CArchive();
  CArchive(const CArchive&) = delete;
  CArchive& operator=(const CArchive&) = delete;
  void Abort();
  CArchive(CFile*, UINT, int = 4096, void* = nullptr);
  void Close();
  void Flush();
  CFile* GetFile() const;
  UINT GetObjectSchema();
  BOOL IsBufferEmpty() const;
  BOOL IsLoading() const;
  BOOL IsStoring() const;
  CDocument* m_pDocument;
  CArchive& operator<<(BYTE);
  CArchive& operator<<(WORD);
  CArchive& operator<<(LONG);
  CArchive& operator<<(DWORD);
  CArchive& operator<<(float);
  CArchive& operator<<(double);
  CArchive& operator<<(int);
  CArchive& operator<<(short);
  CArchive& operator<<(char);
  CArchive& operator<<(wchar_t);
  CArchive& operator<<(unsigned);
  CArchive& operator<<(bool);
  CArchive& operator<<(ULONGLONG);
  CArchive& operator<<(LONGLONG);
  CArchive& operator>>(BYTE&);
  CArchive& operator>>(WORD&);
  CArchive& operator>>(int&);
  CArchive& operator>>(LONG&);
  CArchive& operator>>(DWORD&);
  CArchive& operator>>(float&);
  CArchive& operator>>(double&);
  CArchive& operator>>(short&);
  CArchive& operator>>(char&);
  CArchive& operator>>(wchar_t&);
  CArchive& operator>>(unsigned&);
  CArchive& operator>>(bool&);
  CArchive& operator>>(ULONGLONG&);
  CArchive& operator>>(LONGLONG&);
  UINT Read(void*, UINT);
  CRuntimeClass* ReadClass(const CRuntimeClass* = nullptr, UINT* = nullptr, DWORD* = nullptr);
  BOOL ReadString(CString&);
  LPTSTR ReadString(LPTSTR, UINT);
  void SerializeClass(const CRuntimeClass*);
  void SetLoadParams(UINT = 1024);
  void SetObjectSchema(UINT);
  void SetStoreParams(UINT = 2053, UINT = 128);
  void Write(const void*, INT);
  void WriteClass(const CRuntimeClass*);
  void WriteString(LPCTSTR);
  friend CArchive& operator<<(CArchive&, const CObject*);
  friend CArchive& operator>>(CArchive&, CObject*&);
  friend CArchive& operator>>(CArchive&, const CObject*&);
  template <typename BaseType, class StringTraits>
  CArchive& operator<<(const CStringT<BaseType, StringTraits>&);
  template <typename BaseType, class StringTraits>
  CArchive& operator>>(CStringT<BaseType, StringTraits>&);
  void MapObject(const CObject*);
  CObject* ReadObject(const CRuntimeClass*);
  void WriteObject(const CObject*);
};

CArchive& AFXAPI operator<<(CArchive&, const RECT&);
CArchive& AFXAPI operator<<(CArchive&, POINT);
CArchive& AFXAPI operator<<(CArchive&, SIZE);
CArchive& AFXAPI operator>>(CArchive&, RECT&);
CArchive& AFXAPI operator>>(CArchive&, POINT&);
CArchive& AFXAPI operator>>(CArchive&, SIZE&);
