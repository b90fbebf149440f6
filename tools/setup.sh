# Sourced by run.sh and test.sh, in the top folder: the packages that both need, and installation on
# Debian 12 or newer.
# shellcheck shell=bash

build_packages=(g++ cmake ninja-build pkg-config qt6-base-dev libsqlite3-dev libgps-dev cmark-gfm)
# Japanese letters, and Qt's own texts in Japanese. Qt and SQLite themselves came with the above.
run_packages=(fonts-vlgothic qt6-translations-l10n)

say() { printf '%s\n' "$*" >&2; }

# Installs those of the named packages that are missing.
require_packages() {
  if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    say "This machine has no apt. Install what Debian calls: $*"
    say "and build with: cmake --preset release && cmake --build build/release"
    exit 1
  fi
  local installed missing
  # dpkg-query fails when one of them is unknown to it, and still lists the others.
  installed=$( (dpkg-query -W -f='${db:Status-Status} ${Package}\n' "$@" 2>/dev/null || true) |
    sed -n 's/^installed //p')
  missing=$(comm -13 <(sort <<<"$installed") <(printf '%s\n' "$@" | sort -u) | xargs)
  [ -n "$missing" ] || return 0

  local as_root=(env DEBIAN_FRONTEND=noninteractive)
  if [ "$(id -u)" != 0 ]; then
    if ! command -v sudo >/dev/null; then
      say "Packages are missing, and there is no sudo. As root: apt-get install $missing"
      exit 1
    fi
    as_root=(sudo "${as_root[@]}")
  fi
  say "Installing: $missing"
  "${as_root[@]}" apt-get -q -o DPkg::Lock::Timeout=500 update >&2
  # shellcheck disable=SC2086
  "${as_root[@]}" apt-get -q -y -o DPkg::Lock::Timeout=500 install --no-install-recommends \
    $missing >&2
}

# How many compilers run at a time: one a core, each with a gigabyte of memory.
build_jobs() {
  local gigabytes
  gigabytes=$(awk '/^MemTotal/ {print int($2 / 1000000)}' /proc/meminfo)
  echo $((gigabytes < 1 ? 1 : gigabytes < $(nproc) ? gigabytes : $(nproc)))
}

# build PRESET [CMAKE OPTION]...
build() {
  local preset=$1
  [ -e "build/$preset/build.ninja" ] || cmake --preset "$preset" "${@:2}"
  cmake --build "build/$preset" -j "$(build_jobs)"
}
