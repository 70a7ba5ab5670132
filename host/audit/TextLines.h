// The text of a dipole file as the module's import cuts it into lines, and its encoding.
#pragma once

#include <string>
#include <string_view>

#include "module/dipole.h"

namespace host {

// What bytes a text holds, by one look at each.
struct TextBytes {
  explicit TextBytes(std::string_view text);

  bool areAscii;
  bool haveZeros;
  bool haveReturns;  // CR
};

// What a text is encoded in, by its first bytes and by whether it is valid.
class TextEncoding {
 public:
  explicit TextEncoding(std::string_view bytes);

  // The text without a byte order mark: ASCII or UTF-8, or, when it is neither, the bytes as they are. Views
  // the bytes or, of UTF-16, this object.
  std::string_view text() const { return isUtf16() ? std::string_view(m_converted) : m_text; }

  const TextBytes& bytes() const { return m_bytes; }  // of text()
  bool hasMark() const { return m_hasMark; }
  bool isUtf16() const { return m_isUtf16; }
  bool isUtf8() const { return m_isUtf8; }  // beyond ASCII

  // A part of text(): by the system's ANSI code page, as the module reads it, or as the file means it.
  static CString asAnsi(std::string_view part);
  CString asMeant(std::string_view part) const;

 private:
  std::string m_converted;
  std::string_view m_text;
  TextBytes m_bytes;
  bool m_hasMark = false;
  bool m_isUtf16 = false;
  bool m_isUtf8 = false;
};

struct TextLine {
  std::string_view text;
  int number = 0;        // from 1, as an editor counts
  bool isClosed = true;  // by a line end; the module drops a last line without one
};

// Hands out the lines: LF or CR ends one that holds at least a byte, so there are no empty ones; 2048 bytes
// without a line end come as a line; a zero byte ends the text of a line early.
class TextLines {
 public:
  explicit TextLines(const TextEncoding& encoding);

  bool next(TextLine& line);

 private:
  void skipLineEnds();

  const char* m_next;
  const char* m_end;
  int m_number = 1;
  TextBytes m_bytes;
};

}  // namespace host
