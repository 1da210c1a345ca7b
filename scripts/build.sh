#!/usr/bin/env bash
# Configures and builds VOSK into build/ (the program folder is build/, beside the executable).
# Arguments are passed to the configure step (test.sh passes -DVOSK_WERROR=ON).
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
cmake --build build -j"$(nproc)"
