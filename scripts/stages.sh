# Stages of a long script, one after the other or side by side: what each took, on the clock and of the processors,
# and which one failed. Sourced by bash scripts that begin in the root of the project; needs `say` of packages.sh.

stage_folder=$PWD/build/stages
stage_names=()
rm -rf "$stage_folder"
mkdir -p "$stage_folder"
trap 'jobs -p | xargs -r kill 2>/dev/null || true' EXIT  # what still runs beside a stage that failed

# The command of a stage, with a note of its times whenever it ends: seconds of processor time of all that it ran
# and waited for, then of the clock.
timed() {
  set -euo pipefail
  begin=$EPOCHREALTIME
  trap 'times >"$stage_folder/$name.times"; echo "$begin $EPOCHREALTIME" >>"$stage_folder/$name.times"' EXIT
  "$@"
}

# stage NAME COMMAND...: runs it and ends the script when it fails.
stage() {
  name=$1
  shift
  stage_names+=("$name")
  say "$name"
  (timed "$@") &
  wait_for "$name" $!
}

# start NAME COMMAND...: runs it beside what follows, its output in build/stages/NAME.log.
start() {
  name=$1
  shift
  stage_names+=("$name")
  (timed "$@") >"$stage_folder/$name.log" 2>&1 &
  echo $! >"$stage_folder/$name.job"
}

# finish NAME: waits for what was started by this name, and shows what it said.
finish() {
  say "$1"
  wait_for "$1" "$(cat "$stage_folder/$1.job")"
}

wait_for() {
  local status=0
  wait "$2" || status=$?
  [ ! -e "$stage_folder/$1.log" ] || cat "$stage_folder/$1.log"
  if [ "$status" -ne 0 ]; then
    stage_table
    echo "The stage $1 failed with $status." >&2
    exit 1
  fi
}

stage_table() {
  say "What each stage took, in seconds"
  python3 - "$stage_folder" "${stage_names[@]}" <<'PYTHON'
import os, re, sys
folder, *names = sys.argv[1:]
rows = []
for name in names:
    if not os.path.exists(f"{folder}/{name}.times"):
        continue  # it has not ended
    *processor, clock = open(f"{folder}/{name}.times").read().splitlines()
    spent = sum(int(m) * 60 + float(s) for line in processor for m, s in re.findall(r"(\d+)m([\d.]+)s", line))
    begin, end = map(float, clock.split())
    rows.append((name, begin, end, spent))
print(f"{'':16}{'clock':>8}{'processor':>11}")
for name, begin, end, spent in rows:
    print(f"{name:16}{end - begin:8.0f}{spent:11.0f}")
print(f"{'all':16}{max(r[2] for r in rows) - min(r[1] for r in rows):8.0f}{sum(r[3] for r in rows):11.0f}")
PYTHON
}
