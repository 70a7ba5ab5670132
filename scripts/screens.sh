#!/bin/sh
# Takes a picture of every dialog, menu and message of the Windows build, at 96 and at 144 dots per inch, into
# out/screens/96 and out/screens/144; and a film of a pointer that rests on the list (resting-*), in which nothing
# may happen. Needs the Windows build, Wine and Xvfb. Fails when a picture is missing or
# shows nothing.
set -eu
cd "$(dirname "$0")/.."
. scripts/wine.sh
program=build/windows/bin/dipole_screens.exe
[ -e "$program" ] || { echo "$program is not there: build the preset windows first" >&2; exit 1; }

take_pictures() {
  folder="$PWD/out/screens/$1"
  rm -rf "$folder"
  mkdir -p "$folder"
  # The scale of the screen belongs to the whole of a Wine folder, so the pictures have one of their own.
  prepare_wine wine-screens "$1"
  on_screen build/wine-screens.reg 120 "$program" "$(wine_path "$folder/")" "$(wine_path "$PWD/examples/")"
  python3 -B tests/ui/screens/pictures.py "$folder" \
    manager manager-empty manager-selection manager-small manager-wide manager-without-focus \
    editor editor-beside editor-empty editor-focus editor-longest coordinates coordinates-longest name name-longest \
    menu-context menu-file menu-tools \
    message-clean-error message-imported message-location message-moving message-no-space \
    message-none-available message-not-opened message-number message-overwrite message-range \
    dialog-color dialog-export dialog-import \
    resting-opened resting-opened-later=resting-opened resting-chosen resting-chosen-later=resting-chosen \
    resting-typing resting-typing-later
}

take_pictures 96
take_pictures 144
