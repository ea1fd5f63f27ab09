# Sourced by the scripts that need packages; they run in the project's folder.

# Installs those of the named Debian packages that are missing.
install_missing() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  local root=() install=(apt-get install -y --no-install-recommends "${missing[@]}")
  [ "$(id -u)" -eq 0 ] || root=(sudo)
  mkdir -p build
  if [ "${root[*]}" = sudo ] && ! command -v sudo >/dev/null; then
    echo "Packages are missing, and there is no sudo. Please do this as root and start again:" >&2
  else
    echo "Installing: ${missing[*]}"
    { "${root[@]}" apt-get update && "${root[@]}" env DEBIAN_FRONTEND=noninteractive "${install[@]}"; } \
      </dev/null >build/packages.log 2>&1 && return
    echo "Packages are missing and cannot be installed (build/packages.log tells why). With a" \
      "network, as root:" >&2
  fi
  echo "  apt-get update && ${install[*]}" >&2
  exit 1
}

# Without a home to write in, the compiler cache has no place.
if [ ! -w "${HOME:-/nowhere}" ]; then
  export HOME="$PWD/build/home"
  mkdir -p "$HOME"
fi

build_packages=(g++ cmake ninja-build ccache qt6-base-dev qt6-serialport-dev libnova-dev
  libxlsxwriter-dev)
