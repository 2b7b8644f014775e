#!/usr/bin/env bash
# Installs the built files into a temporary folder, compares them with the list, and uninstalls; then tests each error
# with a few small files instead. Argument: the build's folder.
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
build="$(readlink -f "$1")"
here="$(dirname "$(readlink -f "$0")")"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
unset XDG_DATA_HOME XDG_DATA_DIRS

wrong() { echo "WRONG: $*"; exit 1; }
# Prints the state of a folder: names, types, links and contents.
picture() { (cd "$1" && find . -printf '%p %y %l\n' | sort && find . -type f -print0 | sort -z | xargs -0r md5sum); }
new_home() { rm -rf "${work:?}/home"; mkdir -p "$work/home/Documents"; echo kit >"$work/home/Documents/mine"; }
run() { HOME="$work/home" "$here/../../install" --from "${files:-$work/files}" "$@"; }

# refuses WORDS [OPTIONS...]: checks that the command fails with a line that contains WORDS, and changes nothing below
# home.
refuses() {
  local words="$1" before line
  shift
  before="$(picture "$work/home")"
  if line="$(run "$@" 2>&1 >/dev/null)"; then wrong "no failure with '$words'"; fi
  [[ "$line" = *"$words"* && "$line" != *$'\n'* ]] || wrong "'$line' instead of '$words'"
  [ "$(picture "$work/home")" = "$before" ] || wrong "'$words' left changes: $(diff <(echo "$before") <(picture "$work/home"))"
}

# --- The real files
files="$work/built"
cmake --install "$build" --prefix "$files" >/dev/null
new_home
before="$(picture "$work/home")"
(umask 077; run >/dev/null)
list="$work/home/.local/share/sivray/installed-files"
diff <(sed -n 's/^f //p' "$list" | sort) <(find "$work/home" \( -type f -o -type l \) ! -path "$list" ! -name mine | sort) ||
  wrong "the list differs from what is there"
[ "$(grep -c '^f ' "$list")" -eq "$(find "$files" -type f -o -type l | wc -l)" ] || wrong "some of the files are missing"
[ -e "$work/home/.local/share/doc/sivray/manual/manual.html" ] || wrong "the manual's link leads nowhere"
grep -qx "Exec=$work/home/.local/bin/sivray" "$work/home/.local/share/applications/sivray.desktop" || wrong "the menu entry"
[[ "$(run)" = "Nothing to do"* ]] || wrong "a second run has something to do"
# The installed programs have the same version, find their libraries and content, and play; their manual pages are
# readable.
bin="$work/home/.local/bin"
alone() { env -u SIVRAY_LIBRARY -u BRAMEL_COMMON_FILES HOME="$work/home" BRAMEL_DOCUMENTS="$work" PATH="$bin:$PATH" "$@"; }
for program in sivray sivray-render sivray-content; do
  [ "$(alone "$program" --version)" = "$program $(alone sivray --version | cut -d' ' -f2)" ] || wrong "the version of $program"
  zcat "$work/home/.local/share/man/man1/$program.1.gz" | grep -q '^\.SH NAME' || wrong "the manual page of $program"
  bash -n "$work/home/.local/share/bash-completion/completions/$program" || wrong "the completion of $program"
done
alone sivray-render "$build/demo.mid" -o "$work/alone.wav" --quiet --tail 0 --program "Dub Echo"
[ "$(alone sivray-content kits | wc -l)" -ge 3 ] || wrong "the list of kits"
# The installed library finds its content, and plays a kit from the installed preset as it plays the kit itself.
sound() { HOME="$work/home" BRAMEL_DOCUMENTS="$work" "$build/bin/sivray-render" "$build/demo.mid" -o "$work/$1.wav" --quiet --tail 0 \
  --library "$work/home/.vst/Sivray.so" "${@:2}"; }
