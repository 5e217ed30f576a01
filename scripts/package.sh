#!/usr/bin/env bash
# Builds the package for application authors, and beside it the symbols for debuggers. Prints the
# package's path last.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
cmake --preset mingw-release
cmake --build --preset mingw-release --target \
  KorvuTabletSettingsAPI korvu-settings korvu-settings-panel korvu-settings-service korvu-msvc-import-library

out=$PWD/build/package
rm -rf "$out"
cpack --config build/mingw-release/CPackConfig.cmake -G ZIP -B "$out"
rm -rf "$out/_CPack_Packages"
ls "$out"/*-symbols.zip
ls "$out"/*-win64.zip
