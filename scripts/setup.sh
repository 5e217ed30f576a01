#!/usr/bin/env bash
# setup.sh [demo|test|node|all]: installs from Debian's packages what is missing for that purpose; does
# nothing where all is there. demo: to cross-compile and run the programs; test: to build and run the
# tests, too; node: to build and test the package for Node as well; all, and by default: whatever a
# script of the project uses.
set -euo pipefail

purpose=${1:-all}
packages=(
  ca-certificates
  cmake
  g++-mingw-w64-x86-64-posix
  libcli11-dev
  libfmt-dev
  ninja-build
  nlohmann-json3-dev
  wine64
)
case $purpose in
  demo) ;;
  test | node | all)
    packages+=(
      clang
      clang-14
      doxygen
      fonts-wine
      g++
      googletest
      libclang-rt-14-dev
      lld
      llvm
      llvm-14
      make
      pkgconf
      python3
      valgrind
      xvfb
    )
    ;;
  *)
    echo "setup: no such purpose: $purpose" >&2
    exit 2
    ;;
esac
if [ "$purpose" = node ] || [ "$purpose" = all ]; then
  # Whatever Node is there will do, and need not be Debian's.
  command -v node >/dev/null || packages+=(nodejs)
  command -v npm >/dev/null || packages+=(npm)
fi
if [ "$purpose" = all ]; then
  packages+=(
    clang-format
    clang-tidy
    imagemagick
    iwyu
    libasio-dev
  )
fi

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
