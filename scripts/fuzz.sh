#!/usr/bin/env bash
# fuzz.sh MINUTES: runs the fuzz targets, which share the minutes, on from what earlier runs found.
# Prints how often each target ran and how much of the code it reached. An input that breaks
# something is left in build/linux-asan/fuzz/, and ends the script with 1.
set -euo pipefail
cd "$(dirname "$0")/.."
minutes=${1:?usage: fuzz.sh MINUTES}

scripts/setup.sh test
cmake --preset linux-asan
cmake --build --preset linux-asan --target fuzz_targets

build=$PWD/build/linux-asan
targets=(announcement reply option_list zoom_map dispatch service_request)
seconds=$((minutes * 60 / ${#targets[@]}))
result=0
summary=$(printf '%-16s %12s %9s %9s' target executions coverage features)
for target in "${targets[@]}"; do
  echo "== $target, $seconds seconds"
  work=$build/fuzz/$target
  mkdir -p "$work"
  "$build/bin/${target}_fuzz" -max_total_time="$seconds" -max_len=2048 -print_final_stats=1 \
    -artifact_prefix="$build/fuzz/$target-" "$work" "tests/fuzz/corpus/$target" \
    >"$build/fuzz/$target.log" 2>&1 || result=1
  tail -n 8 "$build/fuzz/$target.log"
  # The last line of progress: #RUNS DONE cov: N ft: N ...
  line=$(awk '/^#[0-9]+.* cov: / { last = $0 } END { print last }' "$build/fuzz/$target.log")
  summary+=$'\n'$(echo "$line" | awk -v target="$target" '
    { for (i = 1; i < NF; i++) { if ($i == "cov:") cov = $(i + 1); if ($i == "ft:") ft = $(i + 1) }
      printf "%-16s %12s %9s %9s", target, substr($1, 2), cov, ft }')
done
echo
echo "$summary"
exit "$result"
