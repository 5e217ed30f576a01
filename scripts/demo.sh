#!/usr/bin/env bash
# Shows the library at work: builds it, starts the stand-in service, and changes two settings with
# the command-line tool while a second tool watches. Ends 0 only if the watcher was called back with
# the changed values.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh demo
cmake --preset mingw-release -DKORVU_BUILD_TESTS=OFF  # which need more than is installed here
cmake --build --preset mingw-release --target korvu-settings-service korvu-settings

bin=$PWD/build/mingw-release/bin
prefix=$PWD/build/mingw-release/wine
work=$(mktemp -d)
wine() { cmake/wine-run "$prefix" "$@"; }
finish() {
  exec 3>&- || true
  wine --stop
  wait
  rm -rf "$work"
}
trap finish EXIT

# wait_for PATTERN FILE: until the pattern stands in the file; gives up after half a minute.
wait_for() {
  for _ in $(seq 300); do
    if grep --quiet --extended-regexp "$1" "$2"; then
      return
    fi
    sleep 0.1
  done
  echo "demo: no \"$1\" in what was printed:" >&2
  cat "$2" >&2
  exit 1
}

settings() {
  echo
  echo "\$ korvu-settings $*"
  wine "$bin/korvu-settings.exe" "$@"
}

wine --start

echo
echo "== The stand-in settings service"
mkfifo "$work/commands"
: >"$work/service"
wine "$bin/korvu-settings-service.exe" --exit-with-stdin \
  <"$work/commands" >"$work/service" 2>"$work/service.log" &
exec 3>"$work/commands"  # its standard input, open until the demo is over
wait_for '^ready' "$work/service"
echo "ready"

echo
echo "== Connected: what the service has announced, through callbacks"
settings status

echo
echo "== Two changes, while another client watches"
: >"$work/watch"
wine "$bin/korvu-settings.exe" watch >"$work/watch" 2>"$work/watch.log" &
wait_for '^OnOpaqueDisplayPath' "$work/watch"  # the last value of a connection
values_before=$(wc --lines <"$work/watch")
settings set tilt-sensitivity 37
settings button upper 8 '{Ctrl}z'
wait_for 'OnTiltSensitivity.*37' "$work/watch"
wait_for 'OnUpperSideSwitch function=8 ' "$work/watch"

echo
echo "== Called back in the watching client ($values_before callbacks came with the connection)"
tail --lines "+$((values_before + 1))" "$work/watch"
echo
echo "demo: both changes came back through callbacks"
