#!/usr/bin/env bash
# Checks the format, the lock annotations (clang's build), the includes and clang-tidy's list.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
scripts/format.sh --check
cmake --preset mingw-clang
cmake --build --preset mingw-clang
scripts/includes.sh
git ls-files -z 'src/*.cpp' 'tools/*.cpp' |
  xargs -0 -n 4 -P "$(nproc)" clang-tidy --quiet -p build/mingw-clang
echo "lint: clean"
