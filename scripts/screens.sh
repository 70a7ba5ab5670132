#!/bin/sh
# Takes a picture of every dialog, menu and message of the Windows build, at 96 and at 144 dots per inch, into
# out/screens/96 and out/screens/144. Needs the Windows build, Wine and Xvfb. Fails when a picture is missing or
# shows nothing.
set -eu
cd "$(dirname "$0")/.."
program=build/windows/bin/dipole_screens.exe
[ -e "$program" ] || { echo "$program is not there: build the preset windows first" >&2; exit 1; }

# The scale of the screen belongs to the whole of a Wine folder, so the pictures have one of their own.
export WINEPREFIX="$PWD/build/wine-screens" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml=" LC_ALL=C.UTF-8
# Wine does not look where Debian puts its fonts: those that stand for Windows' own. Without them others do.
mkdir -p "$WINEPREFIX/drive_c/windows/Fonts"
cp /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts" 2>/dev/null || true

wine_path() { printf 'Z:%s\\' "$1" | tr / '\\'; }

take_pictures() {
  folder="$PWD/out/screens/$1"
  rm -rf "$folder"
  mkdir -p "$folder"
  printf 'REGEDIT4\n\n[HKEY_CURRENT_USER\\Software\\Wine\\X11 Driver]\n"Managed"="N"\n
[HKEY_CURRENT_USER\\Control Panel\\Desktop]\n"LogPixels"=dword:%08x\n' "$1" >build/wine-screens.reg
  xvfb-run -a -s "-screen 0 1600x1200x24" sh -eu -c '
    wine regedit /S "$1" 2>/dev/null
    wineserver -k -w || true
    timeout 120 wine "$2" "$3" "$4"
    wineserver -k -w || true' sh \
    build/wine-screens.reg "$program" "$(wine_path "$folder")" "$(wine_path "$PWD/examples")"
  python3 -B tests/ui/screens/pictures.py "$folder" \
    manager manager-empty manager-selection manager-small manager-wide manager-without-focus \
    editor editor-empty editor-longest coordinates coordinates-longest name name-longest \
    menu-context menu-file menu-tools \
    message-clean-error message-imported message-location message-moving message-no-space \
    message-none-available message-not-opened message-number message-overwrite message-range \
    dialog-color dialog-export dialog-import
}

take_pictures 96
take_pictures 144
