#!/usr/bin/env bash
# Formats all sources; with --check, only tells which are not formatted.
set -euo pipefail
cd "$(dirname "$0")/.."

mode=(-i)
[ "${1:-}" != --check ] || mode=(--dry-run -Werror)
git ls-files -z '*.cpp' '*.hpp' '*.h' '*.c' | xargs -0 clang-format "${mode[@]}"
