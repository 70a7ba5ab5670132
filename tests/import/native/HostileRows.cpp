#include "tests/import/HostileRows.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <string_view>

namespace {

std::u16string wide(std::string_view text) {
  return {text.begin(), text.end()};
}

std::u16string printed(const char* format, double value) {
  std::array<char, 512> text;
  const int length = std::snprintf(text.data(), text.size(), format, value);
  return wide(std::string_view(text.data(), static_cast<std::size_t>(length)));
}

template <std::size_t count>
std::u16string pick(const std::array<std::string_view, count>& choices, std::uint64_t index) {
  return wide(choices[index % count]);
}

}  // namespace

// SplitMix64.
std::uint64_t HostileRows::random() {
  m_state += 0x9E3779B97F4A7C15U;
  std::uint64_t mixed = m_state;
  mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
  mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
  return mixed ^ (mixed >> 31U);
}

std::u16string HostileRows::digits(unsigned count) {
  std::u16string text;
  for (unsigned i = 0; i < count; ++i) {
    text += digit();
  }
  return text;
}

std::u16string HostileRows::sign() {
  static constexpr std::array<std::string_view, 12> signs = {"",  "",  "",   "",   "",   "-",
                                                             "-", "+", "+-", "--", "- ", "-+"};
  return oneIn(8) ? pick(signs, random()) : pick(signs, below(8));
}

std::u16string HostileRows::blanks() {
  static constexpr std::array<std::string_view, 8> usual = {" ",    "\t", "  ", " \t ",
                                                            "\t\t", " ",  "\t", "   "};
  static constexpr std::array<std::string_view, 10> odd = {"",  "\r", "\v",   "\f", "\n",
                                                           ",", ";",  "\x1F", "",   ":"};
  return oneIn(25) ? pick(odd, random()) : pick(usual, random());
}

std::u16string HostileRows::anyCase(std::u16string text) {
  for (char16_t& unit : text) {
    if (unit >= u'a' && unit <= u'z' && oneIn(2)) {
      unit = static_cast<char16_t>(unit - u'a' + u'A');
    }
  }
  return text;
}

std::u16string HostileRows::integer() {
  static constexpr std::array<std::string_view, 20> edges = {"2147483647",
                                                             "2147483648",
                                                             "4294967295",
                                                             "4294967296",
                                                             "4294967299",
                                                             "9223372036854775806",
                                                             "9223372036854775807",
                                                             "9223372036854775808",
                                                             "9223372036854775809",
                                                             "18446744073709551615",
                                                             "18446744073709551616",
                                                             "99999999999999999999999",
                                                             "0x1F",
                                                             "08",
                                                             "0",
                                                             "00000000000000000000000000000000000007",
                                                             "1.5",
                                                             "1e3",
                                                             "",
                                                             "0x"};
  switch (below(12)) {
    case 0:
      return sign() + pick(edges, random());
    case 1:
      return sign() + digits(1 + below(24));
    default:
      return sign() + digits(1 + below(4));
  }
}

std::u16string HostileRows::plainReal() {
  std::u16string text = digits(below(6)) + u'.' + digits(below(9));
  if (oneIn(6)) {
    text += oneIn(2) ? u'e' : u'E';
    text += sign() + digits(below(3));
  }
  return text;
}

std::u16string HostileRows::special() {
  static constexpr std::array<std::string_view, 18> words = {
      "inf",   "infinity", "nan",       "nan(1)", "nan()", "nan(abc", "i",    "in",   "infi",
      "infin", "infinit",  "infinityx", "n",      "na",    "nanx",    "infx", "nan0", "inf1"};
  return anyCase(pick(words, random()));
}

std::u16string HostileRows::hexadecimal() {
  static constexpr std::string_view hexDigits = "0123456789abcdefABCDEF";
  const auto some = [&](unsigned count) {
    std::u16string text;
    for (unsigned i = 0; i < count; ++i) {
      text += static_cast<char16_t>(hexDigits[below(static_cast<unsigned>(hexDigits.size()))]);
    }
    return text;
  };
  std::u16string text = oneIn(2) ? u"0x" : u"0X";
  text += some(below(oneIn(10) ? 40 : 8));
  if (!oneIn(3)) {
    text += u'.' + some(below(oneIn(10) ? 40 : 8));
  }
  if (!oneIn(3)) {
    text += oneIn(2) ? u'p' : u'P';
    text += sign() + digits(below(5));
  }
  return text;
}

