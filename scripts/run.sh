#!/usr/bin/env bash
# The main job: installs what is missing, builds the Windows preset and runs kivhost (the
# universal driver's stand-in) on KivUI.dll under Wine. kivhost opens the printing-preferences
# sheet (under Xvfb when there is no display), saves one screenshot per page in
# build/screenshots, presses OK and prints a summary: the printer, its pages, what was applied,
# and where the screenshots, the saved devmode and the plug-in's log are. Extra arguments go to
# kivhost (e.g. --model J7, --verbose, --show-record, --headless for no window; --help lists
# them).
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh
mkdir -p build
echo "== building the windows preset (log: build/run-build.log)"
if ! { cmake --preset windows && cmake --build build/windows -j2; } >build/run-build.log 2>&1; then
  tail -40 build/run-build.log
  exit 1
fi

export WINEPREFIX="$PWD/build/windows/wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
host_args=(--model "TRX418A CUT" --verbosity 7)
headless=0
for arg in "$@"; do [ "$arg" = --headless ] && headless=1; done
runner=()
if [ "$headless" -eq 0 ]; then
  host_args+=(--screenshots build/screenshots --press ok)
  [ -n "${DISPLAY:-}" ] || runner=(xvfb-run -a -s "-screen 0 1280x1024x24")
fi

# A wineserver left from an earlier run keeps the display its desktop started with (or none);
# start clean and leave nothing running behind, so the next user of the prefix brings its own.
wineserver -k >/dev/null 2>&1 || true
echo "== kivhost ${host_args[*]}${*:+ $*} (Wine's own messages: build/wine.log)"
status=0
"${runner[@]}" wine build/windows/kivhost.exe "${host_args[@]}" "$@" 2>build/wine.log || status=$?
wineserver -k >/dev/null 2>&1 || true
exit "$status"
