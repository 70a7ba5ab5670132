// Random rows of text for the row scanner: from well-made ones to hostile ones.
#pragma once

#include <cstdint>
#include <string>

class HostileRows {
 public:
  explicit HostileRows(std::uint64_t seed) : m_state(seed) {}

  // A row that was made for a format of scanf and then spoilt more or less.
  std::u16string row(const wchar_t* format);

 private:
  std::uint64_t random();
  unsigned below(unsigned limit) { return static_cast<unsigned>(random() % limit); }
  bool oneIn(unsigned chances) { return below(chances) == 0; }
  char16_t digit() { return static_cast<char16_t>(u'0' + below(10)); }
  std::u16string digits(unsigned count);
  std::u16string sign();
  std::u16string blanks();
  std::u16string integer();
  std::u16string real();
  std::u16string plainReal();
  std::u16string special();
  std::u16string hexadecimal();
  std::u16string tie();
  std::u16string denormal();
  std::u16string outOfRange();
  std::u16string fragment();
  std::u16string word();
  std::u16string anyCase(std::u16string text);
  char16_t oddUnit();
  void spoil(std::u16string& text);

  std::uint64_t m_state;
};
