// Names of the standard library that some library brings by chance, whose header nobody includes.
#include <afx.h>

#include <cmath>

int sum() {
  int total = 0;
  for (const int number : {1, 2}) {  // refused: std::initializer_list without <initializer_list>
    total += number;
  }
  std::vector<int> numbers;        // refused: std::vector without <vector>
  std::unheard_of<int> something;  // refused: stands not in tests/mfc/library.txt
  return total + static_cast<int>(std::floor(std::sqrt(2.0)));
}
