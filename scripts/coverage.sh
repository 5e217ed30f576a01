#!/usr/bin/env bash
# Runs all tests on the double of the platform, and counts the lines and branches of src/ that they
# reach. Prints what none of them reaches and the figures of each file; the last line is the sum.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh test
build=build/linux-coverage
cmake --preset linux-coverage
cmake --build --preset linux-coverage

# Each program adds up its runs in a few files of its own.
profiles=$PWD/$build/profiles
rm -rf "$profiles"
LLVM_PROFILE_FILE="$profiles/%4m.profraw" ctest --preset linux-coverage
llvm-profdata-14 merge --sparse --output="$build/tests.profdata" "$profiles"/*.profraw

programs=()
for program in "$build"/bin/*_{unit,integration}_tests; do
  programs+=(--object "$program")
done
counted() {
  llvm-cov-14 "$@" --instr-profile="$build/tests.profdata" --ignore-filename-regex='(tests|include)/' \
    "$build/bin/unit_tests" "${programs[@]}"
}

echo
echo "== Not reached"
counted export --format=lcov | awk -F '[:,]' '
  /^SF:/ { file = $2; sub(/^.*src\//, "src/", file) }
  /^DA:/ && $3 == 0 { print file ":" $2 ": line" }
  /^BRDA:/ && ($5 == 0 || $5 == "-") { print file ":" $2 ": branch " $4 }' | sort --version-sort --unique

echo
echo "== Reached, by file"
report=$(counted report)
echo "$report"
echo
echo "$report" | awk '/^TOTAL/ { print "lines " $10 " branches " $13 }'
