# What the scripts that show windows under Wine share. Sourced by them, from the root of the project.

# Uses a Wine folder of its own, whose screen has so many dots per inch once $wine_settings is read into it. Wine does
# not look where Debian puts its fonts, those that stand for Windows' own, and is told that nobody manages windows on
# the screen: else it waits for an answer.
prepare_wine() {
  export WINEPREFIX="$PWD/build/$1" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml=" LC_ALL=C.UTF-8
  wine_settings="build/$1.reg"
  mkdir -p "$WINEPREFIX/drive_c/windows/Fonts"
  cp /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts" 2>/dev/null || true
  printf 'REGEDIT4\n\n[HKEY_CURRENT_USER\\Software\\Wine\\X11 Driver]\n"Managed"="N"\n
[HKEY_CURRENT_USER\\Control Panel\\Desktop]\n"LogPixels"=dword:%08x\n' "$2" >"$wine_settings"
}

wine_path() { printf 'Z:%s' "$1" | tr / '\\'; }

# on_screen SETTINGS PROGRAM ARGUMENT...: runs a program on a screen of its own, for at most so many seconds.
on_screen() {
  xvfb-run -a -s "-screen 0 1600x1200x24" sh -eu -c '
    settings=$1
    seconds=$2
    shift 2
    wine regedit /S "$settings" 2>/dev/null
    wineserver -k -w || true
    timeout "$seconds" wine "$@"
    wineserver -k -w || true' sh "$@"
}
