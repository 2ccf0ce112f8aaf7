# Shared by ./run, ./test and the other scripts: quiet steps, packages, builds.
# Source this file with `set -euo pipefail`.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
logs=$root/build/logs
mkdir -p "$logs"

say() { printf '%s\n' "$*" >&2; }

# The exit status of a test that cannot run on this machine.
cannot=77
# The seconds and title of each step, for print_steps.
steps=()

# step TITLE LOG COMMAND...: runs the command with its output in a log. Prints the time that it took,
# and the end of the log if it fails.
step() {
  local title=$1 log=$logs/$2.log status=0 begun=$EPOCHREALTIME
  shift 2
  "$@" >"$log" 2>&1 </dev/null || status=$?
  local seconds
  seconds=$(awk -v a="$begun" -v b="$EPOCHREALTIME" 'BEGIN { printf "%.1f", b - a }')
  steps+=("$(printf '%7s s  %s' "$seconds" "$title")")
  if [ "$status" -ne 0 ] && [ "$status" -ne "$cannot" ]; then
    say "$title failed (exit $status) after $seconds s. Of $log:"
    # A runner of tests tells first what failed.
    { grep -A 40 -E '^(FAILED|not ok) ' "$log" || tail -n 60 "$log"; } | head -n 200 >&2
    return "$status"
  fi
  say "$title: $seconds s"
  return "$status"
}

print_steps() {
  say ""
  say "The steps, the longest first:"
  printf '%s\n' "${steps[@]}" | sort -rn >&2
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

packages_run=(
  g++ cmake ninja-build python3 ca-certificates
  libboost1.81-dev nlohmann-json3-dev libcli11-dev libpng-dev libjpeg62-turbo-dev
)
packages_test=(
  git lld clang clang-format clang-tidy libclang-rt-14-dev libgtest-dev libgmock-dev
  libplist-utils chromium
)

# install_packages NAME...: installs the missing ones of these packages.
install_packages() {
  local missing=() status
  # One query for all packages, because every start waits for it.
  status=$(dpkg-query -W -f='${binary:Package} ${db:Status-Status}\n' "$@" 2>/dev/null |
    sed 's/:[a-z0-9]* / /' || true)
  for package in "$@"; do
    grep -qx "$package installed" <<<"$status" || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  step "Reading the package lists" apt-update as_root apt-get update
  step "Installing ${missing[*]}" apt-install \
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
}

# Installs Debian's Node and npm if the machine has none. --test-reporter needs Node 18.15, or 20 and
# later.
install_node() {
  command -v node >/dev/null || install_packages nodejs
  command -v npm >/dev/null || install_packages npm
  if ! node -e '
    const [major, minor] = process.versions.node.split(".").map(Number);
    process.exit(major >= 20 || (major === 18 && minor >= 15) ? 0 : 1)'; then
    say "Node $(node --version) is not supported (expected 18.15, or 20 and later)." \
      "Remove it to install Debian's version."
    return 1
  fi
}

# newer_than STAMP PATH...: true if the stamp is missing or a file below the paths is newer.
newer_than() {
  local stamp=$1
  shift
  [ ! -e "$stamp" ] || [ -n "$(find "$@" -newer "$stamp" -print -quit)" ]
}

npm_install_in() {
  local folder=$1
  if newer_than "$folder/node_modules/.installed" "$folder/package-lock.json"; then
    step "Installing the Node packages of ${folder#"$root"/}" "npm-$(basename "$folder")" \
      npm ci --prefix "$folder" --no-audit --no-fund
    touch "$folder/node_modules/.installed"
  fi
}

build_page() {
  local ui=$root/settings/web/ui
  if newer_than "$ui/dist/.built" \
    "$ui/src" "$ui/build.mjs" "$ui/package.json" "$ui/package-lock.json"; then
    install_node
    npm_install_in "$ui"
    step "Building the page" page npm run --prefix "$ui" build
    touch "$ui/dist/.built"
  fi
}

# build PRESET [TARGET...]
build() {
  local preset=$1
  shift
  local configured=$root/build/$preset/.configured
  if [ ! -e "$root/build/$preset/build.ninja" ] ||
    newer_than "$configured" "$root/CMakePresets.json"; then
    step "Configuring the $preset build" "configure-$preset" \
      cmake -S "$root" --preset "$preset"
    touch "$configured"
  fi
  step "Building ($preset)" "build-$preset" \
    cmake --build "$root/build/$preset" ${1:+--target "$@"}
}
