#!/usr/bin/env bash
# Times two builds of ravelinth on the same warm tree, alternating them round by round so that
# whatever else the machine does falls on both alike, and prints the medians and their ratio.
# Usage: bench/compare-builds.sh BEFORE AFTER [--tree DIR] [--rounds N] [-- SCAN OPTIONS...]
# Defaults: the million-file tree of scan-bench.sh, 9 rounds, "--min-size-mb 100 --hidden".
set -euo pipefail
[[ $# -ge 2 ]] || { sed -n '2,5s/^# \{0,1\}//p' "$0"; exit 2; }
before=$1 after=$2
shift 2
tree=${BENCH_TREES:-/work/bench-trees}/tree-1000000-60000 rounds=9
options=(--min-size-mb 100 --hidden)
while [[ $# -gt 0 ]]; do
    case "$1" in
        --tree) tree=$2; shift 2 ;;
        --rounds) rounds=$2; shift 2 ;;
        --) shift; options=("$@"); break ;;
        *) echo "unknown argument $1" >&2; exit 2 ;;
    esac
done
[[ -d $tree ]] || { echo "no tree at $tree (bench/scan-bench.sh makes it)" >&2; exit 1; }

results=$(mktemp)
trap 'rm -f "$results"' EXIT
for binary in "$before" "$after"; do "$binary" scan "$tree" "${options[@]}" --print0 >/dev/null; done
for ((round = 1; round <= rounds; round++)); do
    for label in before after; do
        binary=$before
        [[ $label == after ]] && binary=$after
        /usr/bin/time -f "$label %e %U %S" -o "$results" -a \
            "$binary" scan "$tree" "${options[@]}" --print0 >/dev/null
    done
done
python3 - "$results" "$tree" "$rounds" <<'PY'
import statistics, sys, os
wall, cpu = {}, {}
for line in open(sys.argv[1]):
    label, elapsed, user, system = line.split()
    wall.setdefault(label, []).append(float(elapsed))
    cpu.setdefault(label, []).append(float(user) + float(system))
print(f"tree {sys.argv[2]}, {sys.argv[3]} rounds each, alternating, {os.cpu_count()} cores")
for label in ("before", "after"):
    print(f"{label:7s} wall {statistics.median(wall[label]):.3f} s   cpu {statistics.median(cpu[label]):.3f} s")
print(f"after/before: wall {statistics.median(wall['after']) / statistics.median(wall['before']):.3f}"
      f"   cpu {statistics.median(cpu['after']) / statistics.median(cpu['before']):.3f}")
PY
