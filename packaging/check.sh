#!/usr/bin/env bash
# check.sh DEB ROOTS: installs the package into a bare system, uses it there, removes it, and looks
# for rests. Runs as root. The bare system stays in ROOTS for the next time, with what was
# downloaded.
set -euo pipefail
deb=$(realpath "$1")
roots=$(mkdir -p "$2" && realpath "$2")
examples=$(realpath "$(dirname "$0")/../examples")
base=$roots/base
root=$roots/root
tools=libglib2.0-bin,shared-mime-info,desktop-file-utils,xdg-utils,man-db,bash-completion

say() { echo "check-package: $*"; }
fail() { say "$*" >&2 && exit 1; }
# Runs in the root as somebody who has just logged in; no variable of this shell goes along.
inside() { chroot "$root" env -i HOME=/home/engineer PATH=/usr/bin:/bin:/usr/sbin:/sbin LC_ALL=C.UTF-8 \
    XDG_RUNTIME_DIR=/home/engineer/run DEBIAN_FRONTEND=noninteractive QT_QPA_PLATFORM=offscreen "$@"; }
# Programs that were started inside end with the check, and so does what is mounted there.
finish()
{
    local process
    for process in /proc/[0-9]*; do
        [[ $(readlink "$process/root") == "$root" ]] && kill -KILL "${process#/proc/}"
    done
    mountpoint -q "$root/proc" && umount "$root/proc"
    rm -rf "$root"
} 2>/dev/null
# waitFor WHAT COMMAND...: until it holds, 30 s at most.
waitFor()
{
    local what=$1 end=$((SECONDS + 30))
    shift
    until "$@"; do
        ((SECONDS < end)) || fail "waited in vain for $what"
        sleep 0.2
    done
}

if [[ ! -e $base/complete ]]; then
    say "a bare system"
    rm -rf "$base"
    debootstrap --variant=minbase --include="$tools" bookworm "$base" http://deb.debian.org/debian >"$roots/debootstrap.log" ||
        { tail "$roots/debootstrap.log" && exit 1; }
    apt-config dump | grep -E '^Acquire::(https?::Proxy|Check-)' >"$base/etc/apt/apt.conf.d/99host" || true # asks mirrors as we do
    touch "$base/complete"
fi
finish || true
trap 'finish || true' EXIT
cp -a --reflink=auto "$base" "$root"
mount -t proc proc "$root/proc"
cp "$deb" "$root/tmp/orva.deb"
mkdir -p "$root/home/engineer" && mkdir -m 700 "$root/home/engineer/run"

say "install"
inside apt-get update -qq
inside apt-get install -y -qq --no-install-recommends -o Dpkg::Use-Pty=0 /tmp/orva.deb >"$roots/install.log" 2>&1 || { tail "$roots/install.log" && exit 1; }
cp -n "$root"/var/cache/apt/archives/*.deb "$base/var/cache/apt/archives/" || true
inside dpkg -L orva >"$roots/files"
(cd "$root" && md5sum -c --quiet var/lib/dpkg/info/orva.md5sums)

say "orva-cli"
home=$root/home/engineer
cp "$examples/theatre.lad" "$home/venue.bin" # no name to go by
version=$(dpkg-deb -f "$deb" Version)
for program in orva orva-cli; do
    [[ $(inside $program --version) == "$program $version (commit "*", "*")" ]] || fail "another version of $program"
done
inside orva-cli new /home/engineer/p.lad
inside orva-cli levels /home/engineer/p.lad --points 3 >"$home/levels.json"
inside orva-cli rigging /usr/share/doc/orva/examples/theatre.lad --png /home/engineer/rigging.png >"$home/sheet.txt"
grep -q '"foh": [0-9-]' "$home/levels.json" || fail "no level at the FOH"
grep -q 'Total Weight.*kg' "$home/sheet.txt" || fail "no weight in the rigging sheet"
[[ -s $home/rigging.png ]] || fail "no picture"
for page in orva orva-cli; do
    [[ $(inside man -P cat "$page" | wc -l) -gt 20 ]] || fail "no man page of $page"
done
inside bash -c '. /usr/share/bash-completion/bash_completion && _completion_loader orva-cli; complete -p orva-cli' >/dev/null

say "the file's type"
type=application/x-orva-project
[[ $(inside XDG_CURRENT_DESKTOP=GNOME xdg-mime query filetype /home/engineer/p.lad) == "$type" ]] || fail "p.lad is no $type"
[[ $(inside gio info -a standard::content-type /home/engineer/venue.bin) == *"$type"* ]] || fail "the first bytes do not tell the type"
[[ $(inside xdg-mime query default $type) == orva.desktop ]] || fail "orva is no default for $type"
opener=$(inside gio mime $type)
[[ $opener == "Default application"*": orva.desktop"* ]] || fail "$type is opened otherwise: $opener"

# The window's process; what it has opened is among its recent files.
window() { for process in /proc/[0-9]*; do
    [[ $(readlink "$process/root" 2>/dev/null) == "$root" && $(readlink "$process/exe") == */usr/bin/orva ]] && echo "${process#/proc/}"
done; return 0; }
opened() { grep -rqs "$1" "$home/.config/ORVA"; }
runs() { [[ -n $(window) ]]; }
gone() { [[ -z $(window) ]]; }

say "the window"
inside orva --no-splash --language en /home/engineer/p.lad 2>"$roots/window.log" &
disown
waitFor "p.lad in the window" opened p.lad
kill -TERM "$(window)"
waitFor "the window's end" gone
cp "$home/p.lad" "$home/by type.lad"
inside gio open "/home/engineer/by type.lad" 2>>"$roots/window.log"
waitFor "the window that gio opens" runs
waitFor "its project" opened "by type.lad"
kill -TERM "$(window)"
waitFor "the window's end" gone

say "remove"
inside apt-get purge -y -qq -o Dpkg::Use-Pty=0 orva >/dev/null
while read -r path; do
    [[ -d $root$path ]] && inside dpkg -S "$path" >/dev/null 2>&1 && continue # others have it too
    [[ ! -e $root$path ]] || echo "$path"
done <"$roots/files" >"$roots/rests"
rm -r "$root/tmp/orva.deb" "$root/home/engineer" "$root/var/cache/man" # ours, and what man keeps
find "$root" -xdev -path "$root/proc" -prune -o -iname '*orva*' -print >>"$roots/rests"
grep -rl orva "$root/usr/share/mime" "$root/usr/share/applications" >>"$roots/rests" || true
[[ ! -s $roots/rests ]] || fail "left behind: $(cat "$roots/rests")"
say "passed"
