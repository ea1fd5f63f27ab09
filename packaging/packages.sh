# Sourced by the scripts that need packages.

# Installs those of the named Debian packages that are missing.
install_missing() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  echo "Installing: ${missing[*]}"
  local root=()
  if [ "$(id -u)" -ne 0 ]; then
    root=(sudo)
    command -v sudo >/dev/null || {
      echo "Please install these packages as root and start again." >&2
      exit 1
    }
  fi
  "${root[@]}" apt-get update -qq
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -qq -y --no-install-recommends "${missing[@]}" >/dev/null
}

# Without a home to write in, the compiler cache and the panel's COM16 have no place.
if [ ! -w "${HOME:-/nowhere}" ]; then
  export HOME="$PWD/build/home"
  mkdir -p "$HOME"
fi

build_packages=(g++ cmake ninja-build ccache qt6-base-dev qt6-serialport-dev libnova-dev
  libxlsxwriter-dev)
