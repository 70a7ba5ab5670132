// A loop over a braced list whose class nobody includes.
#include <afx.h>

int sum() {
  int total = 0;
  for (const int number : {1, 2}) {  // refused: loop over a braced list without <initializer_list>
    total += number;
  }
  return total;
}
