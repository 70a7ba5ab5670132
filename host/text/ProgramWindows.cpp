#include <afx.h>

#include <array>
#include <stdexcept>
#include <system_error>

#include "host/text/Program.h"

namespace host {

namespace {

constexpr std::size_t mostSaid = 262144;

struct Handle {
  HANDLE handle = nullptr;

  Handle() = default;
  ~Handle() { close(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  void close() {
    if (handle != nullptr && handle != INVALID_HANDLE_VALUE) {
      ::CloseHandle(handle);
    }
    handle = nullptr;
  }
};

// As the C runtime of a program takes its command line apart: backslashes count only before a quote.
std::wstring quoted(const std::wstring& word) {
  std::wstring result = L"\"";
  std::size_t slashes = 0;
  for (const wchar_t c : word) {
    slashes = c == L'\\' ? slashes + 1 : slashes;
    if (c == L'"') {
      result.append(slashes + 1, L'\\');
    }
    slashes = c == L'\\' ? slashes : 0;
    result += c;
  }
  return result.append(slashes, L'\\') + L'"';
}

[[noreturn]] void refuse() {
  const std::error_code error(static_cast<int>(::GetLastError()), std::system_category());
  throw std::runtime_error("cannot be started: " + error.message());
}

}  // namespace

std::filesystem::path ownFolder() {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = ::GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    if (length == 0) {
      throw std::filesystem::filesystem_error(
          "the program's own folder",
          std::error_code(static_cast<int>(::GetLastError()), std::system_category()));
    }
    if (length < name.size()) {
      name.resize(length);
      return std::filesystem::path(name).parent_path();
    }
    name.resize(name.size() * 2);  // it was cut off
  }
}

ProgramEnd runProgram(const std::filesystem::path& program,
                      const std::vector<std::filesystem::path>& arguments) {
  SECURITY_ATTRIBUTES inherited = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  Handle input;
  Handle output;
  Handle nothing;
  if (::CreatePipe(&input.handle, &output.handle, &inherited, 0) == 0 ||
      ::SetHandleInformation(input.handle, HANDLE_FLAG_INHERIT, 0) == 0) {
    refuse();
  }
  nothing.handle =
      ::CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ, &inherited, OPEN_EXISTING, 0, nullptr);
  STARTUPINFOW start = {};
  start.cb = sizeof(start);
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = nothing.handle;
  start.hStdOutput = output.handle;
  start.hStdError = output.handle;
  std::wstring line = quoted(program.native());
  for (const std::filesystem::path& argument : arguments) {
    line += L" " + quoted(argument.native());
  }
  PROCESS_INFORMATION made = {};
  if (::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr,
                       nullptr, &start, &made) == 0) {
    refuse();
  }
  Handle process;
  Handle thread;
  process.handle = made.hProcess;
  thread.handle = made.hThread;
  output.close();
  ProgramEnd result;
  std::array<char, 4096> buffer{};
  DWORD count = 0;
  while (::ReadFile(input.handle, buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr) != 0 &&
         count > 0) {
    if (result.said.size() < mostSaid) {
      result.said.append(buffer.data(), count);
    }
  }
  ::WaitForSingleObject(process.handle, INFINITE);
  DWORD code = 0;
  ::GetExitCodeProcess(process.handle, &code);
  result.code = static_cast<int>(code);
  return result;
}

}  // namespace host
