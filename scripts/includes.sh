#!/usr/bin/env bash
# includes.sh [--fix] [TEXT...]: does every file of src/ and tools/ include what it names, and nothing
# that it does not use? With --fix, changes those that do not. With texts, looks only at sources whose
# path has one of them.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
# The commands of clang's build, in which each file stands for itself.
build=build/mingw-includes
cmake --preset mingw-clang -B "$build" -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON >/dev/null
python3 cmake/includes/check.py "$build" "$@"
