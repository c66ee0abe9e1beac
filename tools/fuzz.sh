#!/usr/bin/env bash
# Lets libFuzzer make up inputs for one reader, under the sanitizers, and keeps what it learns.
#
#   tools/fuzz.sh NAME SECONDS     NAME as in tests/fuzz: fuzz_NAME.cpp, corpus/NAME
#
# A finding stops it with status 1 and leaves the input in build/fuzz/findings/. Otherwise the corpus,
# cut to the fewest inputs, is in tests/fuzz/corpus/NAME.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

name=$1
seconds=$2
corpus=tests/fuzz/corpus/$name
learned=build/fuzz/learned/$name
mkdir -p build/fuzz/findings "$learned" "$corpus"

cmake --preset fuzz >build/fuzz/configure.log
cmake --build --preset fuzz --target "fuzz_$name" -- --quiet
program=build/fuzz/bin/fuzz_$name
"$program" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024 -print_final_stats=1 \
    -artifact_prefix=build/fuzz/findings/ "$learned" "$corpus"
# The fewest inputs that reach all that is known; those with names of their own stay too.
kept=$(mktemp -d)
"$program" -merge=1 -use_counters=0 -max_len=20000 "$kept" "$corpus" "$learned"
find "$corpus" -type f -regextype posix-extended -regex '.*/[0-9a-f]{40}' -delete
mv "$kept"/* "$corpus"/
rmdir "$kept"
echo "$(find "$corpus" -type f | wc -l) inputs in $corpus"
