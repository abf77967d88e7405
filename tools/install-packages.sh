#!/bin/sh
# Installs the missing packages of tools/packages.txt: install-packages.sh build [test] [bench] [windows]
# Needs root or sudo; without either it prints the command to run and fails.
set -eu
list=$(dirname "$0")/packages.txt

missing=
for purpose in "$@"; do
    for package in $(awk -v p="$purpose" '$1 !~ /^#/ { for (i = 2; i <= NF; ++i) if ($i == p) print $1 }' "$list"); do
        case " $missing " in *" $package "*) continue ;; esac
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
            missing="$missing $package"
    done
done
[ -n "$missing" ] || exit 0

command="apt-get install -y --no-install-recommends$missing"
echo "Installing:$missing" >&2
export DEBIAN_FRONTEND=noninteractive
if [ "$(id -u)" = 0 ]; then
    apt-get update -qq >&2
    $command >&2
elif sudo -n true 2>/dev/null || { [ -t 0 ] && command -v sudo >/dev/null; }; then
    sudo apt-get update -qq >&2
    sudo $command >&2
else
    echo "Some packages are missing and there is no right to install them. Please run as root:" >&2
    echo "  $command" >&2
    exit 1
fi
