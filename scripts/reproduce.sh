#!/usr/bin/env bash
# reproduce.sh [COMMIT]: builds the DLL in two folders of different names, and succeeds if both are
# the same to the byte. Takes the sources of the commit, or as they are.
set -euo pipefail
cd "$(dirname "$0")/.."

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

sources=(CMakeLists.txt cmake include src)
if [ -n "${1:-}" ]; then
  git archive --output "$work/sources.tar" "$1" "${sources[@]}"
else
  tar --create --file "$work/sources.tar" "${sources[@]}"
fi

for folder in one a/folder/with/a/longer/name; do
  mkdir -p "$work/$folder"
  tar --extract --file "$work/sources.tar" --directory "$work/$folder"
  cmake -S "$work/$folder" -B "$work/$folder/build" -G Ninja \
    -DCMAKE_TOOLCHAIN_FILE="$work/$folder/cmake/toolchains/mingw.cmake" -DCMAKE_BUILD_TYPE=Release \
    -DKORVU_BUILD_TOOLS=OFF -DKORVU_BUILD_EXAMPLES=OFF -DKORVU_BUILD_TESTS=OFF >/dev/null
  cmake --build "$work/$folder/build" --target KorvuTabletSettingsAPI -- -j "${JOBS:-$(nproc)}" >/dev/null
  (cd "$work/$folder/build/bin" && sha256sum KorvuTabletSettingsAPI.dll*) | tee "$work/sums"
  if [ -e "$work/first" ] && ! cmp "$work/first" "$work/sums"; then
    echo "reproduce: the two builds differ" >&2
    exit 1
  fi
  mv "$work/sums" "$work/first"
done
echo "reproduce: the two builds are the same"
