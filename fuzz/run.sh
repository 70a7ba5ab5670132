#!/bin/bash
# Builds the fuzzers and runs each of them.
#
#   fuzz/run.sh               4 seconds per reader
#   fuzz/run.sh 600           600 seconds per reader
#   fuzz/run.sh runs=10000000 so many inputs per reader
#
# Found inputs gather in build/native-asan/corpus; an input that breaks a reader is left in
# build/native-asan/crashes, and the script ends with 1. To look at it again:
#   build/native-asan/fuzz/ctf_fuzzer build/native-asan/crashes/ctf-...
set -euo pipefail
cd "$(dirname "$0")/.."

limit=${1:-4}
case $limit in
  runs=*) limit=-$limit ;;
  *[!0-9]*) echo "usage: fuzz/run.sh [SECONDS | runs=COUNT]" >&2; exit 2 ;;
  *) limit=-max_total_time=$limit ;;
esac

readers=(ctf msi row line archive nifti ctfmri mgh fif atlas audit table neuromag)
folder=$PWD/build/native-asan
cmake --preset native-asan >/dev/null
cmake --build "$folder" --target "${readers[@]/%/_fuzzer}"
python3 fuzz/seeds.py "$folder/seeds"
mkdir -p "$folder/crashes"

failed=()
for reader in "${readers[@]}"; do
  echo "Fuzzing: $reader"
  mkdir -p "$folder/corpus/$reader"
  options=("$limit" -print_final_stats=1 -verbosity=0 -rss_limit_mb=4096
    "-artifact_prefix=$folder/crashes/$reader-")
  if [ -e "fuzz/$reader.dict" ]; then
    options+=("-dict=$PWD/fuzz/$reader.dict")
  fi
  # Absolute paths: an import changes the current directory.
  if ! "$folder/fuzz/${reader}_fuzzer" "${options[@]}" "$folder/corpus/$reader" "$folder/seeds/$reader" \
      >"$folder/$reader.log" 2>&1; then
    failed+=("$reader")
    grep -E 'does not hold|ERROR|SUMMARY|runtime error' "$folder/$reader.log" | head -n 5 || true
  fi
  grep -E 'number_of_executed_units|average_exec_per_sec' "$folder/$reader.log" || true
done
if [ ${#failed[@]} -ne 0 ]; then
  echo "Broken: ${failed[*]}. See $folder/*.log and $folder/crashes." >&2
  exit 1
fi
