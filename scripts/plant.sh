#!/usr/bin/env bash
# Tests the simulator: plants the faults of tests/simulation/planted/table.txt one at a time, and has
# it look for each. plant.sh TEXT...: only those with one of these in their name.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh test
cmake --preset linux-asan >/dev/null
cmake --build --preset linux-asan --target korvu_simulation >/dev/null
exec python3 tests/simulation/planted/plant.py build/planted \
  build/linux-asan/bin/korvu_simulation "$@"
