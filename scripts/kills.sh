#!/bin/sh
# kills.sh [KILLS [SEED]]: kills the viewer KILLS times (200) in the middle of saving a set, and looks at the
# file each time. Needs the Windows build; runs under Wine on a screen of its own.
set -eu
cd "$(dirname "$0")/.."
. scripts/wine.sh
prepare_wine wine-kills 96
cmake --build build/windows --target dipole_viewer_saver
xvfb-run -a -s "-screen 0 1600x1200x24" sh -eu -c '
  wine regedit /S "$1"
  shift
  python3 -B tests/host/viewer/endurance/kill_during_save.py build/windows/bin/dipole_viewer_saver.exe "$@"
  ' sh "$wine_settings" "${1:-200}" "${2:-1}"
