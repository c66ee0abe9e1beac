#!/usr/bin/env bash
# tools/install_packages.sh PACKAGE...: installs those Debian packages that are missing.
# run.sh and test.sh call it. Silent when nothing is missing.
set -euo pipefail

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "This is no Debian system, so nothing was installed. Needed are what Debian calls:" >&2
    echo "  $*" >&2
    exit 0
fi

missing=()
for package in "$@"; do
    status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
    [[ $status == "install ok installed" ]] || missing+=("$package")
done
if ((${#missing[@]} == 0)); then
    exit 0
fi

as_root=()
if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
        echo "These packages are missing, and there is neither root nor sudo to install them:" >&2
        echo "  apt-get install --no-install-recommends ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
    if [[ ! -t 0 || -n ${CI:-} ]]; then
        as_root+=(-n)
    fi
fi

echo "Installing: ${missing[*]}"
protocol=$(mktemp)
trap 'rm -f "$protocol"' EXIT
Apt() {
    if ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get "$@" </dev/null >"$protocol" 2>&1; then
        tail -n 20 "$protocol" >&2
        echo "apt-get $1 failed." >&2
        exit 1
    fi
}
Apt update -q
Apt install -q -y --no-install-recommends "${missing[@]}"
