# Sourced by test.sh, in the top folder, after setup.sh: what is looked at besides the tests.
# shellcheck shell=bash

test_packages=(libgtest-dev libbenchmark-dev clang clang-format clang-tidy libclang-rt-dev shellcheck
               gpsd xvfb xauth matchbox-window-manager xdotool scrot sqlite3 at-spi2-core dbus-daemon
               python3-gi gir1.2-atspi-2.0)

# The tools of other releases find other things; those of Debian 12 are the measure.
measured_by() {  # TOOL
  "$1" --version | grep -q 'version 14\.' && return
  say "Left out: $1 is not version 14, by which these sources are measured"
  return 1
}

check_form() {
  say "Looking at the form of the sources"
  shellcheck --check-sourced --external-sources run.sh test.sh .ci/run tools/rooms \
    tools/package.sh tools/try_package.sh tools/manual-pictures
  ! measured_by clang-format ||
    find src tests bench fuzz reliability \( -name '*.cpp' -o -name '*.h' \) \
      -exec clang-format --dry-run --Werror {} +
}

check_habits() {
  measured_by clang-tidy || return 0
  say "clang-tidy"
  run-clang-tidy -quiet -p build/dev -j "$(build_jobs)" "$PWD/src/.*" \
    >build/dev/clang-tidy.log 2>&1 || { grep -A5 -E 'warning:|error:' build/dev/clang-tidy.log; return 1; }
}

check_package() {
  tools/package.sh
  tools/try_package.sh build/release/morvenly_*.deb
}

# The receiver's monitor and the posting of its commands.
check_threads() {
  cmake --preset tsan
  cmake --build build/tsan -j "$(build_jobs)" --target position_test
  build/tsan/tests/position_test
}

# Every control has a name for those who cannot see it.
check_names() {
  say "Walking the screens by at-spi"
  tools/walk-screens build/dev/morvenly
}

# Two minutes of taps, keys and turns by chance, in the build of the sanitizers, and the same ones
# each time: what they find is the change's.
play_at_random() {
  say "Playing at random"
  LSAN_OPTIONS=suppressions=$PWD/tests/lsan.supp \
    build/asan/reliability/hands/random_hands --seconds 120 --seed 2
}

# run_tests PRESET
run_tests() {
  build "$1"
  ctest --test-dir "build/$1" -j "$(nproc)" --output-on-failure
}
