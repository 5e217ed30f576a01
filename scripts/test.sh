#!/usr/bin/env bash
# test.sh: builds and runs every test: cross-compiled under Wine, and the library's sources natively
# under AddressSanitizer with UBSan, and in 20 s of simulated lives. test.sh PRESET...: with those
# builds of CMakePresets.json instead, or with --all of them: ThreadSanitizer's, clang's and the one
# with assertions, too.
set -euo pipefail
cd "$(dirname "$0")/.."

presets=("$@")
[ $# -gt 0 ] || presets=(mingw-release linux-asan)
if [ "${presets[0]}" = --all ]; then
  presets=(mingw-release mingw-debug mingw-clang linux-asan linux-tsan)
fi

scripts/setup.sh test
for preset in "${presets[@]}"; do
  echo "== $preset"
  cmake --preset "$preset"
  cmake --build --preset "$preset"
  if [[ $preset == mingw-* ]]; then
    cmake/wine-run "$PWD/build/$preset/wine" --start
    : >"build/$preset/started-again.txt"  # see cmake/wine-test
  fi
  ctest --preset "$preset"
done

for preset in "${presets[@]}"; do
  if [[ $preset == mingw-* ]]; then
    echo "$preset: $(wc --lines <"build/$preset/started-again.txt") programs were started again"
    cat "build/$preset/started-again.txt"
  fi
done
