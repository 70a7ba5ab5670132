// The line reader of the importers: 8-bit text through an archive.
//
// LF or CR ends a line that holds at least one byte and is skipped before the first one, so blank lines and
// CR LF pairs give no empty lines. A line is cut into pieces of AnsiLine::capacity bytes; the next call goes
// on behind the piece. A zero byte ends the text of a line, not the line itself, so a line of zero bytes is
// empty text. Lines are not trimmed.
//
// The text behind the last line end is no line: a last line without an end is dropped on purpose.
//
// Faults of the file pass through as the framework's exceptions.
#pragma once

#include <afx.h>

#include "import/AnsiLine.h"

class AnsiLineReader {
 public:
  // Takes the file in blocks: what the archive gives next need not stand right behind a line.
  explicit AnsiLineReader(CArchive& archive) : m_archive(archive) {}
  AnsiLineReader(const AnsiLineReader&) = delete;
  AnsiLineReader& operator=(const AnsiLineReader&) = delete;

  // Gives the next line, whose text is good until the next call. False at the end of the file; the line is
  // then what no line end closed.
  bool next(AnsiLine& line);

 private:
  bool refill();
  bool findLineStart();
  char* findLineEnd(char* from) const;

  static constexpr int block = 4096;  // bytes

  CArchive& m_archive;
  char m_block[AnsiLine::capacity + block + 1];
  char m_piece[AnsiLine::capacity + 1] = {};  // a piece of a longer line, and a zero
  char* m_next = m_block;                     // the first byte not yet given out
  char* m_end = m_block;                      // behind the last byte read
  bool m_isPlain = false;                     // every byte of the block, see AnsiLine
};
