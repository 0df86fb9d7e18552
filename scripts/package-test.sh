#!/usr/bin/env bash
# Makes the Debian package, has lintian read it, and installs, uses and removes it in a clean Debian 12. What can't be
# run here is reported as not run (exit status 77 if nothing else went wrong).
#   scripts/package-test.sh [--plain]
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/build-package.sh "$@"
package=$(ls -t build/package/*.deb | head -n 1)
left_out=0

echo "== lintian"
if command -v lintian >/dev/null; then
    # The owner has not chosen a licence yet, so there is none to name.
    lintian --fail-on error --suppress-tags no-copyright-file,copyright-without-copyright-notice "$package"
else
    echo "not run: lintian isn't installed"
    left_out=1
fi

echo "== a clean Debian 12"
if ! command -v debootstrap >/dev/null || [ "$(id -u)" -ne 0 ]; then
    echo "not run: it takes debootstrap, as root"
    exit 77
fi
root=$(mktemp -d)
trap 'rm -rf --one-file-system "$root"' EXIT
# The mirror that this machine itself installs from.
mirror=$(sed -n 's/^deb \(\[[^]]*\] \)\{0,1\}\([^ ]*\) bookworm .*/\2/p; s/^URIs: *\([^ ]*\).*/\1/p' \
    /etc/apt/sources.list /etc/apt/sources.list.d/* 2>/dev/null | head -n 1)
debootstrap --variant=minbase bookworm "$root" ${mirror:+"$mirror"} >"$package.log" 2>&1 || { tail "$package.log"; exit 1; }
mount -t proc proc "$root/proc"
trap 'umount "$root/proc"; rm -rf --one-file-system "$root"' EXIT
cp "$package" "$root/tmp/norvane.deb"
chroot "$root" apt-get install -y -qq /tmp/norvane.deb
chroot "$root" sh -c 'cp -r /usr/share/norvane /tmp/work && cd /tmp/work/examples && norvane --version &&
    norvane-compiler first.st -i target.xml && norvane test motor'
chroot "$root" apt-get remove -y -qq norvane
chroot "$root" sh -c '! command -v norvane && ! command -v norvane-compiler && [ ! -e /usr/share/norvane ]'
echo "installed, used and removed"
[ $left_out -eq 0 ] || exit 77
