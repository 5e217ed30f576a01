#!/usr/bin/env bash
# Installs from Debian's packages what is missing to build and test; does nothing where all is there.
set -euo pipefail

packages=(
  ca-certificates
  clang
  clang-14
  clang-format
  clang-tidy
  cmake
  doxygen
  fonts-wine
  g++
  g++-mingw-w64-x86-64-posix
  googletest
  imagemagick
  libasio-dev
  libclang-rt-14-dev
  libcli11-dev
  libfmt-dev
  lld
  llvm
  llvm-14
  make
  ninja-build
  nlohmann-json3-dev
  pkgconf
  python3
  valgrind
  wine64
  xvfb
)

missing=()
for package in "${packages[@]}"; do
  state=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$state" = installed ] || missing+=("$package")
done
if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "Installing: ${missing[*]}"
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update --quiet
"${as_root[@]}" apt-get install --quiet --yes --no-install-recommends "${missing[@]}"