// Exactly between two neighbouring floats, or a little beside it.
std::u16string HostileRows::tie() {
  const auto bits = static_cast<std::uint32_t>(random() % 0x7F800000U);
  const auto lower = static_cast<double>(std::bit_cast<float>(bits));
  const auto upper = bits == 0x7F7FFFFFU ? 0x1p128 : static_cast<double>(std::bit_cast<float>(bits + 1));
  const double middle = lower + (upper - lower) / 2;
  if (oneIn(4)) {
    std::u16string text = printed("%a", middle);
    if (oneIn(2)) {
      const std::size_t exponent = text.find(u'p');
      text.insert(exponent, oneIn(2) ? u"0000000001" : u"000");
    }
    return text;
  }
  const bool isShort = std::fabs(std::log10(middle)) < 12;
  std::u16string text = isShort && !oneIn(4) ? printed("%.60f", middle) : printed("%.180e", middle);
  if (oneIn(2)) {
    // A tie no more: the last digit of the mantissa grows, or falls below it.
    std::size_t last = text.find(u'e');
    last = last == std::u16string::npos ? text.size() : last;
    if (oneIn(2)) {
      text.insert(last, 1, u'1');
    } else {
      const std::size_t place = text.find_last_of(u"123456789", last - 1);
      if (place != std::u16string::npos) {
        --text[place];
        text.insert(last, u"99999");
      }
    }
  }
  return text;
}

std::u16string HostileRows::denormal() {
  static constexpr std::array<std::string_view, 12> edges = {"1.4e-45",
                                                             "7e-46",
                                                             "7.0064923216240853e-46",
                                                             "7.0064923216240854e-46",
                                                             "7.00649232162408535461864791644958e-46",
                                                             "1.1754943508222875e-38",
                                                             "1.17549428e-38",
                                                             "1.17549435e-38",
                                                             "0x1p-149",
                                                             "0x1p-150",
                                                             "0x1.000001p-150",
                                                             "0x.8p-126"};
  if (oneIn(3)) {
    return pick(edges, random());
  }
  const auto bits = static_cast<std::uint32_t>(random() & 0x7FFFFFU);
  const auto value = static_cast<double>(std::bit_cast<float>(bits));
  return oneIn(2) ? printed("%.9g", value) : printed("%.40e", value);
}

std::u16string HostileRows::outOfRange() {
  static constexpr std::array<std::string_view, 22> edges = {"1e39",
                                                             "3.4028235e38",
                                                             "3.4028236e38",
                                                             "3.40282356779733661637539395458142568447e38",
                                                             "3.40282356779733661637539395458142568448e38",
                                                             "3.5e38",
                                                             "1e308",
                                                             "1e309",
                                                             "1e-400",
                                                             "1e99999999999999999999999",
                                                             "1e-99999999999999999999999",
                                                             "0e99999999999999999999999",
                                                             "0.0e2147483648",
                                                             "1e2147483648",
                                                             "1e-2147483649",
                                                             "1e4294967297",
                                                             "0x1p128",
                                                             "0x1.fffffep127",
                                                             "0x1.ffffffp127",
                                                             "0x1p99999999999999999999",
                                                             "0x1p-99999999999999999999",
                                                             "0x0p99999999999999999999"};
  switch (below(4)) {
    case 0: {
      // Many zeros that a large exponent takes back.
      const unsigned zeros = below(600);
      std::u16string text = u"0." + std::u16string(zeros, u'0') + digits(1 + below(9)) + u'e';
      return text + wide(std::to_string(zeros + below(80)));
    }
    case 1:
      return digits(1 + below(9)) + std::u16string(below(600), u'0') + u"e-" +
             wide(std::to_string(below(700)));
    case 2:
      return digits(1 + below(300)) + u'.' + digits(below(300));
    default:
      return pick(edges, random());
  }
}

