#!/usr/bin/env bash
# Fails when a C++ file of the project differs from .clang-format. With --fix, formats them instead.
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t files < <(git ls-files -co --exclude-standard -- '*.cpp' '*.h')
if [ "${1:-}" = "--fix" ]; then
  clang-format -i "${files[@]}"
  exit 0
fi
if ! clang-format --dry-run -Werror "${files[@]}" 2>/tmp/vosk-format.$$; then
  grep -E '^[^ ].*: (error|warning):' /tmp/vosk-format.$$ | cut -d: -f1 | sort -u | sed 's/^/unformatted: /'
  rm -f /tmp/vosk-format.$$
  echo "Run scripts/check-format.sh --fix to format them." >&2
  exit 1
fi
rm -f /tmp/vosk-format.$$
