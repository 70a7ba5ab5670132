#!/bin/sh
# Installs what is missing, builds everything and runs every test: natively under the address and the
# undefined-behaviour sanitizers, the Windows build under Wine with pictures of its windows, short fuzzing, the
# packages and the style of the sources.
set -eu
cd "$(dirname "$0")"
. scripts/packages.sh

install_packages $test_packages

say "Style: layers, format"
scripts/check_layers.py
scripts/check_format.sh

say "Native build under AddressSanitizer and UndefinedBehaviorSanitizer"
cmake --preset native-asan
cmake --build build/native-asan
ctest --test-dir build/native-asan --output-on-failure

say "Windows build, tested under Wine"
# Wine takes the file system's encoding from the locale.
export WINEPREFIX="$PWD/build/wine" WINEDEBUG=-all LC_ALL=C.UTF-8
cmake --preset windows
cmake --build build/windows
# On a screen of its own. Nobody manages windows there, and Wine is told so: else it waits for an answer.
xvfb-run -a -s "-screen 0 1600x1200x24" sh -c "
  wine reg add 'HKCU\\Software\\Wine\\X11 Driver' /v Managed /d N /f &&
  ctest --test-dir build/windows --output-on-failure"

say "Pictures of every window, at 96 and at 144 dots per inch, into out/screens"
scripts/screens.sh

say "Short fuzzing of every reader"
fuzz/run.sh

say "Optimised build with the benchmark, which is built but not judged here"
cmake --preset native -DDIPOLE_TESTS=OFF
cmake --build build/native

scripts/package.sh

say "All tests passed"
