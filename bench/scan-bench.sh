#!/usr/bin/env bash
# Times `ravelinth scan` against fd, find, gdu and ncdu and against bare walks (bench/bare_walk:
# getdents64 and fstatat only, on 2 and on 16 threads) on one tree, in one run, and prints
# medians, peak memory and ratios, then the peak memory of a scan that keeps every file. Warm by
# default; --cold drops the page cache before every run (needs root); --both measures warm, then
# cold. Usage:
#   bench/scan-bench.sh [--tree DIR] [--files N] [--folders N] [--rounds N] [--cold | --both]
# Defaults: 1,000,000 files in 60,000 folders under /work/bench-trees (or $BENCH_TREES), 5 rounds.
set -euo pipefail
cd "$(dirname "$0")/.."

files=1000000 folders=60000 rounds=5 modes=(warm)
tree_root=${BENCH_TREES:-/work/bench-trees}
tree=""
while [[ $# -gt 0 ]]; do
    case "$1" in
        --tree) tree=$2; shift 2 ;;
        --files) files=$2; shift 2 ;;
        --folders) folders=$2; shift 2 ;;
        --rounds) rounds=$2; shift 2 ;;
        --cold) modes=(cold); shift ;;
        --both) modes=(warm cold); shift ;;
        -h | --help) sed -n '2,8s/^# \{0,1\}//p' "$0"; exit 0 ;;
        *) echo "unknown argument $1" >&2; exit 2 ;;
    esac
done
tree=${tree:-$tree_root/tree-$files-$folders}

