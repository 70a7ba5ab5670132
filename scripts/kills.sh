#!/bin/sh
# kills.sh [KILLS [SEED]]: kills the viewer KILLS times (200) in the middle of saving a set, and looks at the
# file each time. Needs the Windows build; runs under Wine on a screen of its own.
set -eu
cd "$(dirname "$0")/.."
export WINEPREFIX="${WINEPREFIX:-$PWD/build/wine}" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml=" LC_ALL=C.UTF-8
cmake --build build/windows --target dipole_viewer_saver
xvfb-run -a -s "-screen 0 1600x1200x24" python3 -B tests/host/viewer/endurance/kill_during_save.py \
  build/windows/bin/dipole_viewer_saver.exe "${1:-200}" "${2:-1}"
