#!/bin/sh
# Fails when a source is not formatted as .clang-format says, or a line is longer than 110 columns.
set -eu
cd "$(dirname "$0")/.."
find headmodel record collection import module platform host tool tests bench fuzz \
  \( -name '*.h' -o -name '*.cpp' \) -print0 | xargs -0 clang-format --dry-run -Werror
