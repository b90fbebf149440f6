#!/usr/bin/env bash
# Looks at the form of the sources, builds everything with warnings as errors, gives each fuzz
# target a few seconds, and runs every test.
#   ./test.sh              what a change needs before it's shared
#   ./test.sh --ci         what CI runs: besides, clang-tidy, every test again and two minutes at
#                          random with the address and undefined behaviour sanitizers, and the
#                          receiver's monitor with the thread's
#   ./test.sh --full       besides, the package, and the names of all controls
# Packages that are missing are installed on the way, as root or by sudo.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")"
. tools/setup.sh
. tools/gates.sh
fuzz_seconds=${FUZZ_SECONDS:-5}
export LC_ALL=C.UTF-8  # xdotool finds no window by a Japanese title in the plain C locale
level=${1:-}
case $level in
  '' | --ci | --full) ;;
  *)
    say "Usage: ./test.sh [--ci | --full]"
    exit 2
    ;;
esac

require_packages "${build_packages[@]}" "${run_packages[@]}" "${test_packages[@]}"
check_form

build fuzz
for target in build/fuzz/fuzz/*_fuzz; do
  say "Fuzzing for $fuzz_seconds s: $(basename "$target")"
  "$target" -max_total_time="$fuzz_seconds" -artifact_prefix="$target-" >"$target.log" 2>&1 ||
    { cat "$target.log"; exit 1; }
done

run_tests dev
[ -n "$level" ] || exit 0
check_habits
run_tests asan
play_at_random
check_threads
[ "$level" = --full ] || exit 0
check_package
check_names
