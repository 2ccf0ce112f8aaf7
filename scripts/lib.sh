# Shared by ./run, ./test and the other scripts: quiet steps, packages, builds.
# Source this file with `set -euo pipefail`.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
logs=$root/build/logs
mkdir -p "$logs"

say() { printf '%s\n' "$*" >&2; }

# step TITLE LOG COMMAND...: runs the command with its output in a log. Prints the
# title after three seconds, and the end of the log if the command fails.
step() {
  local title=$1 log=$logs/$2.log notice status=0
  shift 2
  # Not `sleep`, which would outlive the step and keep the streams open.
  (read -r -t 3 _ <> <(:) || say "$title ...") &
  notice=$!
  "$@" >"$log" 2>&1 </dev/null || status=$?
  kill "$notice" 2>/dev/null || true
  wait "$notice" 2>/dev/null || true
  if [ "$status" -ne 0 ]; then
    say "$title failed (exit $status). The end of $log:"
    tail -n 60 "$log" >&2
    return "$status"
  fi
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

packages_run=(
  g++ cmake ninja-build python3 ca-certificates
  libboost1.81-dev nlohmann-json3-dev libcli11-dev libpng-dev libjpeg62-turbo-dev
)
packages_test=(
  git clang clang-format clang-tidy libclang-rt-14-dev libgtest-dev libgmock-dev
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
