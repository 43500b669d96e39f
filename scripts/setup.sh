#!/usr/bin/env bash
# Installs the Debian 12 packages the builds and tests need, only those that are missing
# (--gallery: and the browser that run.sh --gallery checks its page with).
set -euo pipefail
packages=(cmake ninja-build make g++ clang libclang-rt-14-dev clang-format
          g++-mingw-w64-x86-64-posix mingw-w64-tools binutils-mingw-w64-x86-64
          wine wine64 xvfb xauth xdotool imagemagick
          googletest libgtest-dev libbenchmark-dev libssl-dev gcovr python3 python3-pil)
# The gallery (run.sh --gallery) checks its page in a real browser; nothing else needs one.
[ "${1:-}" = --gallery ] && packages+=(chromium)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "setup: installing ${missing[*]}"
  sudo_cmd=""
  [ "$(id -u)" -eq 0 ] || sudo_cmd="sudo"
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq --no-install-recommends \
    "${missing[@]}" >/dev/null
fi
