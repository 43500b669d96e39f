#!/usr/bin/env bash
# The main job: installs what is missing, builds the Windows preset and runs kivhost (an
# application on a KIV printer) under Wine. kivhost opens the printing-preferences sheet through
# the spooler (under Xvfb when there is no display), saves one screenshot per page in
# build/screenshots, presses OK, stores the settings as the printer's per-user default and prints
# a summary: the printer, its pages, what was applied, and where the screenshots and the
# plug-in's log are. Extra arguments go to
# kivhost (e.g. --model J7, --verbose, --show-record, --headless for no window; --help lists
# them). It exits with kivhost's code (--help lists them), 1 for its own bad arguments and 2
# when the build or a model of the gallery failed.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh
mkdir -p build
echo "== building the windows preset (log: build/run-build.log)"
if ! { cmake --preset windows && cmake --build build/windows -j2; } >build/run-build.log 2>&1; then
  tail -40 build/run-build.log
  exit 2
fi

export WINEPREFIX="$PWD/build/windows/wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
# Wine's desktop outlives the program by a few seconds; stopped while xvfb-run's display is still
# there, it cannot report "X connection ... broken" when the display goes.
wine_then_stop=(sh -c 'wine "$@"; status=$?; wineserver -k >/dev/null 2>&1; exit "$status"' wine)

if [ "${1:-}" = --gallery ]; then
  [ $# -eq 1 ] || { echo "run.sh: --gallery takes no other argument" >&2; exit 1; }
  bash scripts/setup.sh --gallery
  gallery=build/gallery
  rm -rf "$gallery"
  mkdir -p "$gallery"
  # Every model's sheet opened twice in one host process: Ctrl+Shift and a click on the Version
  # page's picture (IDC_VERSION_LOGO) switch admin mode, which adds the Admin page to the second
  # opening. OK on a printer of the gallery's own makes the host print the model's
  # capabilities, and leaves the settings kept for the model's usual printer as they were.
  gallery_models() {
    wineserver -p
    wine build/windows/kivhost.exe --list-models </dev/null | tr -d '\r' >"$gallery/models.txt"
    local model dir status
    while IFS= read -r model; do
      [ -n "$model" ] || continue
      dir="$gallery/${model// /_}"
      mkdir -p "$dir"
      printf '%s\n' "$model" >"$dir/model"
      echo "$dir" >>"$gallery/folders.txt"
      echo "== $model"
      status=0
      timeout 120 wine build/windows/kivhost.exe --model "$model" --printer "KIV GALLERY $model" \
        --log-lines 0 --page Version --hold ctrl+shift --click 1057 --reopen \
        --screenshots "$dir/shots" --press ok </dev/null >"$dir/run.log" 2>&1 || status=$?
      echo "$status" >"$dir/status"
      [ "$status" -eq 0 ] || echo "   failed with exit $status: $dir/run.log"
    done <"$gallery/models.txt"
    # One application's view: Wine's print dialog with the pages opened from Properties.
    timeout 60 wine build/windows/kivprintdlg.exe --printer "KIV GALLERY TRX418A CUT" \
      --page Print --screenshot "$(winepath -w "$PWD/$gallery/print_dialog.png")" \
      </dev/null >"$gallery/print_dialog.log" 2>&1 || echo "   print dialog failed: $gallery/print_dialog.log"
    # Before xvfb-run takes the display away, or Wine's desktop complains on the terminal.
    wineserver -k
  }
  export gallery
  runner=()
  [ -n "${DISPLAY:-}" ] || runner=(xvfb-run -a -s "-screen 0 1280x1024x24")
  wineserver -k >/dev/null 2>&1 || true
  started=$SECONDS
  status=0
  # xvfb-run is a POSIX sh script, which drops exported functions: pass the text instead.
  "${runner[@]}" bash -c "$(declare -f gallery_models); gallery_models" || status=$?
  wineserver -k >/dev/null 2>&1 || true
  captured=$((SECONDS - started))
  folders=()
  [ -f "$gallery/folders.txt" ] && mapfile -t folders <"$gallery/folders.txt"
  ((${#folders[@]})) || { echo "run.sh: kivhost listed no models" >&2; exit 2; }
  python3 scripts/gallery.py "$gallery/index.html" "${folders[@]}" --seconds "$captured"
  # A real browser's rendering of the page, to look at.
  chromium --headless --no-sandbox --hide-scrollbars --window-size=1600,3000 \
    --screenshot="$PWD/$gallery/check.png" "file://$PWD/$gallery/index.html" \
    >"$gallery/chromium.log" 2>&1 || echo "run.sh: chromium failed, see $gallery/chromium.log"
  failed=0
  for folder in "${folders[@]}"; do
    [ "$(cat "$folder/status" 2>/dev/null)" = 0 ] || failed=$((failed + 1))
  done
  echo "gallery: $PWD/$gallery/index.html, browser view $PWD/$gallery/check.png"
  echo "gallery: ${#folders[@]} models, $failed failed, captured in $captured s, $SECONDS s in all"
  if [ "$status" -ne 0 ] || [ "$failed" -ne 0 ]; then exit 2; fi
  exit 0
fi
# The defaults below only where the user's arguments do not choose, so the echoed command line
# names each option once and says what the run does.
given() {
  local option=$1 arg
  shift
  for arg in "$@"; do [ "$arg" = "$option" ] && return 0; done
  return 1
}
host_args=()
given --model "$@" || host_args+=(--model "TRX418A CUT")
given --verbosity "$@" || host_args+=(--verbosity 7)
runner=()
if ! given --headless "$@"; then
  given --screenshots "$@" || host_args+=(--screenshots build/screenshots)
  given --press "$@" || host_args+=(--press ok)
  [ -n "${DISPLAY:-}" ] || runner=(xvfb-run -a -s "-screen 0 1280x1024x24")
fi
shown=""
for arg in "${host_args[@]}" "$@"; do
  case $arg in
    *[[:space:]]* | "") shown+=" \"$arg\"" ;;
    *) shown+=" $arg" ;;
  esac
done

# A wineserver left from an earlier run keeps the display its desktop started with (or none);
# start clean and leave nothing running behind, so the next user of the prefix brings its own.
wineserver -k >/dev/null 2>&1 || true
echo "== kivhost$shown (Wine's own messages: build/wine.log)"
status=0
"${runner[@]}" "${wine_then_stop[@]}" build/windows/kivhost.exe "${host_args[@]}" "$@" \
  2>build/wine.log || status=$?
wineserver -k >/dev/null 2>&1 || true
exit "$status"
