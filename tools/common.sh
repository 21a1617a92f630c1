# SPDX-FileCopyrightText: 2026 The Vexal developers
# SPDX-License-Identifier: MIT
# Shared by the demo and test commands: packages, build and display.

# Debian packages that the build, the tests, the demo and the benchmarks need.
VEXAL_PACKAGES=(
    cmake g++ make pkg-config
    qt6-base-dev qt6-declarative-dev libqt6opengl6-dev qt6-declarative-dev-tools
    qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-templates
    qml6-module-qtquick-shapes qml6-module-qtquick-dialogs qml6-module-qtquick-layouts
    qml6-module-qtquick-window qml6-module-qtqml-workerscript qml6-module-qt5compat-graphicaleffects
    qml6-module-qttest qml6-module-qtqml qml6-module-qtqml-models libqt6svg6 qt6-qpa-plugins
    xvfb xauth libgl1-mesa-dri qml-qt6
    libbenchmark-dev qml6-module-qtcharts qt6-charts-dev
    clang libclang-rt-14-dev
)

install_missing_packages() {
    local missing=()
    for p in "${VEXAL_PACKAGES[@]}"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "ok installed" || missing+=("$p")
    done
    [[ ${#missing[@]} == 0 ]] && return 0
    echo "== installing: ${missing[*]}"
    local sudo=""
    [[ $(id -u) != 0 ]] && sudo=sudo
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

configure() { # build-dir cmake-flags...
    local dir=$1; shift
    cmake -S . -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
}

configure_and_build() { # build-dir cmake-flags...
    local dir=$1; shift
    echo "== building in $dir"
    configure "$dir" "$@"
    cmake --build "$dir" -j"$(nproc)"
}

# Runs a command on the existing display, or on a fresh Xvfb when there is none.
with_display() {
    export QSG_RHI_BACKEND=opengl
    if [[ -n "${DISPLAY:-}" ]] && xdpyinfo >/dev/null 2>&1; then
        "$@"
    else
        xvfb-run -a -s "-screen 0 1280x1024x24" "$@"
    fi
}
