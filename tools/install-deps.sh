#!/usr/bin/env bash
# Installs what building and testing need on a fresh Debian 12; does nothing when all is there.
set -euo pipefail

packages=(build-essential cmake ninja-build pkg-config
          qt6-base-dev qt6-qpa-plugins libsqlite3-dev zlib1g-dev
          libgtest-dev libgmock-dev libbenchmark-dev
          cups cups-client poppler-utils xdg-utils fonts-dejavu-core sqlite3 unzip)

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Please install as root: ${missing[*]}" >&2; exit 1; }
    as_root=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -q
"${as_root[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
