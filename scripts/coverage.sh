#!/bin/sh
# Measures which lines and branches of the core the tests reach, and prints every line that they do not. Builds
# in build/coverage, unoptimised, and runs dipole_tests there; it takes a quarter of an hour, so ./test.sh
# leaves it out.
set -eu
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages $test_packages

folder=build/coverage
cmake -S . -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_CXX_FLAGS=--coverage -O0" \
  -DDIPOLE_BENCH=OFF >/dev/null
cmake --build "$folder" --target dipole_tests
find "$folder" -name '*.gcda' -delete
"$folder/tests/dipole_tests" --gtest_brief=1
scripts/coverage.py "$folder" headmodel record collection import file
