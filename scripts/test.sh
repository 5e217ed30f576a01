#!/usr/bin/env bash
# Builds and runs every test, with each of the builds.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
for preset in mingw-release mingw-debug mingw-clang; do
  echo "== $preset"
  cmake --preset "$preset"
  cmake --build --preset "$preset"
  cmake/wine-run "$PWD/build/$preset/wine" --start
  ctest --preset "$preset"
done
