#!/bin/sh
# Runs clang-tidy over every source, or over those that are named. It takes a quarter of an hour, so ./test.sh
# leaves it out.
set -eu
cd "$(dirname "$0")/.."
[ -e build/native/compile_commands.json ] || cmake --preset native >/dev/null
if [ $# -gt 0 ]; then
  printf '%s\0' "$@"
else
  find headmodel record collection import file platform/portable platform/native host tool tests bench \
    -name '*.cpp' -print0
fi | xargs -0 -n 1 -P "$(nproc)" clang-tidy -p build/native --quiet \
  --extra-arg=-Wno-unknown-warning-option
