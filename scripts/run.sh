#!/usr/bin/env bash
# The main job: installs what is missing, builds the Windows preset and runs kivhost (the
# universal driver's stand-in) on KivUI.dll under Wine. kivhost opens the printing-preferences
# sheet (under Xvfb when there is no display), saves one screenshot per page in
# build/screenshots, presses OK, and prints the decoded settings record and the start of the
# plug-in's log. Extra arguments go to kivhost (e.g. --model J7, or --headless for no window).
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh
mkdir -p build
echo "== configuring and building the windows preset"
if ! cmake --preset windows >build/run-configure.log 2>&1; then
  cat build/run-configure.log
  exit 1
fi
cmake --build build/windows -j2

export WINEPREFIX="$PWD/build/windows/wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
host_args=(--model "TRX418A CUT" --verbosity 7)
headless=0
for arg in "$@"; do [ "$arg" = --headless ] && headless=1; done
runner=()
if [ "$headless" -eq 0 ]; then
  rm -rf build/screenshots
  host_args+=(--screenshots build/screenshots --press ok)
  [ -n "${DISPLAY:-}" ] || runner=(xvfb-run -a -s "-screen 0 1280x1024x24")
fi

# A wineserver left from an earlier run keeps the display its desktop started with; start clean
# and leave nothing running behind, so the next user of the prefix can bring its own display.
wineserver -k >/dev/null 2>&1 || true
echo "== kivhost ${host_args[*]} $*"
status=0
"${runner[@]}" wine build/windows/kivhost.exe "${host_args[@]}" "$@" || status=$?
wineserver -k >/dev/null 2>&1 || true
exit "$status"
