// What a dialog exchanges with its controls.
#pragma once

#include "documented/Dialog.h"

void AFXAPI DDX_CBIndex(CDataExchange*, int, int&);
void AFXAPI DDX_CBString(CDataExchange*, int, CString&);
void AFXAPI DDX_CBStringExact(CDataExchange*, int, CString&);
void AFXAPI DDX_Check(CDataExchange*, int, int&);
void AFXAPI DDX_Control(CDataExchange*, int, CWnd&);
void AFXAPI DDX_IPAddress(CDataExchange*, int, DWORD&);
void AFXAPI DDX_LBIndex(CDataExchange*, int, int&);
void AFXAPI DDX_LBString(CDataExchange*, int, CString&);
void AFXAPI DDX_LBStringExact(CDataExchange*, int, CString&);
void AFXAPI DDX_Radio(CDataExchange*, int, int&);
void AFXAPI DDX_Scroll(CDataExchange*, int, int&);
void AFXAPI DDX_Slider(CDataExchange*, int, int&);
void AFXAPI DDX_Text(CDataExchange*, int, BYTE&);
void AFXAPI DDX_Text(CDataExchange*, int, short&);
void AFXAPI DDX_Text(CDataExchange*, int, int&);
void AFXAPI DDX_Text(CDataExchange*, int, UINT&);
void AFXAPI DDX_Text(CDataExchange*, int, long&);
void AFXAPI DDX_Text(CDataExchange*, int, DWORD&);
void AFXAPI DDX_Text(CDataExchange*, int, CString&);
void AFXAPI DDX_Text(CDataExchange*, int, float&);
void AFXAPI DDX_Text(CDataExchange*, int, double&);

void AFXAPI DDV_MaxChars(CDataExchange*, const CString&, int);
void AFXAPI DDV_MinMaxByte(CDataExchange*, BYTE, BYTE, BYTE);
void AFXAPI DDV_MinMaxDouble(CDataExchange*, const double&, double, double);
void AFXAPI DDV_MinMaxDWord(CDataExchange*, const DWORD&, DWORD, DWORD);
void AFXAPI DDV_MinMaxFloat(CDataExchange*, float, float, float);
void AFXAPI DDV_MinMaxInt(CDataExchange*, int, int, int);
void AFXAPI DDV_MinMaxLong(CDataExchange*, long, long, long);
void AFXAPI DDV_MinMaxLongLong(CDataExchange*, LONGLONG, LONGLONG, LONGLONG);
void AFXAPI DDV_MinMaxShort(CDataExchange*, short, short, short);
void AFXAPI DDV_MinMaxSlider(CDataExchange*, DWORD, DWORD, DWORD);
void AFXAPI DDV_MinMaxUInt(CDataExchange*, UINT, UINT, UINT);
void AFXAPI DDV_MinMaxULongLong(CDataExchange*, ULONGLONG, ULONGLONG, ULONGLONG);
void AFXAPI DDV_MinMaxUnsigned(CDataExchange*, unsigned, unsigned, unsigned);
