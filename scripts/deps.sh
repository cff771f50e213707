#!/usr/bin/env bash
# Installs the Debian packages the build needs, when they are missing.
set -euo pipefail

packages=(build-essential cmake qt6-base-dev qt6-base-private-dev qt6-tools-dev libgl-dev libgtest-dev libbenchmark-dev fonts-dejavu-core libqt6sql6-sqlite)
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

if [ "$(id -u)" -ne 0 ]; then
    echo "Missing packages. Install them with:" >&2
    echo "  sudo apt-get install -y ${missing[*]}" >&2
    exit 1
fi
export DEBIAN_FRONTEND=noninteractive
apt-get update -qq
apt-get install -y -qq "${missing[@]}"
