// How long a fault that a test makes lasts.
#pragma once

enum class Lasting {
  once,       // the next call works again
  fromThenOn  // every later call fails too
};