sound kit --program "Dub Echo"
sound preset --state "$work/home/.local/share/sivray/presets/Dub Echo.fxp"
cmp "$work/kit.wav" "$work/alone.wav" || wrong "the installed renderer sounds otherwise"
cmp "$work/kit.wav" "$work/preset.wav" || wrong "the preset sounds otherwise"
# Own sounds are stored separately, play in every form, and are never uninstalled.
own="$work/home/.local/share/sivray/content"
alone sivray-content add "$work/kit.wav" --pad 1 >"$work/added" || wrong "adding a sound: $(cat "$work/added")"
[[ "$(alone sivray-content list)" = *'"kit" (Kick)'* ]] || wrong "the list of own sounds"
[[ "$(alone sivray-render --list-waves)" = *kit* ]] || wrong "the renderer does not know the own sound"
sound own --program "Dub Echo"
cmp "$work/kit.wav" "$work/own.wav" || wrong "a kit sounds otherwise beside own sounds"
owned="$(picture "$own")"
[[ "$(run)" = "Nothing to do"* ]] || wrong "own sounds give ./install something to do"
[ "$(picture "$own")" = "$owned" ] || wrong "./install has touched own sounds"
# The files run on other systems, too. Missing libraries, or missing versions of one, are reported.
"$here/try_needs.py" "$work/home" || wrong "the list of needed libraries"
[ -z "$(run 2>&1 >/dev/null)" ] || wrong "something is missing here"
sed -i 's/libsndfile\.so\.1/libsndfile.so.0/g; s/GLIBC_2\.35/GLIBC_2.99/g' "$files/bin/sivray-content"
said="$(run 2>&1 >/dev/null)"
[[ "$said" = *"sivray-content does not run yet"*GLIBC_2.99*libsndfile.so.0 ]] || wrong "'$said' about missing libraries"
run --uninstall >/dev/null
[ "$(picture "$own")" = "$owned" ] || wrong "--uninstall has touched own sounds"
rm -r "$work/home/.local/share/sivray"
rmdir "$work/home/.local/share" "$work/home/.local"  # They held the own sounds.
[ "$(picture "$work/home")" = "$before" ] || wrong "something is left: $(find "$work/home")"
[[ "$(run --uninstall)" = "Nothing to do"* ]] || wrong "a second uninstallation has something to do"

# --- A few small files: versions, errors
unset files
small() {
  local file
  rm -rf "$work/files"
  for file in "$@"; do
    mkdir -p "$(dirname "$work/files/$file")"
    echo "$file $version" >"$work/files/$file"
  done
}
one=(lib/vst/Sivray.so lib/lv2/Sivray.lv2/Sivray.so lib/clap/Sivray.clap bin/sivray share/Tesh/a/old share/Tesh/b)
two=(lib/vst/Sivray.so lib/lv2/Sivray.lv2/Sivray.so lib/clap/Sivray.clap bin/sivray share/Tesh/c/new share/Tesh/b)
new_home
version=1 small "${one[@]}"

