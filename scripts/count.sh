#!/usr/bin/env bash
# Counts what the library does, in instructions and allocations, beside the same work done with a JSON
# library, and prints the table as docs/performance.md has it. Ends 0 only if no bar is missed.
#
# No quiet machine is needed: callgrind runs the program's instructions one by one, on the processor
# that it shows to every program, so the C library takes the same ways everywhere.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh test
cmake --preset linux-count
cmake --build --preset linux-count

out=build/linux-count/counts
rm -rf "$out"
mkdir -p "$out"
# An empty environment, and all symbols looked up at the start: neither is to show in a row.
env -i LD_BIND_NOW=1 valgrind --quiet --tool=callgrind --collect-atstart=no --combine-dumps=yes \
  --callgrind-out-file="$out/callgrind.out" build/linux-count/bin/korvu-count >"$out/calls.tsv"
python3 bench/counts/report.py "$out/callgrind.out" "$out/calls.tsv"
