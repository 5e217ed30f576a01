#!/usr/bin/env bash
# soak.sh MINUTES [SEED]: application threads work while the service restarts, garbles and stalls.
# The last line is the verdict; ends 0 only with a clean one.
set -euo pipefail
cd "$(dirname "$0")/.."
minutes=${1:?minutes to run}

scripts/setup.sh test
cmake --preset mingw-release >/dev/null
cmake --build --preset mingw-release --target korvu-soak
prefix=$PWD/build/mingw-release/wine
cmake/wine-run "$prefix" --start
trap 'cmake/wine-run "$prefix" --stop' EXIT
cmake/wine-run "$prefix" "$PWD/build/mingw-release/bin/korvu-soak.exe" \
  --seconds "$((minutes * 60))" ${2:+--seed "$2"}
