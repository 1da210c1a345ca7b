#!/usr/bin/env bash
# Installs what is needed, builds, makes the sample database if there is none, and starts VOSK.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh
if [ ! -f build/data.vosk ]; then
  ./build/vosk-makedb --sample build/data.vosk
fi
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  echo "No display is available: starting VOSK on a virtual display (xvfb-run)."
  exec xvfb-run -a ./build/vosk "$@"
fi
exec ./build/vosk "$@"
