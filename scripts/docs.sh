#!/usr/bin/env bash
# Builds the reference of the public headers into build/docs/, or into the folder given. Ends with an
# error for whatever is not documented. Prints the path of the C header's page last.
set -euo pipefail
cd "$(dirname "$0")/.."

out=${1:-$PWD/build/docs}
[ $# -gt 0 ] || scripts/setup.sh

# project_field NAME: what CMakeLists.txt says of the project.
project_field() {
  sed --quiet --regexp-extended "/^project\(/,/\)/ s/^ *$1 \"?([^\"]*[^\")]).*/\1/p" CMakeLists.txt
}

rm -rf "$out"
mkdir -p "$out"
sed --expression "s|@NAME@|KorvuTabletSettingsAPI|" --expression "s|@VERSION@|$(project_field VERSION)|" \
  --expression "s|@BRIEF@|$(project_field DESCRIPTION)|" --expression "s|@OUT@|$out|" \
  docs/Doxyfile.in >"$out/Doxyfile"
doxygen "$out/Doxyfile"
echo "$out/html/KorvuTabletSettingsAPI_8h.html"
