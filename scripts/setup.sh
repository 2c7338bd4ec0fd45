# Shared by the run and test commands: installs what a fresh Debian 12 machine is missing.
# Sourced, not run.

vt_install_packages() {
    local missing=()
    local pkg
    for pkg in "$@"; do
        if ! dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q "install ok installed"; then
            missing+=("$pkg")
        fi
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return 0
    fi
    echo "== Installing: ${missing[*]}"
    local sudo=""
    if [ "$(id -u)" -ne 0 ]; then
        sudo="sudo"
    fi
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# What building the program needs.
VT_BUILD_PACKAGES=(g++ cmake ninja-build pkg-config qt6-base-dev qt6-base-dev-tools libgl-dev
                   libgtest-dev libgmock-dev googletest libbenchmark-dev)
# What showing it on a virtual display needs.
VT_DISPLAY_PACKAGES=(xvfb xauth xdotool x11-utils imagemagick fonts-dejavu-core)
# What the checks need besides.
VT_CHECK_PACKAGES=(clang clang-format libclang-rt-14-dev)

vt_root() { cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd; }

vt_jobs() { nproc 2>/dev/null || echo 2; }
