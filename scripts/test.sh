#!/usr/bin/env bash
# Installs what is needed, builds, and runs the whole test suite headless.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh
cd build
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j"$(nproc)"