# shim TOOL COMMAND NUMBER: simulates a failing tool, which runs COMMAND at its call with this number.
shim() {
  mkdir -p "$work/shims"
  rm -f "$work/shims"/*
  printf '#!/bin/sh\necho x >>%q\n[ "$(wc -l <%q)" -lt %d ] && exec /usr/bin/env PATH=/usr/bin:/bin %s "$@"\n%s\n' \
    "$work/shims/count" "$work/shims/count" "$3" "$1" "$2" >"$work/shims/$1"
  chmod +x "$work/shims/$1"
}

# killed SHIM-ARGUMENTS...: installs with a tool that kills the whole run.
killed() {
  shim "$@"
  PATH="$work/shims:$PATH" run >/dev/null 2>&1 || true
}
for signal in 9 15; do
  killed cp "kill -$signal \$PPID" 3
  [ "$signal" = 15 ] || [ -n "$(find "$work/home" -name '*.sivray-new')" ] || wrong "the run was not killed while it copied"
  run --uninstall >/dev/null
  [ "$(picture "$work/home")" = "$before" ] || wrong "killed by $signal, it left: $(find "$work/home")"
done
chmod 600 "$work/files/share/Tesh/b"
run --prefix "$work/home/all users" >/dev/null
[ -z "$(find "$work/home/all users" ! -perm -a=r)" ] || wrong "others cannot read what is installed for all"
[ -e "$work/home/all users/lib/vst/Sivray.so" ] || wrong "--prefix"
mkdir "$work/home/.vst" && cp "$work/files/lib/vst/Sivray.so" "$work/home/.vst"
[[ "$(run --prefix "$work/home/other")" = *"Note: Sivray is installed in $work/home/.vst too"* ]] || wrong "no note about another installation"
rm -r "$work/home/.vst" "$work/home/other"
run --prefix "$work/home/all users" --uninstall >/dev/null
[ "$(picture "$work/home")" = "$before" ] || wrong "something is left below a prefix"
exec 8<"$work/home"
flock 8
run 8<&- >"$work/said" 2>/dev/null &
sleep 0.5
[[ "$(cat "$work/said")" = "Waiting"* && ! -e "$work/home/.vst" ]] || wrong "two runs at once do not wait for each other"
exec 8<&-
wait $!
[[ "$(HOME="$work/home//" "$here/../../install" --from "$work/files" 2>/dev/null)" = "Nothing to do"* ]] || wrong "slashes behind HOME"
version=2 small "${two[@]}"

# `sudo ./install` installs for the user who called sudo, not for root.
shim sudo 'echo "$@"' 1
[ "$(id -u)" -ne 0 ] || [[ "$(SUDO_USER=ann PATH="$work/shims:$PATH" run)" = *"-H -u ann "*"/install --from $work/files" ]] || wrong "sudo"

shim df 'printf "Avail\n3\n"' 1
PATH="$work/shims:$PATH" refuses "not enough room"
shim cp 'exit 1' 3
PATH="$work/shims:$PATH" refuses "cannot write"
echo other >"$work/home/.local/share/Tesh/c"
refuses "Tesh/c is no folder"
rm "$work/home/.local/share/Tesh/c"
mkdir -p "$work/home/.local/share/Tesh/c/new"
refuses "Tesh/c/new is a folder"
rmdir "$work/home/.local/share/Tesh/c/new"
echo other >"$work/home/.local/share/Tesh/c/new"
refuses "not put there by ./install"
rm -r "$work/home/.local/share/Tesh/c"
mkdir "$work/elsewhere"
ln -s "$work/elsewhere" "$work/home/.local/share/Tesh/c"
refuses "is a symbolic link"
rm "$work/home/.local/share/Tesh/c"
sed -i '1s/1/9/' "$list"
refuses "another version"
refuses "another version" --uninstall
sed -i '1s/9/1/' "$list"
shim mkdir 'exit 1' 3
PATH="$work/shims:$PATH" refuses "cannot make the folder" --prefix "$work/home/new"
refuses "unknown option" --everything
files="$work/none" refuses "holds no lib/vst"

# After each of these the old version is complete; a killed run can be repeated or undone.
[ "$(cat "$work/home/.vst/Sivray.so")" = "lib/vst/Sivray.so 1" ] || wrong "the old version is damaged"
killed mv 'kill -9 $PPID' 4
run >/dev/null
[ "$(cat "$work/home/.vst/Sivray.so")" = "lib/vst/Sivray.so 2" ] || wrong "the new version is not there"
[ ! -e "$work/home/.local/share/Tesh/a" ] || wrong "a file of the old version is left"
echo mine >"$work/home/.local/share/Tesh/mine"
run --uninstall >/dev/null
[ "$(cd "$work/home" && find . -type f | sort | xargs)" = "./.local/share/Tesh/mine ./Documents/mine" ] || wrong "uninstalling took or left too much"

# --- Package and archive: the same bytes each time, and readable for all users
make_packages() { SOURCE_DATE_EPOCH=1 "$here/../../packaging/make_packages.sh" "$build" "$1" --quick; }
make_packages "$work/packages"
(umask 077; make_packages "$work/again")
diff -r "$work/packages" "$work/again" || wrong "the same build was packed into other bytes"
depends="$(dpkg-deb --field "$work"/packages/*.deb Depends | tr ',' '\n' | sed 's/^ *//; s/ .*//')"
[ -z "$(uniq -d <<<"$depends")" ] && grep -qx libc6 <<<"$depends" || wrong "the package depends on" $depends
tar tvf "$work"/packages/*.tar.gz >"$work/packed"
grep -q ' sivray-[^/]*/install$' "$work/packed" || wrong "the archive does not hold ./install"
others="$(grep -v '^l' "$work/packed" | grep -Ev '^(d......r-x|-......r-[x-]) ' || true)"
[ -z "$others" ] || wrong "others cannot read in the archive: $others"
echo "Installing works"
