# What the project needs from Debian, and how it is installed. Sourced by run.sh and test.sh.

# The page is built by node and npm, which are installed only where the commands are missing: a machine may have them
# from elsewhere, and such a node bars Debian's npm. Debian's Node 18 will do.
node_packages=""
command -v node >/dev/null || node_packages="$node_packages nodejs"
command -v npm >/dev/null || node_packages="$node_packages npm"

run_packages="$node_packages g++ cmake ninja-build zlib1g-dev libcli11-dev nlohmann-json3-dev mricron-data \
  g++-mingw-w64-x86-64-posix libz-mingw-w64-dev wine wine64 fonts-wine xvfb xauth googletest python3"
# Folders of DICOM files are read by way of dcm2niix; python3-pydicom writes those of the tests.
dicom_packages="dcm2niix python3-pydicom"
# The page's tests drive a real browser and read its pictures; poppler-utils reads the report that it prints.
page_packages="chromium chromium-driver python3-selenium python3-pil poppler-utils"
test_packages="$run_packages libgtest-dev nifti-bin python3-nibabel locales clang libclang-rt-14-dev clang-format \
  clang-tools dpkg-dev file unzip man-db mandoc zsh python3-mne python3-scipy python3-jsonschema \
  $dicom_packages $page_packages"

say() { printf '\n== %s\n' "$*"; }

# Installs the packages that are missing; needs no network when none is.
install_packages() {
  missing=""
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing="$missing $package"
  done
  [ -z "$missing" ] && return 0
  say "Installing$missing"
  export DEBIAN_FRONTEND=noninteractive
  as_root=""
  [ "$(id -u)" -eq 0 ] || as_root="sudo"
  $as_root apt-get update -q
  # shellcheck disable=SC2086
  $as_root apt-get install -y -q --no-install-recommends $missing
}
