#!/usr/bin/env bash
# test.sh: builds and runs every test. test.sh PRESET...: with those builds of CMakePresets.json
# instead, or with --all of them: clang's, with assertions, under sanitizers.
set -euo pipefail
cd "$(dirname "$0")/.."

presets=("${@:-mingw-release}")
if [ "${presets[0]}" = --all ]; then
  presets=(mingw-release mingw-debug mingw-clang linux-asan linux-tsan)
fi

scripts/setup.sh
for preset in "${presets[@]}"; do
  echo "== $preset"
  cmake --preset "$preset"
  cmake --build --preset "$preset"
  if [[ $preset == mingw-* ]]; then
    cmake/wine-run "$PWD/build/$preset/wine" --start
  fi
  ctest --preset "$preset"
done
