#!/usr/bin/env bash
# Builds everything with warnings as errors, gives each fuzz target a few seconds, and runs every
# test. Packages that are missing are installed on the way, as root or by sudo.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")"
. tools/setup.sh
fuzz_seconds=${FUZZ_SECONDS:-5}
export LC_ALL=C.UTF-8  # xdotool finds no window by a Japanese title in the plain C locale

require_packages "${build_packages[@]}" "${run_packages[@]}" "${test_packages[@]}"

build fuzz
for target in build/fuzz/fuzz/*_fuzz; do
  say "Fuzzing for $fuzz_seconds s: $(basename "$target")"
  "$target" -max_total_time="$fuzz_seconds" -artifact_prefix="$target-" >"$target.log" 2>&1 ||
    { cat "$target.log"; exit 1; }
done

build dev
ctest --test-dir build/dev -j 2 --output-on-failure
