#include "tests/support/FailingOs.h"

#include <algorithm>

namespace {

UINT limited(UINT count, int most) {
  return most < 0 ? count : (std::min)(count, static_cast<UINT>(most));
}

}  // namespace

FailingOs::FailingOs() : m_previous(replaceOs(this)) {}

FailingOs::FailingOs(Call kind, int nth, int cause, Lasting lasting) : FailingOs() {
  failAt(kind, nth, cause, lasting);
}

FailingOs::~FailingOs() {
  replaceOs(m_previous);
}

void FailingOs::failAt(Call kind, int nth, int cause, Lasting lasting) {
  m_kind = kind;
  m_nth = nth;
  m_cause = cause;
  m_lasting = lasting;
  calls = 0;
  failed = false;
}

bool FailingOs::mustFail(Call kind) {
  if (m_kind != kind && m_kind != Call::any && m_kind != Call::none) {
    return false;
  }
  ++calls;
  const bool fails = m_kind != Call::none && (m_lasting == Lasting::once ? calls == m_nth : calls >= m_nth);
  failed = failed || fails;
  return fails;
}

Os::Error FailingOs::open(LPCTSTR path, UINT flags, Handle& opened) {
  Error error = next(Call::open);
  if (!error) {
    error = realOs().open(path, flags, opened);
    openFiles += error ? 0 : 1;
  }
  return error;
}

Os::Error FailingOs::read(Handle file, void* buffer, UINT count, UINT& got) {
  if (mustFail(Call::read)) {
    got = 0;
    return error();
  }
  return realOs().read(file, buffer, limited(count, maxRead), got);
}

Os::Error FailingOs::write(Handle file, const void* buffer, UINT count, UINT& put) {
  if (mustFail(Call::write)) {
    put = 0;
    return error();
  }
  return realOs().write(file, buffer, limited(count, maxWrite), put);
}

Os::Error FailingOs::seek(Handle file, LONGLONG offset, UINT from, ULONGLONG& position) {
  const Error error = next(Call::seek);
  return error ? error : realOs().seek(file, offset, from, position);
}

Os::Error FailingOs::length(Handle file, ULONGLONG& bytes) {
  const Error error = next(Call::length);
  return error ? error : realOs().length(file, bytes);
}

Os::Error FailingOs::setLength(Handle file, ULONGLONG bytes) {
  const Error error = next(Call::setLength);
  return error ? error : realOs().setLength(file, bytes);
}

Os::Error FailingOs::flush(Handle file) {
  const Error error = next(Call::flush);
  return error ? error : realOs().flush(file);
}

Os::Error FailingOs::close(Handle file) {
  const Error error = next(Call::close);
  const Error real = realOs().close(file);
  --openFiles;
  return error ? error : real;
}

Os::Error FailingOs::remove(LPCTSTR path) {
  const Error error = next(Call::remove);
  return error ? error : realOs().remove(path);
}

Os::Error FailingOs::rename(LPCTSTR before, LPCTSTR after) {
  const Error error = next(Call::rename);
  return error ? error : realOs().rename(before, after);
}

Os::Error FailingOs::list(LPCTSTR folder, std::vector<Entry>& entries) {
  const Error error = next(Call::list);
  return error ? error : realOs().list(folder, entries);
}

Os::Error FailingOs::status(LPCTSTR path, Entry& entry) {
  const Error error = next(Call::status);
  return error ? error : realOs().status(path, entry);
}

Os::Error FailingOs::fullPath(LPCTSTR path, CString& full) {
  const Error error = next(Call::fullPath);
  return error ? error : realOs().fullPath(path, full);
}

Os::Error FailingOs::currentFolder(CString& path) {
  const Error error = next(Call::currentFolder);
  return error ? error : realOs().currentFolder(path);
}

Os::Error FailingOs::setCurrentFolder(LPCTSTR path) {
  const Error error = next(Call::setCurrentFolder);
  return error ? error : realOs().setCurrentFolder(path);
}
