#!/usr/bin/env bash
# reproduce.sh [COMMIT]: builds the DLL in two folders of different names, and succeeds if both are
# the same to the byte. Takes the sources of the commit, or as they are. reproduce.sh --like FOLDER:
# builds it once, and compares it with the release build of these sources whose DLL is in FOLDER.
set -euo pipefail

like=
if [ "${1:-}" = --like ]; then
  like=$(realpath "$2")
  shift 2
fi
cd "$(dirname "$0")/.."

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

sources=(CMakeLists.txt cmake include src)
if [ -n "${1:-}" ]; then
  git archive --output "$work/sources.tar" "$1" "${sources[@]}"
else
  tar --create --file "$work/sources.tar" "${sources[@]}"
fi

# build FOLDER: in $work/FOLDER; its DLL is in build/bin/ there.
build() {
  local tree=$work/$1
  mkdir -p "$tree"
  tar --extract --file "$work/sources.tar" --directory "$tree"
  cmake -S "$tree" -B "$tree/build" -G Ninja \
    -DCMAKE_TOOLCHAIN_FILE="$tree/cmake/toolchains/mingw.cmake" -DCMAKE_BUILD_TYPE=Release \
    -DKORVU_BUILD_TOOLS=OFF -DKORVU_BUILD_EXAMPLES=OFF -DKORVU_BUILD_TESTS=OFF >/dev/null
  cmake --build "$tree/build" --target KorvuTabletSettingsAPI -- -j "${JOBS:-$(nproc)}" >/dev/null
}

# sums FOLDER: of the DLL and its symbols.
sums() { (cd "$1" && sha256sum KorvuTabletSettingsAPI.dll*); }

if [ -z "$like" ]; then
  build one
  like=$work/one/build/bin
fi
sums "$like" | tee "$work/first"
build a/folder/with/a/longer/name
sums "$work/a/folder/with/a/longer/name/build/bin" | tee "$work/second"
if ! cmp "$work/first" "$work/second"; then
  echo "reproduce: the two builds differ" >&2
  exit 1
fi
echo "reproduce: the two builds are the same"
