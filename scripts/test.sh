#!/usr/bin/env bash
# Runs every test tier (native, fuzz, benchmarks, Windows under Wine) and ends with one
# "N passed, N failed" line that covers them all.
set -uo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh || { echo "setup failed"; exit 1; }

passed=0
failed=0
failures=()
pass() { passed=$((passed + $1)); }
fail() { failed=$((failed + $1)); failures+=("$2"); }

# Adds a GoogleTest run's counts from its output file; a run that printed no summary failed.
tally_gtest() {
  local name=$1 out=$2 rc=$3 p f
  p=$(grep -aoE '^\[  PASSED  \] [0-9]+' "$out" | grep -oE '[0-9]+$' | tail -1)
  local names
  # One "[  FAILED  ] Suite.Test (N ms)" line per failed test, with or without --gtest_brief.
  names=$(grep -aoE '^\[  FAILED  \] [^ ]+ \([0-9]+ ms\)' "$out" | awk '{print $4}' | sort -u)
  f=$(printf '%s' "$names" | grep -c .)
  pass "${p:-0}"
  if [ "$f" -gt 0 ]; then
    fail "$f" "$name: $(echo $names)"
  elif [ "$rc" -ne 0 ] || [ -z "$p" ]; then
    fail 1 "$name: exited with $rc"
    tail -20 "$out"
  fi
}

build() {  # preset, log name
  if ! { cmake --preset "$1" >"build/$1-configure.log" 2>&1 &&
         cmake --build "build/$1" -j2 >"build/$1-build.log" 2>&1; }; then
    cat "build/$1-configure.log" "build/$1-build.log" | grep -aE 'error|Error' | head -30
    fail 1 "build of preset $1"
    return 1
  fi
}

mkdir -p build

echo "== native tests (ASan/UBSan, line coverage)"
if build native; then
  # Counts left by an earlier run or an older build would blur the figure.
  find build/native -name '*.gcda' -delete
  timeout 900 ./build/native/kiv_native_tests --gtest_brief=1 >build/native-tests.log 2>&1
  tally_gtest native build/native-tests.log $?
  grep -aE '^\[  (PASSED|FAILED) ' build/native-tests.log
  # Core code only: platform files are not built natively and are tested under Wine.
  gcovr -r . build/native -j2 --filter 'src/' --exclude '.*_win\.(cpp|h)$' --exclude 'src/win/' \
    --print-summary -o build/native-coverage.txt >build/native-coverage.log 2>&1
  coverage=$(sed -n 's/^lines: \([0-9.]*\)%.*/\1/p' build/native-coverage.log)
  if [ -z "$coverage" ]; then
    fail 1 "core line coverage not measured"; tail -5 build/native-coverage.log
  else
    echo "coverage: core lines $coverage% (target >= 95%)"
    if awk -v c="$coverage" 'BEGIN { exit !(c >= 95) }'; then
      pass 1
    else
      fail 1 "core line coverage $coverage% below 95% (per file: build/native-coverage.txt)"
    fi
  fi
fi