sudo_if_needed() { if [[ $(id -u) -eq 0 ]]; then "$@"; else sudo "$@"; fi; }
missing=()
command -v fdfind >/dev/null || missing+=(fd-find)
command -v gdu >/dev/null || missing+=(gdu)
command -v ncdu >/dev/null || missing+=(ncdu)
[[ -x /usr/bin/time ]] || missing+=(time)
if [[ ${#missing[@]} -gt 0 ]]; then
    sudo_if_needed apt-get update -qq
    sudo_if_needed env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "${missing[@]}"
fi

scripts/build.sh >/dev/null
mkdir -p "$(dirname "$tree")"
build/bin/make_tree "$tree" --files "$files" --folders "$folders" --large 300

# Every tool walks the same entries: hidden ones included, 100 MiB and more.
declare -A commands=(
    [ravelinth]="build/bin/ravelinth scan $tree --min-size-mb 100 --hidden --print0"
    [ravelinth-1]="env RAVELINTH_SCAN_THREADS=1 build/bin/ravelinth scan $tree --min-size-mb 100 --hidden --print0"
    [fd]="fdfind -u --type f --size +100Mi . $tree"
    [find]="find $tree -type f -size +100M"
    [gdu]="gdu --non-interactive --no-progress $tree"
    [ncdu]="ncdu -0 -x -o /dev/null $tree"
    [bare-2]="build/bin/bare_walk $tree 2"
    [bare-16]="build/bin/bare_walk $tree 16"
)
tools=(ravelinth ravelinth-1 fd find gdu ncdu bare-2 bare-16)

kept=$(build/bin/ravelinth scan "$tree" --min-size-mb 100 --hidden --print0 | tr -cd '\0' | wc -c)
found=$(find "$tree" -type f -size +100M | wc -l)
echo "tree: $tree ($files files, $folders folders); ravelinth keeps $kept files, find finds $found"
[[ "$kept" == "$found" ]] || echo "WARNING: the counts differ"

machine="$(nproc) cores, $(sed -n 's/^model name[[:space:]]*: //p' /proc/cpuinfo | head -1), $(($(sed -n 's/^MemTotal: *\([0-9]*\).*/\1/p' /proc/meminfo) / 1048576)) GiB"
device=$(df --output=source "$tree" | tail -1)
rotational=$(cat "/sys/block/$(basename "$(readlink -f "/sys/class/block/$(basename "$device")/..")")/queue/rotational" 2>/dev/null || cat "/sys/class/block/$(basename "$device")/queue/rotational" 2>/dev/null || echo unknown)
# A virtio disk keeps the kernel's default flag whatever stands behind it; the scan ignores it.
[[ $(readlink -f "/sys/class/block/$(basename "$device")") == */virtio* ]] && rotational+=", virtio: walked as solid-state"
echo "machine: $machine; tree on $device (rotational: $rotational)"

drop_caches() {
    sync
    echo 3 >/proc/sys/vm/drop_caches
}

measure() {
    local mode=$1 results
    results=$(mktemp)
    if [[ $mode == cold ]] && ! (echo 3 >/proc/sys/vm/drop_caches) 2>/dev/null; then
        echo "cannot drop caches here (not root?): no cold measurement" >&2
        return
    fi
    if [[ $mode == warm ]]; then
        for tool in "${tools[@]}"; do ${commands[$tool]} >/dev/null 2>&1 || true; done
    fi
    for ((round = 1; round <= rounds; round++)); do
        for tool in "${tools[@]}"; do
            [[ $mode == cold ]] && drop_caches
            /usr/bin/time -f "$tool %e %M" -o "$results" -a ${commands[$tool]} >/dev/null 2>&1 || true
        done
    done
    python3 - "$results" "$mode" "$tree" "$machine" <<'PY'
import statistics, sys
results, mode, tree, machine = sys.argv[1:5]
times, memory = {}, {}
for line in open(results):
    parts = line.split()
    if len(parts) != 3 or parts[0].startswith("Command"):
        continue
    times.setdefault(parts[0], []).append(float(parts[1]))
    memory[parts[0]] = max(memory.get(parts[0], 0), int(parts[2]))
order = ["ravelinth", "ravelinth-1", "fd", "find", "gdu", "ncdu", "bare-2", "bare-16"]
peers_of = ["fd", "find", "gdu", "ncdu"]
ours = statistics.median(times["ravelinth"])
cache = "cold cache (dropped before every run)" if mode == "cold" else "warm cache"
print(f"\n== {cache}: {tree}, {len(times['ravelinth'])} rounds, {machine}")
print(f"{'tool':<12} {'median s':>9} {'min s':>7} {'peak MiB':>9} {'ravelinth / tool':>17}")
for tool in order:
    if tool not in times:
        continue
    median = statistics.median(times[tool])
    print(f"{tool:<12} {median:>9.2f} {min(times[tool]):>7.2f} {memory[tool] / 1024:>9.1f} {ours / median:>17.2f}")
peers = {t: statistics.median(times[t]) for t in peers_of if t in times}
fastest = min(peers, key=peers.get)
peer_target = 0.5 if mode == "cold" else 0.55
bare = "bare-16" if mode == "cold" else "bare-2"
print(f"{mode}: ravelinth / fastest peer ({fastest}): {ours / peers[fastest]:.2f}   (target: at most {peer_target})")
print(f"{mode}: ravelinth / {bare} walk: {ours / statistics.median(times[bare]):.2f}   (target: at most 1.15)")
print("ravelinth-1 is the same scan walked on one thread; bare-N lists and stats on N threads, nothing more")
PY
    rm -f "$results"
}

for mode in "${modes[@]}"; do
    measure "$mode"
done

# Memory with every file kept: the peak of a scan at threshold 0, per kept file.
zero=$(mktemp)
/usr/bin/time -f "%M" -o "$zero" build/bin/ravelinth scan "$tree" --min-size-mb 0 --hidden --print0 \
    | python3 -c '
import sys
paths = sys.stdin.buffer.read().split(b"\0")[:-1]
print(len(paths), sum(len(p) for p in paths))' >"$zero.count"
read -r count pathbytes <"$zero.count"
peak_kib=$(tail -1 "$zero")
python3 -c "
count, path_bytes, peak = $count, $pathbytes, $peak_kib * 1024
print(f'threshold 0: {count} kept files, peak {peak / 2**20:.0f} MiB = {peak / count:.0f} bytes per kept file, '
      f'of which {path_bytes / count:.0f} are the path itself ({(peak - path_bytes) / count:.0f} beyond it, '
      'the process itself included)')"
rm -f "$zero" "$zero.count"
