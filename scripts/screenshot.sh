#!/usr/bin/env bash
# screenshot.sh [PERCENT [FOLDER]]: photographs each page of the panel, at 100 % into docs/images/, with
# the stand-in service playing a pen with battery and dock.
set -euo pipefail
cd "$(dirname "$0")/.."
percent=${1:-100}
folder=$(realpath --canonicalize-missing "${2:-docs/images}")

if [ -z "${KORVU_DISPLAY:-}" ]; then
  scripts/setup.sh
  cmake --preset mingw-release
  cmake --build --preset mingw-release --target korvu-settings-service korvu-settings-panel
  KORVU_SCREEN=1920x1440 exec cmake/with-display "scripts/$(basename "$0")" "$percent" "$folder"
fi

bin=$PWD/build/mingw-release/bin
prefix=$PWD/build/mingw-release/wine
work=$(mktemp -d)
wine() { cmake/wine-run "$prefix" "$@"; }
set_percent() {
  wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d $((96 * $1 / 100)) /f >/dev/null
}
finish() {
  exec 3>&- || true
  set_percent 100  # for the tests, which use this prefix too
  wine --stop
  wait
  rm -rf "$work"
}
trap finish EXIT

# wait_for WHAT COMMAND...: until the command succeeds; gives up after a minute.
wait_for() {
  local what=$1
  shift
  for _ in $(seq 600); do
    if "$@"; then return; fi
    sleep 0.1
  done
  echo "screenshot: $what does not come" >&2
  exit 1
}
service() {
  echo "$1" >&3
  answers=$((answers + 1))
  wait_for "the answer to '$1'" has_answers
}
has_answers() { [ "$(grep --count '^ok' "$work/service")" -ge "$answers" ]; }
photograph() { DISPLAY=$KORVU_DISPLAY import -window root "$1"; }
# What is drawn is finished when two looks at it are the same; a new page differs from the one before.
is_still() {
  photograph "$work/before.png"
  sleep 0.3
  photograph "$work/now.png"
  cmp --silent "$work/before.png" "$work/now.png" && ! cmp --silent "$work/now.png" "$work/last.png"
}

wine --start
# Wine's own fonts, with the signs of a window's frame; Debian's Wine does not find them by itself.
cp --update /usr/share/wine/fonts/{marlett,tahoma,tahomabd}.ttf "$prefix-display/drive_c/windows/Fonts/"
set_percent "$percent"

answers=0
mkfifo "$work/commands"
: >"$work/service"
wine "$bin/korvu-settings-service.exe" --verbose --exit-with-stdin \
  <"$work/commands" >"$work/service" 2>"$work/log" &
exec 3>"$work/commands"
wait_for "the service" grep --quiet '^ready' "$work/service"

# On a desktop of Wine's own, which draws the window's frame as well.
wine explorer /desktop=panel,1920x1440 "$bin/korvu-settings-panel.exe" &
# The last questions of a connection.
wait_for "the panel" grep --quiet 'RadialNortheast2.*ButtonFunctionAppPath"}' "$work/log"
service 'pen 4E7A10C3 100237 in'
service 'battery 83 charging'
service 'pen 51B2094D 100954 in'
service 'battery 46 discharging'
service 'dock on'
service 'set PressureCurve 2'
service 'set ButtonUpperSide\ButtonSingle\ButtonFunctionKeystrokes {Ctrl}z'
service 'set ButtonUpperSide\ButtonSingle\ButtonFunction 8'

mkdir -p "$folder"
: >"$work/last.png"
for page in pen buttons radial display devices; do
  wine explorer /desktop=panel "$bin/korvu-settings-panel.exe" --page $page
  wait_for "a still picture" is_still
  cp "$work/now.png" "$work/last.png"
  # The desktop around the window is of one colour, and left out.
  convert "$work/now.png" -trim +repage +dither -colors 128 -strip "png8:$folder/panel-$page.png"
  ls -l "$folder/panel-$page.png"
done
