#!/usr/bin/env bash
# simulate.sh LIVES [SEED]: lives of the library in a simulated world, from this seed on, on all
# processors; first the seeds that once broke a promise. simulate.sh --seed N --log: one life again,
# all of it told. docs/testing.md tells what is simulated, and what the figures are.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh test
cmake --preset linux-asan >/dev/null
cmake --build --preset linux-asan --target korvu_simulation >build/linux-asan/simulation.log || {
  tail -n 40 build/linux-asan/simulation.log >&2
  exit 2
}
exec build/linux-asan/bin/korvu_simulation --jobs "$(nproc)" "$@"