echo "== fuzzers (fixed run counts)"
if build fuzz; then
  for fuzzer in build/fuzz/*_fuzzer; do
    name=$(basename "$fuzzer")
    corpus=$(mktemp -d)
    seeds="fuzz/corpus/${name/transfer_log_fuzzer/transfer_fuzzer}"
    [ -d "$seeds" ] && cp -r "$seeds/." "$corpus/"
    runs=50000
    # With the log on every line and dump is formatted: ten times the cost of a transfer.
    [ "$name" = transfer_log_fuzzer ] && runs=3000
    # The speed is taken over the whole run (libFuzzer's own figure counts whole seconds only).
    started=$(date +%s%N)
    if timeout 600 "$fuzzer" -runs=$runs -max_len=8192 -seed=1 "$corpus" >"build/$name.log" 2>&1; then
      pass 1
      echo "$name: ok, $((runs * 1000000000 / ($(date +%s%N) - started))) inputs/s"
    else
      fail 1 "fuzzer $name"; tail -30 "build/$name.log"
    fi
    rm -rf "$corpus"
  done
fi

echo "== benchmarks (ratios against a baseline in the same run)"
if build bench; then
  for bench in build/bench/*_bench; do
    name=$(basename "$bench")
    if timeout 600 "$bench" --benchmark_min_time=0.2 >"build/$name.log" 2>&1; then
      pass 1
    else
      fail 1 "benchmark $name"
    fi
    grep -a 'ratio:' "build/$name.log"
  done
fi

echo "== Windows tests under Wine"
if build windows; then
  export WINEPREFIX="$PWD/build/windows/wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
  wineserver -k >/dev/null 2>&1
  runner=()
  [ -n "${DISPLAY:-}" ] || runner=(xvfb-run -a -s "-screen 0 1280x1024x24")
  # Wine's desktop outlives each program by a few seconds; stopped while xvfb-run's display is
  # still there, it cannot report "X connection ... broken" when the display goes.
  wine_then_stop=(sh -c 'wine "$@"; status=$?; wineserver -k >/dev/null 2>&1; exit "$status"' wine)
  timeout 1500 "${runner[@]}" "${wine_then_stop[@]}" build/windows/kiv_win_tests.exe \
    --gtest_brief=1 >build/windows-tests.log 2>&1
  tally_gtest windows build/windows-tests.log $?
  grep -aE '^\[  (PASSED|FAILED) ' build/windows-tests.log
  wineserver -k >/dev/null 2>&1
  # The sheet's opening time against a baseline of the same sheet whose pages (the plug-in's own
  # dialog templates) fill nothing, so Wine's cost per control window is on both sides. kivhost
  # exits 4 when the ratio is over its 1.3 target: that is printed, not failed; a run that could
  # not measure is a failure.
  timeout 600 "${runner[@]}" "${wine_then_stop[@]}" build/windows/kivhost.exe --time --time-runs 7 \
    --press cancel --log-lines 0 >build/sheet-time.log 2>&1
  rc=$?
  grep -a 'ratio:' build/sheet-time.log
  if [ "$rc" -eq 0 ] || [ "$rc" -eq 4 ]; then
    pass 1
  else
    fail 1 "sheet time (kivhost --time, exit $rc)"; grep -a -E '^time|error' build/sheet-time.log
  fi
  wineserver -k >/dev/null 2>&1
  # The full sheet opened and cancelled 30 times in one process, under common controls 6 (as
  # applications run) and 5: what each opening leaves behind (heap bytes, handles, GDI objects)
  # is printed; kivhost exits 5 when it is over 32 KB of heap or any handle or GDI object.
  for comctl in 6 5; do
    timeout 600 "${runner[@]}" "${wine_then_stop[@]}" build/windows/kivhost.exe \
      --comctl "$comctl" --model ZLD90VII --soak 30 --press cancel --log-lines 0 \
      >"build/sheet-soak-$comctl.log" 2>&1
    rc=$?
    grep -a '^soak:' "build/sheet-soak-$comctl.log" | sed "s/^soak:/soak (common controls $comctl):/"
    if [ "$rc" -eq 0 ]; then
      pass 1
    else
      fail 1 "sheet soak, common controls $comctl (kivhost --soak, exit $rc)"
      grep -a -E '^soak|error' "build/sheet-soak-$comctl.log"
    fi
    wineserver -k >/dev/null 2>&1
  done
  # Seeded random user steps on every page, several sequences per opening, each ended with
  # Apply: a refused apply must name its page; an accepted one must save a record that loads and
  # saves to the same bytes and reopens with the same choices. Every model in each of the port's
  # three states (no language monitor, bidirectional, not bidirectional), each state with its own
  # seeds. A violation prints its seed and the command that replays it; kivhost exits 7.
  # Without a window manager Wine waits 2 s for each closed top-level window it leaves to one
  # (the sheet, every message box), so kivhost's windows are unmanaged for this step only.
  x11key='HKCU\Software\Wine\AppDefaults\kivhost.exe\X11 Driver'
  wine reg add "$x11key" /v Managed /d N /f >/dev/null 2>&1
  wineserver -k >/dev/null 2>&1
  : >build/sheet-property.log
  rc=0
  seed=1000
  for port in bidi no-bidi none; do
    for model in J7 ZLD90VII TRX430ATF "TRX418A CUT"; do
      timeout 120 "${runner[@]}" "${wine_then_stop[@]}" build/windows/kivhost.exe \
        --model "$model" --port "$port" --printer "KIV PROPERTY $model" --property 42 \
        --seed "$seed" --log-lines 0 >>build/sheet-property.log 2>&1 || rc=$?
      wineserver -k >/dev/null 2>&1
    done
    seed=$((seed + 1000))
  done
  wine reg delete "$x11key" /f >/dev/null 2>&1
  wineserver -k >/dev/null 2>&1
  grep -a -A3 'property violation' build/sheet-property.log
  awk '/^property test:/ { n += $3; m += $5; v += $7; runs++ }
       END { printf "property test: %d sequences, %d refused, %d violations\n", n, m, v
             exit (runs == 12 && v == 0) ? 0 : 1 }' build/sheet-property.log || rc=1
  if [ "$rc" -eq 0 ]; then
    pass 1
  else
    fail 1 "sheet property test (kivhost --property, exit $rc)"
  fi
fi

for check in scripts/check_*.py; do
  [ -e "$check" ] || continue
  if python3 "$check" >"build/$(basename "$check").log" 2>&1; then
    pass 1
  else
    fail 1 "$(basename "$check")"; cat "build/$(basename "$check").log"
  fi
done

# Tests against code in non-blank, non-comment lines; reported, not enforced.
code_lines() { git ls-files "$@" | xargs -r cat | grep -c -v -E '^\s*(//.*)?$'; }
code=$(code_lines 'src/*.cpp' 'src/*.h' 'tools/*.cpp' 'tools/*.h')
tests=$(code_lines 'tests/*.cpp' 'tests/*.h' 'fuzz/*.cpp')
if [ "${code:-0}" -gt 0 ]; then
  echo "test share: $((tests * 100 / code))% of the code ($tests of $code lines, target <= 33%)"
fi

for f in "${failures[@]}"; do echo "FAILED: $f"; done
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
