#!/usr/bin/env bash
# Installs the Debian packages the build needs, when they are missing.
set -euo pipefail
packages=(cmake ninja-build g++ qt6-base-dev qt6-svg-dev libgtest-dev
          libbenchmark-dev fonts-dejavu-core libeigen3-dev calculix-ccx gmsh)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "setup: installing ${missing[*]}"
  SUDO=""
  [ "$(id -u)" -eq 0 ] || SUDO="sudo"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
