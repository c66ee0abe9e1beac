#!/usr/bin/env bash
# Lays out all C++ files by .clang-format. With --check it changes nothing, names the files that are
# laid out otherwise and fails if there are any; test.sh calls it so.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mapfile -d '' files < <(find src tests bench -type f \( -name '*.h' -o -name '*.cpp' \) -print0 | sort -z)
if ((${#files[@]} == 0)); then
    echo "There are no C++ files in src, tests and bench." >&2
    exit 1
fi
if [[ ${1:-} != --check ]]; then
    clang-format -i "${files[@]}"
    exit 0
fi
status=0
for file in "${files[@]}"; do
    if ! clang-format --dry-run -Werror "$file" 2>/dev/null; then
        echo "$file: not laid out by .clang-format (tools/format.sh mends it)"
        status=1
    fi
done
exit "$status"
