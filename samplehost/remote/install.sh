#!/bin/sh
# install.sh [--system] [--uninstall]: puts on a Unix system what sessions with the terminal window need there: the
# terminal's description, and cellterm-session with its key files. For the user who runs it, or for all with --system
# (as root; into $DESTDIR if that is set). Running it again brings everything up to date.
set -eu
here=$(dirname "$(readlink -f "$0")")
prefix=${HOME:-}/.local
terminfo=${HOME:-}/.terminfo
system=no uninstall=no

fail() {
    echo "install.sh: $*" >&2
    exit 1
}

for option; do
    case $option in
        --system) system=yes prefix=${DESTDIR:-}/usr/local terminfo=${DESTDIR:-}/etc/terminfo ;;
        --uninstall) uninstall=yes ;;
        *) fail "there is no option $option, but --system and --uninstall" ;;
    esac
done
if [ $system = yes ] && [ "$(id -u)" != 0 ] && [ -z "${DESTDIR:-}" ]; then fail "--system is for root: use sudo"; fi
if [ $system = no ] && [ ! -d "${HOME:-}" ]; then fail "there is no home directory: HOME is \"${HOME:-}\""; fi
data=$prefix/share/cellterm
session=$prefix/bin/cellterm-session

if [ $uninstall = yes ]; then
    # By first letter, or by its code where file names know no case.
    sed -n 's/^\(cellterm[^|]*\)|.*/\1/p' "$here/cellterm.ti" | while read -r name; do
        rm -f "$terminfo/c/$name" "$terminfo/63/$name"
    done
    rm -f "$session" "$data/inputrc" "$data/lesskey"
    # Folders that hold nothing else now; the system's own stay.
    set -- "$terminfo/c" "$terminfo/63" "$data"
    if [ $system = no ]; then set -- "$@" "$terminfo" "$prefix/share" "$prefix/bin" "$prefix"; fi
    for folder; do rmdir "$folder" 2>/dev/null || true; done
    echo "The terminal's files are gone."
    exit 0
fi

command -v tic >/dev/null || fail "tic is missing: install ncurses-bin (Debian) or ncurses"
mkdir -p "$terminfo" "$data" "$prefix/bin" || fail "cannot write to $prefix and $terminfo"
tic -x -o "$terminfo" "$here/cellterm.ti" || fail "the terminal's description cannot be installed in $terminfo"
cp "$here/inputrc" "$here/lesskey" "$data/"
cp "$here/cellterm-session" "$session"
chmod 755 "$session"
chmod 644 "$data/inputrc" "$data/lesskey"
echo "Installed. Start $session in a session, or let the telnet server start it."
echo "For the function keys, put the lines of $here/function-keys.ini into the settings file on Windows."
