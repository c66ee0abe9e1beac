#!/usr/bin/env bash
# Builds and tests everything. Installs what is missing first (Debian packages).
#
#   ./test.sh            layers, format, and the two suites: dev and sanitize
#   ./test.sh dev        one suite
#   ./test.sh sanitize   the other
#   ./test.sh clang      builds everything with clang++
#   ./test.sh tidy       clang-tidy and cppcheck over all sources (takes long)
#   ./test.sh valgrind   all scenarios under valgrind
#   ./test.sh coverage   what the tests reach of the logic: a table in build/coverage/coverage.txt
#   ./test.sh mutants    breaks statements and lists those that no test notices; what follows is given
#                        to tools/mutate.py, as in "./test.sh mutants --seed 7 --count 150" (takes long)
#
# With suites the last line is "N passed, N failed", summed over them. A step that fails outside of a
# suite (a build, layers, format) counts as one failed there. Exit status 0: nothing failed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

passed=0
failed=0
skipped=0

Say() {
    printf '\n== %s\n' "$*"
}

Usage() {
    sed -n '2,/^set /{/^#/s/^# \{0,1\}//p}' test.sh
}

# Runs a step that is no suite: its output is shown only when it fails.
Step() {
    local name=$1 output
    shift
    Say "$name"
    if output=$("$@" 2>&1); then
        echo "ok"
        return 0
    fi
    printf '%s\n' "$output"
    echo "FAILED: $name"
    failed=$((failed + 1))
    return 1
}

BuildPreset() {
    cmake --preset "$1" && cmake --build --preset "$1" -j "$(nproc)" -- --quiet
}

# clang has a build folder of its own; all warnings are errors there too.
BuildClang() {
    cmake -S . -B build/clang -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_FLAGS="-O1 -g" &&
        cmake --build build/clang -j "$(nproc)" -- --quiet
}

Tidy() {
    local here
    here=$(pwd -P | sed 's/[][\.*^$+?(){}|]/\\&/g')
    run-clang-tidy -quiet -j "$(nproc)" -p build/clang "^$here/(src|tests|bench)/"
}

# Left out: what cppcheck 2.10 says of a table of names, and of an index that its loop has checked.
Cppcheck() {
    cppcheck -j "$(nproc)" --enable=warning,performance,portability --std=c++20 -I src --quiet \
        --suppress=missingIncludeSystem --suppress=CastIntegerToAddressAtReturn \
        --suppress=arrayIndexThenCheck --error-exitcode=1 src
}

Valgrind() {
    valgrind --quiet --error-exitcode=9 --leak-check=full --errors-for-leak-kinds=definite \
        build/dev/bin/zrtlog-scenario tests/scenarios/*.scn
}

# The windows are left out: they are tested as pictures and by real keys. So is the fault sweep, whose
# wrapped system calls the counting would use.
Coverage() {
    find build/coverage -name '*.gcda' -delete
    ctest --test-dir build/coverage -j "$(nproc)" --timeout 600 -E 'xvfb|storm|kill|fault_sweep' </dev/null &&
        gcovr --root . --filter src/ --exclude src/qt/ --exclude src/headless/ --exclude-throw-branches \
            --sort-percentage --txt build/coverage/coverage.txt --print-summary build/coverage
}

# Runs the tests of a preset that is built, and adds to the sums what ctest counted.
RunSuite() {
    local preset=$1 protocol=build/$1/ctest.log status=0 summary bad all not_run
    Say "Tests: $preset"
    # Tests that passed are left out of what is shown; the whole protocol stays in the build folder.
    ctest --preset "$preset" -j "$(nproc)" --timeout 300 --no-tests=error </dev/null 2>&1 | tee "$protocol" |
        grep -vE '^ *Start +[0-9]+: |^ *[0-9]+/[0-9]+ Test +#[0-9]+: .* Passed +[0-9.]+ sec *$' ||
        status=${PIPESTATUS[0]}
    summary=$(grep -E '^[0-9]+% tests passed, [0-9]+ tests? failed out of [0-9]+' "$protocol" | tail -n 1 || true)
    if [[ $summary =~ \ ([0-9]+)\ tests?\ failed\ out\ of\ ([0-9]+) ]]; then
        bad=${BASH_REMATCH[1]}
        all=${BASH_REMATCH[2]}
        # A skipped test is not counted as failed by ctest, and not as passed by us.
        not_run=$(grep -cE '^[[:space:]]*[0-9]+ - .* \(Skipped\)' "$protocol" || true)
        failed=$((failed + bad))
        skipped=$((skipped + not_run))
        passed=$((passed + all - bad - not_run))
    else
        bad=0
        status=1
    fi
    if ((status != 0 && bad == 0)); then
        echo "FAILED: ctest --preset $preset ended with status $status"
        failed=$((failed + 1))
    fi
}

Suite() {
    if Step "Build: $1" BuildPreset "$1"; then
        RunSuite "$1"
    fi
}

packages=(
    cmake ninja-build g++ ccache clang clang-format python3
    qt6-base-dev qt6-serialport-dev qt6-multimedia-dev libsndfile1-dev libgl-dev libxkbcommon-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    libqt6svg6 appstream desktop-file-utils
    hamradio-files xvfb xauth xdotool x11-utils openbox fonts-dejavu-core
)

mode=${1:-all}
case $mode in
all | dev | sanitize | clang) ;;
tidy) packages+=(clang-tidy cppcheck) ;;
valgrind) packages+=(valgrind) ;;
coverage) packages+=(gcovr) ;;
mutants) packages+=(python3-clang-14 lld) ;;
-h | --help)
    Usage
    exit 0
    ;;
*)
    Usage >&2
    exit 2
    ;;
esac

tools/install_packages.sh "${packages[@]}"
export CLICOLOR_FORCE=0 CTEST_OUTPUT_ON_FAILURE=1
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1}

case $mode in
all)
    Step "Layers" python3 tools/check_layers.py || true
    Step "Format" tools/format.sh --check || true
    Suite dev
    Suite sanitize
    ;;
dev | sanitize) Suite "$mode" ;;
clang) Step "Build: clang++" BuildClang || true ;;
tidy)
    if Step "Build: clang++" BuildClang; then
        Step "clang-tidy" Tidy || true
    fi
    Step "cppcheck" Cppcheck || true
    ;;
valgrind)
    if Step "Build: dev" BuildPreset dev; then
        Step "valgrind" Valgrind || true
    fi
    ;;
coverage)
    if Step "Build: coverage" BuildPreset coverage && Step "Tests: coverage" Coverage; then
        tail -n 4 build/coverage/coverage.txt
    fi
    ;;
mutants)
    if Step "Tests of the mutants" python3 tests/tools/mutate_test.py; then
        Say "Mutants"
        tools/mutate.py "${@:2}" || failed=1
    fi
    ;;
esac

if [[ $mode =~ ^(all|dev|sanitize)$ ]]; then
    echo
    if ((skipped > 0)); then
        echo "$skipped skipped"
    fi
    echo "$passed passed, $failed failed"
fi
((failed == 0))
