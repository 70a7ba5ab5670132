#!/bin/sh
# Installs what is missing, builds everything and runs every test: natively under the address and the
# undefined-behaviour sanitizers, the Windows build under Wine with pictures of its windows, short fuzzing, the
# packages and the style of the sources. Tests run while the next build is made; their output comes when they end.
set -eu
cd "$(dirname "$0")"
. scripts/packages.sh

install_packages $test_packages

# start NAME COMMAND...: runs a command beside others, its output in build/NAME.log.
start() {
  name=$1
  shift
  mkdir -p build
  "$@" >"build/$name.log" 2>&1 &
  job=$!
}

# finish: waits for what was started last, and shows what it said.
finish() {
  status=0
  wait "$job" || status=$?
  cat "build/$name.log"
  [ "$status" -eq 0 ] || { echo "$name failed with $status" >&2; exit 1; }
}

# On a screen of its own. Nobody manages windows there, and Wine is told so: else it waits for an answer.
windows_tests() {
  xvfb-run -a -s "-screen 0 1600x1200x24" sh -c "
    wine reg add 'HKCU\\Software\\Wine\\X11 Driver' /v Managed /d N /f &&
    ctest --test-dir build/windows --output-on-failure"
}

say "Style: layers, format"
scripts/check_layers.py
scripts/check_format.sh

say "Native build under AddressSanitizer and UndefinedBehaviorSanitizer"
cmake --preset native-asan
cmake --build build/native-asan
start native-tests ctest --test-dir build/native-asan --output-on-failure

say "Windows build, while the native tests run"
cmake --preset windows
cmake --build build/windows

say "Native tests"
finish

# Wine takes the file system's encoding from the locale.
export WINEPREFIX="$PWD/build/wine" WINEDEBUG=-all LC_ALL=C.UTF-8
start windows-tests windows_tests

say "Short fuzzing of every reader, while the Windows build is tested under Wine"
fuzz/run.sh

say "Optimised build with the benchmark, which is built but not judged here"
cmake --preset native -DDIPOLE_TESTS=OFF
cmake --build build/native

say "Windows build, tested under Wine"
finish

say "Pictures of every window, at 96 and at 144 dots per inch, into out/screens"
scripts/screens.sh

scripts/package.sh

say "All tests passed"