std::u16string HostileRows::fragment() {
  static constexpr std::array<std::string_view, 40> pieces = {
      "1e",   "1e+",  "1e-",  "0x",    "0x.",  "0x.p1", "0xp1", "0x1p", "0x1p+", ".",
      "-",    "+",    "..",   "-.",    "1..2", "1.e5",  ".5e-", "1e5e", "1,5",   "1_0",
      "e5",   "0x.8", "0x8.", "0x1.p", "00",   "-0",    "-0.0", "+.5",  ".e1",   "1e+-5",
      "1.5f", "1d5",  "1.5L", "0b1",   "#",    "//",    "%",    "'1",   "1'000", "$5"};
  return pick(pieces, random());
}

std::u16string HostileRows::real() {
  switch (below(24)) {
    case 0:
      return sign() + special();
    case 1:
      return sign() + hexadecimal();
    case 2:
    case 3:
      return sign() + tie();
    case 4:
      return sign() + denormal();
    case 5:
      return oneIn(3) ? sign() + outOfRange() : sign() + plainReal();
    case 6:
      return fragment();
    case 7:
      return sign() + digits(1 + below(12));
    default:
      return sign() + plainReal();
  }
}

char16_t HostileRows::oddUnit() {
  static constexpr std::u16string_view units =
      u"\u00A0\u2003\u3000\u0085\u00E4\u0391\u0660\uFF11\uFF0E\uFF0D\u2028\u200B\uFEFF\u1680\u202F\u0001"
      u"\u0007"
      u"\u0008\u000E\u001A\u001B\u001C\u001F\u007F\u0080\u00FF\u0100\u0130\u0131\u0120\u012E\u0165\u016E";
  const unsigned choice = below(static_cast<unsigned>(units.size()) + 2);
  return choice < units.size() ? units[choice] : static_cast<char16_t>(0xD800 + below(0x800));
}

std::u16string HostileRows::word() {
  std::u16string text;
  const unsigned length = oneIn(200) ? below(2048) : 1 + below(10);
  for (unsigned i = 0; i < length; ++i) {
    text += oneIn(12) ? oddUnit() : static_cast<char16_t>(0x21 + below(0x5E));
  }
  return text;
}

void HostileRows::spoil(std::u16string& text) {
  static constexpr std::u16string_view usual = u"0123456789+-.eExXpP: \t\tinfatyINFANTY(),/\\{}";
  const std::size_t place = text.empty() ? 0 : random() % text.size();
  const char16_t unit = oneIn(4) ? oddUnit() : usual[below(static_cast<unsigned>(usual.size()))];
  switch (below(5)) {
    case 0:
      text.insert(place, 1, unit);
      break;
    case 1:
      if (!text.empty()) {
        text[place] = unit;
      }
      break;
    case 2:
      text.erase(place, 1 + below(3));
      break;
    case 3:
      text.erase(place);
      break;
    default:
      text.insert(place, text.substr(place / 2, below(12)));
      break;
  }
}

std::u16string HostileRows::row(const wchar_t* format) {
  std::u16string text = oneIn(3) ? blanks() : u"";
  for (const wchar_t* next = format; *next != L'\0'; ++next) {
    switch (*next) {
      case L'd':
        text += oneIn(60) ? real() : integer();
        break;
      case L'f':
        text += real();
        break;
      case L's':
        text += word();
        break;
      case L':':
        text += oneIn(40) ? (oneIn(2) ? u"" : u"::") : (oneIn(40) ? u" :" : u":");
        text += oneIn(40) ? u"" : blanks();
        break;
      case L' ':
        if ((next[1] != L':' && next[1] != L' ') || oneIn(3)) {
          text += blanks();
        }
        break;
      default:
        break;
    }
  }
  if (oneIn(4)) {
    text += blanks();
  }
  for (unsigned spoils = oneIn(3) ? 1 + below(4) : 0; spoils > 0; --spoils) {
    spoil(text);
  }
  // Overlong tokens: one digit of the row becomes many.
  if (oneIn(100)) {
    const std::size_t place = text.find_first_of(u"0123456789");
    if (place != std::u16string::npos) {
      text.insert(place, digits(below(2048)));
    }
  }
  if (text.size() > 2048) {
    text.resize(2048);
  }
  return text;
}
