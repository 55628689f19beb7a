# What a user of Linux does, from getting a package to getting rid of it. Runs inside clean-root:
#
#   linux_user.sh REPOSITORY BUILD WAY     WAY is debian, archive or source
set -eu
repository=$1 build=$2 way=$3
fail() {
    echo "linux_user: $1" >&2
    exit 1
}

# Nothing of ours may be there before.
! command -v orvact >/dev/null || fail "orvact is installed on this system"
rm -rf /opt/work "/opt/a place"
mkdir -p /opt/work /opt/tools
# Images for containers leave out what goes to share/doc and share/man.
for settings in /etc/dpkg/dpkg.cfg.d/*; do
    [ ! -f "$settings" ] || sed -i '/^path-exclude/d' "$settings"
done
cd /opt/work
printf '#!/bin/sh\nexec "$@"\n' >/opt/tools/sudo
chmod +x /opt/tools/sudo
PATH=$PATH:/opt/tools

# The pages of other languages begin in folders that `make` gives; tests/bindings goes through them.
documents() {
    python3 -B "$repository/tests/package/run_documents.py" "$repository/README.md" Windows "From source" "$@" -- \
        $(sed -n 's/.*](\(docs\/[a-z-]*\.md\)).*/\1/p' "$repository/README.md" | awk '!seen[$0]++' |
            grep -v -e python -e csharp -e pascal | sed "s|^|$repository/|")
}

case $way in
debian)
    cp "$build"/packages/*.deb .
    documents "The archive"
    man -w orvact orvact-events-list >/dev/null || fail "no manual pages"
    symbols=$(readelf -n /usr/lib/libOrvActions.so | sed -n 's/.*Build ID: \(..\)\(.*\)/\1\/\2/p')
    dpkg -i orvactions-dbgsym_*.deb >/dev/null
    readelf -S "/usr/lib/debug/.build-id/$symbols.debug" | grep -q debug_info || fail "no symbols for the library"
    cat /var/lib/dpkg/info/*orvact*.list >installed
    dpkg --purge orvactions-dbgsym orvact liborvactions-dev liborvactions143 >/dev/null
    while read -r path; do
        case $path in *[Oo]rv*) [ ! -e "$path" ] || fail "$path is left" ;; esac
    done <installed
    ! ldconfig -p | grep OrvActions || fail "the loader still knows the library"
    ;;
archive)
    cp "$build"/packages/OrvActions-*-linux-*.tar.gz .
    documents "Debian packages"
    # Neither the tool nor the packages for other builds know where they were.
    mkdir "/opt/a place"
    mv OrvActions-143.0.0-linux-x86_64 "/opt/a place/elsewhere"
    "/opt/a place/elsewhere/bin/orvact" --version >/dev/null || fail "the archive does not work at another place"
    rm -rf site-build
    CMAKE_PREFIX_PATH="/opt/a place/elsewhere" cmake -B site-build . >/dev/null
    cmake --build site-build >/dev/null
    site-build/second
    ! grep -rlF "$repository" "/opt/a place/elsewhere" || fail "these name the folder of the build"
    ;;
source)
    cmake --install "$build" --prefix /usr/local >/dev/null
    "$repository/scripts/after-install" /usr/local
    ORV_HOME=/usr/local
    export ORV_HOME
    documents "Debian packages" "The archive"
    xargs rm -f <"$build/install_manifest.txt"  # where this runs on the system itself
    ;;
esac
