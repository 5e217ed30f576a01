#!/usr/bin/env bash
# Tests the tests: makes the changes of tests/mutations/changes.txt one at a time, in a copy of the
# tree, and runs the tests on each until the first failure. A change that no test notices survives.
# mutate.sh delays: those of delays.txt instead. They hold a thread up, as a busy machine does, and no
# test may notice.
# The last line tells how many were caught; ends with 1 if it is not as it should be.
set -euo pipefail
cd "$(dirname "$0")/.."

kind=${1:-changes}
table=$PWD/tests/mutations/$kind.txt
[ -f "$table" ] || { echo "usage: mutate.sh [delays]" >&2; exit 2; }
scripts/setup.sh test
work=$PWD/build/mutants
tree=$work/tree
# Copied anew; but what is unchanged keeps its time, so that it need not be compiled again.
rm -rf "$tree"
mkdir -p "$tree"
cp -a CMakeLists.txt cmake include src tests tools "$tree/"
# The one that an earlier run was stopped at was compiled with its change.
[ ! -f "$work/mutated" ] || touch "$tree/$(cat "$work/mutated")"

# Compiled quickly, not instrumented, and without warnings: a change may leave something unused.
flags="-O0 -w -include $PWD/tests/mutations/hold_up.h"
cmake -S "$tree" -B "$work/build" -G Ninja -DCMAKE_C_COMPILER=clang-14 \
  -DCMAKE_CXX_COMPILER=clang++-14 "-DCMAKE_CXX_FLAGS=$flags" -DKORVU_BUILD_TOOLS=OFF \
  -DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld >"$work/configure.log"
build() { cmake --build "$work/build" >"$work/build.log" 2>&1; }

# run_tests ROOM: until the first failure; the tests of single functions, then those of this room of
# src/, then all.
run_tests() {
  local room
  : >"$work/tests.log"
  for room in unit "integration/$1" integration; do
    [ -d "$work/build/tests/$room" ] || continue
    rm -rf "$work/build/tests/$room/Testing"  # or the slowest tests would come first
    timeout 900 ctest --test-dir "$work/build/tests/$room" --stop-on-failure --timeout 120 \
      --parallel 4 >>"$work/tests.log" 2>&1 || return 1
  done
}

if ! build || ! run_tests core; then
  echo "mutate: the unchanged sources do not pass:" >&2
  tail -n 30 "$work/build.log" "$work/tests.log" >&2
  exit 1
fi

# replace FILE OLD NEW: the changed file; fails unless OLD stands there exactly once.
replace() {
  OLD=$2 NEW=$3 awk '
    BEGIN { old = ENVIRON["OLD"]; length_of_old = length(old) }
    {
      rest = $0
      line = ""
      while ((at = index(rest, old)) > 0) {
        ++count
        line = line substr(rest, 1, at - 1) ENVIRON["NEW"]
        rest = substr(rest, at + length_of_old)
      }
      print line rest
    }
    END { exit count != 1 }' "$1"
}

total=0
caught=0
file=
old=
# mutate NEW: one change of `file`, and back.
mutate() {
  local new=$1 verdict room=${file#src/}
  total=$((total + 1))
  if ! replace "$file" "$old" "$new" >"$work/changed"; then
    echo "mutate: \"$old\" does not stand exactly once in $file" >&2
    exit 1
  fi
  echo "$file" >"$work/mutated"
  cp "$work/changed" "$tree/$file"
  if ! build; then
    echo "mutate: does not compile: $file: \"$old\" -> \"$new\"" >&2
    tail -n 30 "$work/build.log" >&2
    exit 1
  fi
  if run_tests "${room%%/*}"; then
    verdict="not noticed"
  else
    caught=$((caught + 1))
    # CTest lists what failed, or gave up on, at the end.
    verdict="caught by $(awk '/^[\t ]+[0-9]+ - / { print $3; exit }' "$work/tests.log")"
  fi
  printf '%2d %s: %s -> %s: %s\n' "$total" "$file" "$old" "${new:-(nothing)}" "$verdict"
  cp -p "$file" "$tree/$file"
  touch "$tree/$file"
}

while IFS= read -r line <&3; do
  case $line in
    '@ '*) file=${line#@ } ;;
    '- '*) old=${line#- } ;;
    '+'*) new=${line#+} && mutate "${new# }" ;;
  esac
done 3<"$table"
echo "$caught of $total caught"
if [ "$kind" = delays ]; then
  [ "$caught" -eq 0 ]
else
  [ "$caught" -eq "$total" ]
fi
