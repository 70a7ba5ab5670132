#!/bin/sh
# Builds the packages, a .deb for Linux and a zip for Windows, into out/packages, and tries both where nothing of
# this repository is in sight: the tool, and the embedding example built and run from each package alone.
set -eu
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/wine.sh
repository=$PWD

say "Building the packages"
cmake --preset native -DDIPOLE_TESTS=OFF
cmake --build build/native --target packaged
cmake --preset windows
cmake --build build/windows --target packaged
rm -rf out/packages
for build in native windows; do
  cpack --config build/$build/CPackConfig.cmake -B build/$build/packages \
    -D CPACK_OUTPUT_FILE_PREFIX="$repository/out/packages"
done

prepare_wine wine-packages 96
wine_settings=$(wine_path "$repository/$wine_settings")
clean=$(mktemp -d)
trap 'rm -rf "$clean"' EXIT
dpkg-deb -x out/packages/*.deb "$clean/linux"
unzip -q out/packages/*.zip -d "$clean/zip"
mv "$clean"/zip/* "$clean/windows"
cd "$clean"

say "From the Debian package: the tool"
tool=linux/usr/bin/dipole
examples=linux/usr/share/doc/dipole/examples
"$tool" --version
"$tool" draw "$examples/auditory.dip" --mri /usr/share/mricron/templates/ch2.nii.gz \
  --fiducials "$examples/ch2.fiducials" --yes -o auditory.png
head -c 8 auditory.png | grep -q PNG || { echo "auditory.png is no picture" >&2; exit 1; }
for file in man/man1/dipole.1 bash-completion/completions/dipole zsh/vendor-completions/_dipole dipole/page.html \
  dipole/page-licenses.txt; do
  [ -s "linux/usr/share/$file" ] || { echo "$file is missing in the Debian package" >&2; exit 1; }
done
MANWIDTH=80 man --warnings=w -P cat -l linux/usr/share/man/man1/dipole.1 2>warnings | grep -q "^SYNOPSIS"
[ ! -s warnings ] || { cat warnings >&2; exit 1; }

# build_example NAME PACKAGE OPTION...: builds the example of an unpacked package into NAME.
build_example() {
  name=$1 package=$2
  shift 2
  cmake -S "$package/examples/embed" -B "$name" -G Ninja -DCMAKE_BUILD_TYPE=Release "$@" >"$name.log"
  cmake --build "$name"
  if grep -rqF "$repository" "$name" --include=CMakeCache.txt --include=build.ninja; then
    echo "The example found the repository instead of its package." >&2
    exit 1
  fi
}

say "From the Debian package: the embedding example"
build_example core linux/usr/share/doc/dipole -Ddipole_ROOT="$clean/linux/usr"
core/core core.txt "$examples/auditory.dip" "$examples/median.txt"
"$tool" convert --yes "$examples/auditory.dip" "$examples/median.txt" -o tool.txt
cmp core.txt tool.txt

say "In the zip: programs and libraries need nothing but each other and Windows"
for file in windows/bin/*; do
  x86_64-w64-mingw32-objdump -p "$file" | sed -n 's/.*DLL Name: //p'
done | sort -u >needed
while read -r library; do
  case $library in
    lib* | zlib* | platform.dll | dipole.dll)  # the compiler's, Debian's and this project's
      [ -e "windows/bin/$library" ] || { echo "$library is missing in the zip" >&2; exit 1; } ;;
  esac
done <needed
ls windows/bin
[ -s windows/share/dipole/page.html ] || { echo "share/dipole/page.html is missing in the zip" >&2; exit 1; }

say "From the zip: the tool, alone in a folder, under Wine"
mkdir alone
cp windows/bin/dipole.exe alone
wine alone/dipole.exe list --yes --csv windows/examples/auditory.dip >windows.csv 2>/dev/null
"$tool" list --yes --csv windows/examples/auditory.dip >linux.csv
cmp windows.csv linux.csv

say "From the zip: the embedding example, under Wine"
build_example host windows -Ddipole_ROOT="$clean/windows" \
  -DCMAKE_SYSTEM_NAME=Windows -DCMAKE_CXX_COMPILER=x86_64-w64-mingw32-g++-posix
cp windows/examples/auditory.dip .
on_a_screen() {
  xvfb-run -a -s "-screen 0 1600x1200x24" sh -eu -c '
    wine regedit /S "$1"
    shift
    timeout "$@"' sh "$wine_settings" "$@"
}
on_a_screen 120 wine host/host.exe auditory.dip host.dipset --once
# What the host saved is what the tool reads from the same file.
"$tool" list --yes --csv host.dipset >saved.csv
"$tool" list --yes --csv auditory.dip >read.csv
cmp saved.csv read.csv
cat saved.csv

say "From the zip: the viewer, which measures itself"
on_a_screen 180 wine windows/bin/viewer.exe --benchmark report.txt
cat report.txt
grep -q "^first picture of a head" report.txt

cd "$repository"
say "Both packages work on their own:"
ls -l out/packages
