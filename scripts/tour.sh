#!/bin/sh
# Takes a tour through the viewer on a screen that nobody sees: numbered pictures and index.html in out/tour. Needs
# the Windows build, Wine, Xvfb and the T1 head of the package mricron-data. Fails when a picture is missing or shows
# nothing.
set -eu
cd "$(dirname "$0")/.."
. scripts/wine.sh
program=build/windows/bin/dipole_tour.exe
[ -e "$program" ] || { echo "$program is not there: build the preset windows first" >&2; exit 1; }

folder="$PWD/out/tour"
rm -rf "$folder"
mkdir -p "$folder"
prepare_wine wine-screens 96
head=/usr/share/mricron/templates/ch2.nii.gz
patient=$(mktemp -d)
trap 'rm -rf "$patient"' EXIT
/usr/bin/python3 -B tests/support/tour_heads.py "$head" examples "$patient"
on_screen build/wine-screens.reg 300 "$program" "$(wine_path "$folder/")" "$(wine_path "$PWD/examples/")" \
  "$(wine_path "$head")" "$(wine_path "$patient/")"
# The page names the pictures that there must be.
# shellcheck disable=SC2046
python3 -B tests/ui/screens/pictures.py "$folder" saved-picture \
  $(sed -n 's/.*<img src="\([^"]*\)\.png".*/\1/p' "$folder/index.html")
echo "$folder/index.html"
