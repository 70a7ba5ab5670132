#!/bin/sh
# Installs what is missing, builds the command line tool and the viewer, and shows both: the tool draws the examples
# on a T1 head, writes one as a page for browsers and all as tables, into out/; the viewer opens on one of them, or,
# where there is no display, takes a tour that leaves its pictures in out/tour/.
set -eu
cd "$(dirname "$0")"
. scripts/packages.sh
. scripts/wine.sh

install_packages $run_packages

say "Building the command line tool, and the page"
cmake --preset native -DDIPOLE_TESTS=OFF -DDIPOLE_BENCH=OFF
cmake --build build/native --target dipole_tool page
dipole=build/native/bin/dipole

head=/usr/share/mricron/templates/ch2.nii.gz
mkdir -p out

draw() {
  picture=out/$1.png
  shift
  "$dipole" draw "$@" --mri "$head" --fiducials examples/ch2.fiducials --yes --repair all --force -o "$picture"
  pictures="$pictures $picture"
}

say "What the examples hold"
"$dipole" info --yes --repair all examples/auditory.dip examples/spikes.dip examples/moving.dip examples/median.txt

say "Drawing the examples on the T1 head of the package mricron-data"
pictures=""
draw auditory examples/auditory.dip
draw spikes examples/spikes.dip
draw spikes3d examples/spikes.dip --3d --view left
draw moving examples/moving.dip
draw median examples/median.txt

say "Making a page for browsers"
page=out/spikes.html
"$dipole" page examples/spikes.dip --mri "$head" --fiducials examples/ch2.fiducials --atlas aal --mni identity \
  --mni-space colin27 --yes --repair all --force -o "$page"

say "Writing the examples as tables"
for file in auditory.dip spikes.dip moving.dip median.txt; do
  table=out/${file%.*}.csv
  "$dipole" convert --yes --repair all --force "examples/$file" -o "$table"
  pictures="$pictures $table"
done

say "The page, pictures and tables:"
for picture in "$page" $pictures; do
  printf '%s/%s\n' "$PWD" "$picture"
done

say "Building the viewer"
cmake --preset windows
if [ -n "${DISPLAY:-}" ]; then
  cmake --build build/windows --target viewer
  say "Opening the viewer on examples/spikes.dip; close it to end"
  prepare_wine wine-viewer 96
  wine build/windows/bin/viewer.exe "$(wine_path "$head")" \
    --fiducials "$(wine_path "$PWD/examples/ch2.fiducials")" "$(wine_path "$PWD/examples/spikes.dip")"
else
  cmake --build build/windows --target viewer dipole_tour
  say "There is no display: a tour through the viewer instead"
  scripts/tour.sh
fi
