#!/usr/bin/env bash
# Measures the speed budgets and prints their table. Installs what is missing first (Debian packages).
#
#   tools/bench.sh           builds the preset "bench", measures, prints the table
#   tools/bench.sh --write   puts the table and the machine into docs/performance.md too
#
# Takes some two minutes on a machine that does nothing else; on a busy one the numbers mean little.
# Exit status 1: a budget is missed, or something could not be measured.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build=build/bench
write=()
case ${1:-} in
-h | --help)
    sed -n '2,/^set /{/^#/s/^# \{0,1\}//p}' tools/bench.sh
    exit 0
    ;;
"") ;;
--write) write=(--write docs/performance.md --build "$build") ;;
*)
    echo "bench.sh: $1 is not known; see tools/bench.sh --help" >&2
    exit 2
    ;;
esac

tools/install_packages.sh cmake ninja-build g++ ccache python3 \
    qt6-base-dev qt6-serialport-dev qt6-multimedia-dev libsndfile1-dev libgl-dev libxkbcommon-dev \
    libgtest-dev libgmock-dev libbenchmark-dev hamradio-files fonts-dejavu-core

Told() {
    local what=$1 protocol=$2
    shift 2
    if ! "$@" >"$protocol" 2>&1 </dev/null; then
        tail -n 40 "$protocol" >&2
        echo "$what failed; all of it is in $protocol." >&2
        exit 1
    fi
}

# The benchmarks make their files in the folder that they are run from.
Measure() {
    (cd "$build" && bin/zrtlog-bench "--benchmark_filter=$filter" \
        --benchmark_out=budgets.json --benchmark_out_format=json)
}

mkdir -p "$build"
echo "Building (the first time takes some minutes) ..."
Told "Configuring" "$build/configure.log" cmake --preset bench
Told "The build" "$build/build.log" \
    cmake --build --preset bench -j "$(nproc)" --target zrtlog-bench
echo "Measuring ..."
filter=$(tools/bench_table.py --filter)
rm -f "$build/budgets.json"
Told "The measurement" "$build/measured.log" Measure
tools/bench_table.py "$build/budgets.json" "${write[@]}"
