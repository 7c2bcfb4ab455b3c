# Sourced by the build scripts: makes sure the Debian packages a script needs are installed.
# SPDX-License-Identifier: MIT
# As root it installs what is missing; otherwise it names the missing packages and fails.

# nls_require_packages <package>...
nls_require_packages() {
    local missing=() pkg
    for pkg in "$@"; do
        if ! grep -q 'install ok installed' <<<"$(dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null)"; then
            missing+=("$pkg")
        fi
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    if [ "$(id -u)" -eq 0 ]; then
        echo "Installing missing Debian packages: ${missing[*]}"
        export DEBIAN_FRONTEND=noninteractive
        apt-get update -qq
        apt-get install -y -qq --no-install-recommends "${missing[@]}"
    else
        echo "Missing Debian packages: ${missing[*]}" >&2
        echo "Install them with: sudo apt-get install ${missing[*]}" >&2
        return 1
    fi
}
