#!/bin/bash
# Installs what is missing, builds everything and runs every test: natively under the address and the
# undefined-behaviour sanitizers, the Windows build under Wine with pictures of its windows, short fuzzing, the
# packages, the style of the sources, and what the other compiler would say of them. Tests run while the next
# build is made; their output comes when they end. A table of all stages comes last; docs/testing.md explains it.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/packages.sh
. scripts/stages.sh
. scripts/wine.sh

style() {
  scripts/check_layers.py
  scripts/check_format.sh
}

build_native() {
  cmake --preset native-asan
  cmake --build build/native-asan
}

build_windows() {
  cmake --preset windows
  cmake --build build/windows
}

build_optimised() {
  cmake --preset native -DDIPOLE_TESTS=OFF
  cmake --build build/native
}

native_tests() { ctest --test-dir build/native-asan --output-on-failure --parallel 2; }

# wine_tests NAME OPTION...: the tests of the Windows build that ctest chooses by these options, with a Wine folder
# and a screen of their own, so that several can run beside each other.
wine_tests() {
  prepare_wine "$1" 96
  shift
  xvfb-run -a -s "-screen 0 1600x1200x24" sh -euc '
    wine regedit /S "$1"
    shift
    ctest --test-dir build/windows --output-on-failure "$@"' sh "$wine_settings" "$@"
}

stage install install_packages $test_packages
stage style style
stage build-native build_native
start native-tests native_tests
stage build-windows build_windows

windows='^dipole_(ui|viewer)_'
start windows-layers wine_tests wine --exclude-regex "$windows"
finish native-tests
start windows-hands wine_tests wine-hands --tests-regex "$windows" --exclude-regex _least
start windows-least wine_tests wine-least --tests-regex "$windows.*_least"
stage other-compiler scripts/check_mfc.py
stage build-optimised build_optimised
stage fuzzing fuzz/run.sh
finish windows-layers
finish windows-hands
finish windows-least
stage pictures scripts/screens.sh
stage packages scripts/package.sh

stage_table
say "All tests passed"
