#!/usr/bin/env bash
# Installs the Debian 12 packages that building, running and testing VOSK need.
set -euo pipefail
packages=(build-essential cmake qt6-base-dev libgl-dev libsqlite3-dev libcurl4-openssl-dev python3-aiosmtpd
          clang-format xvfb xauth)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  SUDO=""
  [ "$(id -u)" -eq 0 ] || SUDO="sudo"
  export DEBIAN_FRONTEND=noninteractive
  $SUDO apt-get update -qq
  $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
