#!/bin/sh
# Installs the Debian or Ubuntu packages that this project builds with; asks for nothing when run as root.
# Usage: cmake/dependencies.sh [more packages ...]
set -eu

packages="cmake ninja-build g++ ccache nlohmann-json3-dev libnanoflann-dev libimath-dev libtbb-dev
libimgui-dev libegl-dev libgl-dev libopengl-dev libegl-mesa0 libgl1-mesa-dri libstb-dev libcli11-dev
libgtest-dev fonts-dejavu-core locales $*"

missing=""
for package in $packages; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

as_root=""
if [ "$(id -u)" != 0 ]; then
    as_root="sudo"
fi
echo "installing:$missing" >&2
export DEBIAN_FRONTEND=noninteractive
$as_root apt-get update -qq >&2
# shellcheck disable=SC2086
$as_root apt-get install -y -qq --no-install-recommends $missing >&2
