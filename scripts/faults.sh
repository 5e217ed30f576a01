#!/usr/bin/env bash
# faults.sh ROUNDS: every fault of the service, loading and connecting ROUNDS times, and setters of
# eight threads 50 times as often, instead of the few of a test run.
set -euo pipefail
cd "$(dirname "$0")/.."
export KORVU_FAULT_ROUNDS=${1:?how often each fault strikes}

scripts/setup.sh test
cmake --preset mingw-release >/dev/null
cmake --build --preset mingw-release --target faults_tests core_integration_tests \
  commands_integration_tests
cmake/wine-run "$PWD/build/mingw-release/wine" --start
ctest --preset mingw-release -R 'KilledService|FaultyService|HalfAService|ConnectAndShutdown|^Load.*Behind$|Interleaving|ShutdownRace' \
  --timeout 3600
