#!/usr/bin/env bash
# Builds ZRTLOG and starts it. Installs what is missing first (Debian packages).
#
#   ./run.sh           starts the program; without a display it plays the demonstration instead
#   ./run.sh --demo    plays the demonstration
#
# The demonstration tells each of its steps and leaves the log and pictures in ./demo/.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

packages=(
    cmake ninja-build g++ python3
    qt6-base-dev qt6-serialport-dev qt6-multimedia-dev libsndfile1-dev libgl-dev libxkbcommon-dev
    libqt6svg6 hamradio-files fonts-dejavu-core
)

Build() {
    local protocol=build/release-build.log
    mkdir -p build
    echo "Building $* (the first time takes some minutes) ..."
    if ! cmake --preset release >"$protocol" 2>&1; then
        tail -n 20 "$protocol" >&2
        echo "Configuring failed; all of it is in $protocol." >&2
        exit 1
    fi
    # On a terminal Ninja shows its progress in one line; elsewhere every tenth of the way is told.
    if [[ -t 1 ]]; then
        cmake --build --preset release -j "$(nproc)" --target "$@"
    elif ! cmake --build --preset release -j "$(nproc)" --target "$@" 2>&1 | tee "$protocol" |
        awk -F '[][/]' '/^\[[0-9]+\/[0-9]+\]/ { tenth = int($2 * 10 / $3)
            if (tenth > told) { told = tenth; print "  " told * 10 "%"; fflush() } }'; then
        tail -n 40 "$protocol" >&2
        echo "The build failed; all of it is in $protocol." >&2
        exit 1
    fi
}

# Copies a file as the program does: to a side file, synced, then renamed, so that a full disk leaves
# no half of it. The program removes a side file that a crash has left.
CopySafely() {
    local from=$1 to=$2 folder side
    folder=$(dirname "$to")
    side=$(mktemp "$folder/.zrtlog-XXXXXXXX.new") || return
    side_file=$side # for the trap
    cp "$from" "$side" && chmod "$(printf '%o' $((0666 & ~$(umask))))" "$side" && sync "$side" &&
        mv -T "$side" "$to" || return
    sync "$folder" 2>/dev/null || true # some file systems can't
}

RemoveSideFile() {
    if [[ -n ${side_file:-} ]]; then
        rm -f "$side_file"
    fi
}

# Copies a file into the program's folder unless one of that name, in whatever case, is there.
FillIn() {
    local from=$1 to=$2
    mkdir -p "$(dirname "$to")"
    if [[ -z $(find "$(dirname "$to")" -maxdepth 1 -iname "$(basename "$to")" -print -quit) ]]; then
        if ! CopySafely "$from" "$to"; then
            echo "$to could not be copied. Make room on the disk and start again." >&2
            exit 1
        fi
        echo "  $to"
    fi
}

# Where the data of the user's programs stands, as the program finds it (platform/user_folder).
DataHome() {
    local home=${HOME:-}
    if [[ ${XDG_DATA_HOME:-} == /* ]]; then
        echo "$XDG_DATA_HOME"
        return
    fi
    if [[ $home != /* ]]; then
        home=$(getent passwd "$(id -u)" | cut -d: -f6)
    fi
    if [[ $home != /* ]]; then
        echo "There is no home directory. Set HOME and start again." >&2
        exit 1
    fi
    echo "$home/.local/share"
}

# The files of a first installation, the settings last: they say that the folder is filled.
FilesOfInstallation() {
    find "$1" -type f ! -name zrtlog125.ini -printf '%P\0' | sort -z
    find "$1" -type f -name zrtlog125.ini -printf '%P\0'
}

# Fills the program's folder from $1, what the build has put together.
FillProgramFolder() {
    local from=$1 folder file name
    folder=$(DataHome)/zrtlog
    echo "The program's folder is $folder"
    while IFS= read -r -d '' file; do
        FillIn "$from/$file" "$folder/$file"
    done < <(FilesOfInstallation "$from")
    for name in cty.dat master.scp; do
        if [[ -z $(find "$folder" -maxdepth 1 -iname "$name" -print -quit) ]]; then
            echo "There is no $name: put one into that folder." >&2
        fi
    done
}

# Prints which display the program can use: "xcb", "wayland", or nothing.
FindDisplay() {
    if [[ -n ${DISPLAY:-} ]] && timeout 10 xdpyinfo >/dev/null 2>&1; then
        echo xcb
    elif [[ -n ${WAYLAND_DISPLAY:-} ]]; then
        local socket=$WAYLAND_DISPLAY
        [[ $socket == /* ]] || socket=${XDG_RUNTIME_DIR:-}/$socket
        if [[ -S $socket ]]; then
            echo wayland
        fi
    fi
}

Demonstrate() {
    Build zrtlog-demo program_data
    mkdir -p demo
    QT_QPA_PLATFORM=offscreen build/release/bin/zrtlog-demo tests/scenarios/demonstration.scn demo/
    echo
    echo "In ./demo/ now:"
    find demo -type f -printf '%P\t%s bytes\n' | sort | sed 's/^/  /'
}

# Sourced by a test: the procedures alone.
if [[ ${BASH_SOURCE[0]} != "$0" ]]; then
    return
fi
trap RemoveSideFile EXIT

case ${1:-} in
-h | --help)
    sed -n '2,/^set /{/^#/s/^# \{0,1\}//p}' run.sh
    exit 0
    ;;
"" | --demo) ;;
*)
    echo "run.sh: $1 is not known; see ./run.sh --help" >&2
    exit 2
    ;;
esac

if [[ -n ${DISPLAY:-} ]]; then
    packages+=(x11-utils)
fi
if [[ -n ${WAYLAND_DISPLAY:-} ]]; then
    packages+=(qt6-wayland)
fi
tools/install_packages.sh "${packages[@]}"

if [[ ${1:-} == --demo ]]; then
    Demonstrate
    exit 0
fi
display=$(FindDisplay)
if [[ -z $display ]]; then
    if [[ -z ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; then
        echo "There is no display here, so ZRTLOG plays its demonstration without one."
    else
        echo "The display does not answer, so ZRTLOG plays its demonstration without one."
    fi
    Demonstrate
    exit 0
fi
Build zrtlog program_data
FillProgramFolder build/release/data
QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-$display} exec build/release/bin/zrtlog
