#!/usr/bin/env bash
# Measures the library beside a floor, a limit and a peer, and prints the table. It leaves the samples
# in build/bench/bench.json, and the table as docs/performance.md has it in build/bench/bench.md.
# Arguments go to the benchmark: --rounds N, --duels N, --no-bar. Ends 0 only if no row is missing and
# no bar is missed.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
cmake --preset mingw-release -D KORVU_BUILD_BENCH=ON
cmake --build --preset mingw-release --target korvu-bench

prefix=$PWD/build/mingw-release/wine-bench
# Wine's server too: on two processors, where it runs makes all figures come in two sizes.
on_one_processor() { taskset 1 cmake/wine-run "$prefix" "$@"; }
trap 'cmake/wine-run "$prefix" --stop' EXIT

cmake/wine-run "$prefix" --stop
on_one_processor --start
mkdir -p build/bench
on_one_processor build/mingw-release/bin/korvu-bench.exe \
  --json build/bench/bench.json --markdown build/bench/bench.md "$@"
