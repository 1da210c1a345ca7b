#!/usr/bin/env bash
# Installs what is needed, checks the formatting, builds with warnings as errors, and runs the whole
# test suite headless.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/check-format.sh
bash scripts/build.sh -DVOSK_WERROR=ON
cd build
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j"$(nproc)"
