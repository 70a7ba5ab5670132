// What the MFC names promise while one of these lives, whatever the environment asks for.
#pragma once

#include "platform/LeastPromise.h"

class Promising {
 public:
  enum Amount { least, more };  // of MFC; of this project's own

  explicit Promising(Amount amount) : m_before(promiseLeast(amount == least)) {}
  ~Promising() { promiseLeast(m_before); }
  Promising(const Promising&) = delete;
  Promising& operator=(const Promising&) = delete;

 private:
  bool m_before;
};
