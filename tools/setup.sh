#!/bin/sh
# Installs the Debian packages of the given lists (packages.txt by default) that are missing; says nothing
# and does nothing when none is.
set -eu

tools=$(dirname "$(readlink -f "$0")")
[ $# -gt 0 ] || set -- "$tools/packages.txt"

if ! command -v dpkg-query >/dev/null; then
    echo "setup: not a Debian system; these packages (or their like) must be there:" >&2
    cat "$@" >&2
    exit 0
fi

# One query for all: a name that dpkg does not print as installed is missing.
wanted=$(sed 's/#.*//' "$@" | sort -u)
# shellcheck disable=SC2086 # one word a package
installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' $wanted 2>/dev/null | sed -n 's/^installed //p' || true)
missing=
for package in $wanted; do
    case "
$installed
" in
    *"
$package
"*) ;;
    *) missing="$missing $package" ;;
    esac
done
[ -n "$missing" ] || exit 0

if [ "$(id -u)" -eq 0 ]; then
    as_root=
elif command -v sudo >/dev/null; then
    as_root=sudo
else
    echo "setup: these packages are missing, and installing them needs root or sudo:$missing" >&2
    exit 1
fi

echo "setup: installing$missing"
# shellcheck disable=SC2086
{
    $as_root apt-get update -q
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends $missing
}
