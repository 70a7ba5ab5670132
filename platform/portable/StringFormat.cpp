// CString::Format: printf for UTF-16 text. The system's own wide printf knows char16_t on no system but
// Windows, and there its texts of numbers differ between runtimes; so the specifiers are read here, numbers
// are written by snprintf, and the C locale decides about their decimal point.
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "platform/portable/AnsiText.h"
#include "platform/portable/String.h"

namespace {

using Text = std::basic_string<TCHAR>;

// No field is wider than this, whatever the format says: a garbled one must not eat the memory.
constexpr int widest = 1 << 20;

enum class Size { plain, charSize, shortSize, longSize, longLongSize, pointerSize };

struct Specifier {
  char flags[8] = {};  // each of "-+ #0" at most once
  int width = 0;
  int precision = -1;
  Size size = Size::plain;
  TCHAR type = 0;
};

// A va_list is an array on some systems and a pointer on others; in a struct it can be handed on everywhere.
struct Arguments {
  va_list list;
};

void addFlag(Specifier& specifier, char flag) {
  if (std::strchr(specifier.flags, flag) == nullptr) {
    specifier.flags[std::strlen(specifier.flags)] = flag;
  }
}

bool isOneOf(TCHAR unit, const char* set) {
  return unit != 0 && unit < 0x80 && std::strchr(set, static_cast<char>(unit)) != nullptr;
}

int readNumber(LPCTSTR& at) {
  int number = 0;
  for (; *at >= _T('0') && *at <= _T('9'); ++at) {
    number = (std::min)(number * 10 + static_cast<int>(*at - _T('0')), widest);
  }
  return number;
}

int readNumberOrStar(LPCTSTR& at, Arguments& arguments) {
  if (*at != _T('*')) {
    return readNumber(at);
  }
  ++at;
  return std::clamp(va_arg(arguments.list, int), -widest, widest);
}

bool skip(LPCTSTR& at, const char* word) {
  LPCTSTR ahead = at;
  for (; *word != 0; ++word, ++ahead) {
    if (*ahead != static_cast<TCHAR>(*word)) {
      return false;
    }
  }
  at = ahead;
  return true;
}

Size readSize(LPCTSTR& at) {
  if (skip(at, "I64") || skip(at, "ll") || skip(at, "j")) {
    return Size::longLongSize;
  }
  if (skip(at, "I32") || skip(at, "l")) {
    return Size::longSize;
  }
  if (skip(at, "hh")) {
    return Size::charSize;
  }
  if (skip(at, "h")) {
    return Size::shortSize;
  }
  return skip(at, "z") || skip(at, "t") || skip(at, "I") ? Size::pointerSize : Size::plain;
}

// Reads what follows the percent sign; `at` ends behind it.
Specifier readSpecifier(LPCTSTR& at, Arguments& arguments) {
  Specifier specifier;
  for (; isOneOf(*at, "-+ #0"); ++at) {
    addFlag(specifier, static_cast<char>(*at));
  }
  specifier.width = readNumberOrStar(at, arguments);
  if (specifier.width < 0) {
    addFlag(specifier, '-');
    specifier.width = -specifier.width;
  }
  if (*at == _T('.')) {
    ++at;
    specifier.precision = readNumberOrStar(at, arguments);
  }
  specifier.size = readSize(at);
  specifier.type = *at;
  if (*at != 0) {
    ++at;
  }
  return specifier;
}

template <class Value>
void appendNumber(Text& out, const Specifier& specifier, const char* size, Value value) {
  char format[24];
  static_cast<void>(std::snprintf(format, sizeof format, "%%%s*.*%s%c", specifier.flags, size,
                                  static_cast<char>(specifier.type)));
  char number[128];
  // The format is made of checked parts only.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  const int length =
      std::snprintf(number, sizeof number, format, specifier.width, specifier.precision, value);
  if (length < 0) {
    return;
  }
  const auto count = static_cast<std::size_t>(length);
  if (count < sizeof number) {
    out += widen(number, count);
    return;
  }
  std::string longNumber(count + 1, '\0');
  static_cast<void>(std::snprintf(longNumber.data(), longNumber.size(), format, specifier.width,
                                  specifier.precision, value));
#pragma GCC diagnostic pop
  out += widen(longNumber.data(), count);
}

void appendSigned(Text& out, const Specifier& specifier, Arguments& arguments) {
  long long value = 0;
  switch (specifier.size) {
    case Size::longLongSize:
      value = va_arg(arguments.list, long long);
      break;
    case Size::pointerSize:
      value = va_arg(arguments.list, std::ptrdiff_t);
      break;
    case Size::charSize: {
      const int given = va_arg(arguments.list, int);
      value = (given & 0x7F) - (given & 0x80);
      break;
    }
    case Size::shortSize:
      value = static_cast<short>(va_arg(arguments.list, int));
      break;
    default:  // LONG has 32 bits everywhere
      value = va_arg(arguments.list, int);
  }
  appendNumber(out, specifier, "ll", value);
}

void appendUnsigned(Text& out, const Specifier& specifier, Arguments& arguments) {
  unsigned long long value = 0;
  switch (specifier.size) {
    case Size::longLongSize:
      value = va_arg(arguments.list, unsigned long long);
      break;
    case Size::pointerSize:
      value = va_arg(arguments.list, std::size_t);
      break;
    case Size::charSize:
      value = static_cast<unsigned char>(va_arg(arguments.list, unsigned));
      break;
    case Size::shortSize:
      value = static_cast<unsigned short>(va_arg(arguments.list, unsigned));
      break;
    default:
      value = va_arg(arguments.list, unsigned);
  }
  appendNumber(out, specifier, "ll", value);
}

void appendPadded(Text& out, const Specifier& specifier, const Text& text) {
  const auto width = static_cast<std::size_t>(specifier.width);
  const std::size_t padding = width > text.size() ? width - text.size() : 0;
  const bool left = std::strchr(specifier.flags, '-') != nullptr;
  if (!left) {
    out.append(padding, _T(' '));
  }
  out += text;
  if (left) {
    out.append(padding, _T(' '));
  }
}

// The text up to its 0, or `precision` units of it when that comes first: then no 0 needs to be there.
template <class Unit>
std::size_t lengthWithin(const Unit* text, int precision) {
  std::size_t length = 0;
  while ((precision < 0 || length < static_cast<std::size_t>(precision)) && text[length] != 0) {
    ++length;
  }
  return length;
}

Text textOf(const TCHAR* text, int precision) {
  static constexpr TCHAR none[] = _T("(null)");
  text = text == nullptr ? none : text;
  return Text(text, lengthWithin(text, precision));
}

Text textOf(const char* text, int precision) {
  text = text == nullptr ? "(null)" : text;
  return widen(text, lengthWithin(text, precision));
}

// Capital letters are 8-bit text in a UTF-16 format, unless a size says otherwise.
bool isNarrow(const Specifier& specifier) {
  const bool capital = specifier.type == _T('S') || specifier.type == _T('C');
  return specifier.size == Size::shortSize || (capital && specifier.size != Size::longSize);
}

Text charText(const Specifier& specifier, Arguments& arguments) {
  const int unit = va_arg(arguments.list, int);
  if (isNarrow(specifier)) {
    const char byte = static_cast<char>(unit);
    return widen(&byte, 1);
  }
  return Text(1, static_cast<TCHAR>(unit));
}

Text stringText(const Specifier& specifier, Arguments& arguments) {
  if (isNarrow(specifier)) {
    return textOf(va_arg(arguments.list, const char*), specifier.precision);
  }
  return textOf(va_arg(arguments.list, const TCHAR*), specifier.precision);
}

Text pointerText(Arguments& arguments) {
  char digits[24];
  const auto address = reinterpret_cast<std::uintptr_t>(va_arg(arguments.list, void*));
  const int length = std::snprintf(digits, sizeof digits, "%0*llX", static_cast<int>(2 * sizeof address),
                                   static_cast<unsigned long long>(address));
  return widen(digits, static_cast<std::size_t>(length));
}

// False: no such specifier.
bool appendArgument(Text& out, const Specifier& specifier, Arguments& arguments) {
  const TCHAR type = specifier.type;
  if (isOneOf(type, "di")) {
    appendSigned(out, specifier, arguments);
  } else if (isOneOf(type, "uoxX")) {
    appendUnsigned(out, specifier, arguments);
  } else if (isOneOf(type, "eEfFgGaA")) {
    appendNumber(out, specifier, "", va_arg(arguments.list, double));
  } else if (isOneOf(type, "cC")) {
    appendPadded(out, specifier, charText(specifier, arguments));
  } else if (isOneOf(type, "sS")) {
    appendPadded(out, specifier, stringText(specifier, arguments));
  } else if (type == _T('p')) {
    appendPadded(out, specifier, pointerText(arguments));
  } else if (type == _T('%')) {
    out += _T('%');
  } else {
    return false;
  }
  return true;
}

Text formatted(LPCTSTR format, Arguments& arguments) {
  Text out;
  while (*format != 0) {
    if (*format != _T('%')) {
      out += *format++;
      continue;
    }
    const LPCTSTR start = format++;
    const Specifier specifier = readSpecifier(format, arguments);
    if (!appendArgument(out, specifier, arguments)) {
      out.append(start, format);
    }
  }
  return out;
}

}  // namespace

void CString::FormatV(LPCTSTR format, va_list arguments) {
  Arguments copy;
  va_copy(copy.list, arguments);
  Text text = formatted(format == nullptr ? _T("") : format, copy);
  va_end(copy.list);
  m_text.swap(text);
}

void CString::Format(LPCTSTR format, ...) {
  va_list arguments;
  va_start(arguments, format);
  FormatV(format, arguments);
  va_end(arguments);
}

void CString::AppendFormat(LPCTSTR format, ...) {
  CString text;
  va_list arguments;
  va_start(arguments, format);
  text.FormatV(format, arguments);
  va_end(arguments);
  *this += text;
}
