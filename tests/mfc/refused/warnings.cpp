// One line for each warning at /W4 that is looked for, and beside it what must pass.
#include <afx.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <limits>
#include <type_traits>

// Numbers and bool.
void mixed(bool flag, bool other, int number, unsigned bits, long long wide, double real) {
  flag = flag == number;   // refused: C4805
  flag = number != flag;   // refused: C4805
  number = flag + number;  // refused: C4805
  real = real * flag;      // refused: C4805
  bits = bits & flag;      // refused: C4805
  wide = wide ^ flag;      // refused: C4805
  bits |= flag;            // refused: C4805
  flag &= number;          // refused: C4805
  flag = flag < other;     // refused: C4804
  number = flag + other;   // refused: C4804
  number = -flag;          // refused: C4804
  flag = flag == other && (flag & other);
  flag |= other;
  number = flag ? number : 1;
}

template <typename Number>
bool mixedWhenBoolean(Number number) {
  return number == 2;  // refused: C4805
}
template bool mixedWhenBoolean(bool);
template bool mixedWhenBoolean(int);

// Code that nobody reaches.
template <typename Number>
int behind(Number number) {
  if constexpr (std::is_same_v<Number, int>) {  // refused: C4702
    return number;
  }
  return 2;
}
template int behind(int);
template int behind(char);

template <typename Number>
int instead(Number number) {
  if constexpr (std::is_same_v<Number, int>) {
    return number;
  } else {
    return 2;
  }
}
template int instead(int);
template int instead(char);

int unreachable(int number) {
  return number;
  number = 3;  // refused: code will never be executed
}

enum class Kind { one, two };

int ofKind(Kind kind) {  // refused: C4715
  switch (kind) {
    case Kind::one:
      return 1;
    case Kind::two:
      return 2;
  }
}

int ofKindOrNone(Kind kind) {
  switch (kind) {
    case Kind::one:
      return 1;
    case Kind::two:
      return 2;
  }
  return 0;
}

// Conditions.
template <typename Number>
int decided(Number number) {
  if (std::is_same_v<Number, int>) {  // refused: C4127
    return 1;
  }
  while (true) {
    if (number > 1 && sizeof(number) > 2) {
      return 2;
    }
  }
}
template int decided(int);

int decidedBySize() {
  return sizeof(int) == 4 ? 1 : 2;  // refused: C4127
}

int assigned(int first, int second) {
  if ((first = second)) {  // refused: C4706
    return 1;
  }
  while (first > 0 && (first = second)) {  // refused: C4706
    --second;
  }
  while ((first = second) > 0) {
    --second;
  }
  return first;
}

// Numbers that change on their way.
void changed(unsigned count, int number, long long wide, double real) {
  count = -count;                          // refused: C4146
  float third = 0.333;                     // refused: C4305
  unsigned long long shift = 1U << count;  // refused: C4334
  number = real;                           // refused: implicit conversion
  number = wide;                           // refused: implicit conversion loses
  count = number;                          // refused: implicit conversion changes signedness
  bool less = number < count;              // refused: comparison of integers of different signs
  third = -0.333F;
  shift = 1ULL << count;
  static_cast<void>(third);
  static_cast<void>(shift);
  static_cast<void>(less);
}

void reckoned(short narrow, unsigned char byte, int number, unsigned count, std::size_t size, float real) {
  narrow += number;     // refused: C4244
  byte |= number;       // refused: C4244
  count += size;        // refused: C4244
  narrow = narrow + 1;  // refused: C4244
  real = number;        // refused: may lose precision
  real += 0.1;          // refused: loses floating-point precision
  narrow += narrow;
  byte |= 1;
  size += count;
  narrow = static_cast<short>(narrow + byte);
  static_cast<void>(real);
}

// Names.
int hides(int number) {
  for (int i = 0; i < number; ++i) {
    int number = i;  // refused: declaration shadows
    ++number;
  }
  return number;
}

int unnamed(int number) {  // refused: unused parameter
  return 1;
}

// The library.
int library(char* text) {
  int number = std::min(1, 2);                // refused: macros of these names
  number += std::numeric_limits<int>::max();  // refused: macros of these names
  number += (std::numeric_limits<int>::max)() - (std::min)(1, 2);
  number += __builtin_popcount(3U);          // refused: extension of another compiler
  return number + std::sscanf(text, "%*d");  // refused: C4996
}
