#!/bin/sh
# Installs what is missing, builds the command line tool, draws the examples on a T1 head into out/, and writes
# them there as tables.
set -eu
cd "$(dirname "$0")"
. scripts/packages.sh

install_packages $run_packages

say "Building"
cmake --preset native -DDIPOLE_TESTS=OFF -DDIPOLE_BENCH=OFF
cmake --build build/native --target dipole_tool
dipole=build/native/bin/dipole

head=/usr/share/mricron/templates/ch2.nii.gz
mkdir -p out

draw() {
  picture=out/$1.png
  shift
  "$dipole" draw "$@" --mri "$head" --fiducials examples/ch2.fiducials --yes -o "$picture"
  pictures="$pictures $picture"
}

say "What the examples hold"
"$dipole" info --yes examples/auditory.dip examples/spikes.dip examples/moving.dip examples/median.txt

say "Drawing the examples on the T1 head of the package mricron-data"
pictures=""
draw auditory examples/auditory.dip
draw spikes examples/spikes.dip
draw moving examples/moving.dip
draw median examples/median.txt

say "Writing the examples as tables"
for file in auditory.dip spikes.dip moving.dip median.txt; do
  table=out/${file%.*}.csv
  "$dipole" convert --yes "examples/$file" "$table"
  pictures="$pictures $table"
done

say "Done. The pictures and tables:"
for picture in $pictures; do
  printf '%s/%s\n' "$PWD" "$picture"
done
