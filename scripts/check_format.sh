#!/bin/sh
# Fails when a source is not formatted as .clang-format says, when a line is longer than 110 columns, or where
# [[nodiscard]] stands: no results are marked so here, and clang-tidy has no check that keeps it out.
set -eu
export LC_ALL=C.UTF-8  # columns are characters, not bytes
cd "$(dirname "$0")/.."
sources() {
  find headmodel record collection import file ui module platform host tool tests bench fuzz examples \
    \( -name '*.h' -o -name '*.cpp' \) -print0
}
sources | xargs -0 clang-format --dry-run -Werror
if sources | xargs -0 grep -nE '^.{111,}' | cut -c1-140 | grep .; then
  echo "The lines above are longer than 110 columns." >&2
  exit 1
fi
if sources | xargs -0 grep -n '\[\[nodiscard\]\]'; then
  echo "The lines above mark a result that must not be dropped; nothing else here does." >&2
  exit 1
fi
