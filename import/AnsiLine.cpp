#include "import/AnsiLine.h"

#include <algorithm>

namespace {

// The archive's own byte operator is its one inline path, but it reports the end of the file by an exception.
int readBytes(CArchive& archive, char (&buffer)[ansiLineCapacity], bool& complete) {
  int length = 0;
  complete = true;
  try {
    while (length < ansiLineCapacity) {
      BYTE byte;
      archive >> byte;
      if (byte != '\n' && byte != '\r') {
        buffer[length++] = static_cast<char>(byte);
      } else if (length > 0) {
        break;
      }
    }
  } catch (CArchiveException* exception) {
    if (exception->m_cause != CArchiveException::endOfFile) {
      throw;
    }
    exception->Delete();
    complete = false;
  }
  return length;
}

}  // namespace

bool readAnsiLine(CArchive& archive, CString& line) {
  char buffer[ansiLineCapacity];
  bool complete;
  const int length = readBytes(archive, buffer, complete);
  line = CString(buffer, static_cast<int>(std::find(buffer, buffer + length, '\0') - buffer));
  return complete;
}
