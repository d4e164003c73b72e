# shellcheck shell=bash
# The steps that ./run and ./test share. Sourced with `root` set to the folder of the sources.
# Everything here speaks on standard error and leaves standard input alone.

: "${root:?}"

say() { echo "$@" >&2; }

# ensure_packages LIST...: installs the Debian packages named in the files, one a line, that are not
# installed yet.
ensure_packages() {
  local name missing=() as_root=()
  if ! command -v dpkg-query > /dev/null; then
    say "This is no Debian system: make sure that the counterparts of these packages are installed."
    say "$(sort -u "$@" | tr '\n' ' ')"
    return
  fi
  local installed
  installed=$(dpkg-query -W -f '${db:Status-Status} ${binary:Package}\n' | sed -n 's/^installed //p')
  while read -r name; do
    grep -qE "^${name//+/\\+}(:.*)?$" <<< "$installed" || missing+=("$name")
  done < <(sort -u "$@")
  [ ${#missing[@]} -gt 0 ] || return 0

  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo > /dev/null; then
      say "Some packages are missing and only the administrator can install them:"
      say "  apt-get install ${missing[*]}"
      return 1
    fi
    as_root=(sudo)
  fi
  say "Installing ${missing[*]}"
  quietly "${as_root[@]}" apt-get update || return
  quietly "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install --yes --no-install-recommends "${missing[@]}"
}

# build PRESET [TARGET...]: brings build/PRESET up to date.
build() {
  local preset=$1 tree="$root/build/$1"
  shift
  # A tree that was configured elsewhere, for sources that were moved or copied since, is of no use.
  if [ -e "$tree/CMakeCache.txt" ] &&
    ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$tree/CMakeCache.txt"; then
    rm -rf "$tree"
  fi
  if [ ! -e "$tree/build.ninja" ]; then
    say "Building Horalo ($preset), which takes some minutes the first time"
    (cd "$root" && quietly cmake --preset "$preset") || return
  fi
  (cd "$root" && quietly cmake --build --preset "$preset" ${1+--target "$@"})
}

# quietly COMMAND...: shows what the command printed only if it fails.
quietly() {
  local log status=0
  log=$(mktemp) || return
  "$@" < /dev/null > "$log" 2>&1 || status=$?
  if [ $status -ne 0 ]; then
    cat "$log" >&2
    say "Failed: $*"
  fi
  rm -f "$log"
  return $status
}
